// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/FileDescriptor.h"
#include "Platform/ParserProtocol.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QString>

#include <sys/types.h>

#include <array>
#include <chrono>
#include <optional>
#include <stop_token>

namespace dugwise {

/// A running dugwise-extract or dugwise-agenda: reads documents or mail in a sandbox, one at a
/// time. Belongs to one thread, and dies with it.
class ParserProcess
{
public:
    enum class State {
        running,
        died,     ///< by itself, or killed by somebody
        timedOut, ///< killed here, for the deadline or because reading was to stop
    };
    struct Answer
    {
        int result = -1; ///< negative: there is no such thing
        QString text;
    };

    static constexpr std::chrono::seconds kGreetingTime{5};

    enum class Service {
        documents,
        mail,
    };

    /// Starts the program and waits for its greeting; it has died when that does not come in time.
    ParserProcess(const QString &program,
                  Service service,
                  const std::stop_token &stop,
                  QDeadlineTimer greetingDeadline = QDeadlineTimer(kGreetingTime));
    Q_DISABLE_COPY_MOVE(ParserProcess)
    ~ParserProcess();

    [[nodiscard]] State state() const { return m_state; }
    /// What it reads documents with, and that one's version.
    [[nodiscard]] const QString &version() const { return m_version; }

    /// Hands it a file; the answer's result is the number of pages. `deadline` is for all of the
    /// document. Absent, like the pages after it, when the process is not running any more.
    [[nodiscard]] std::optional<Answer>
    open(const FileDescriptor &file, QDeadlineTimer deadline, const std::stop_token &stop);
    /// The text of a page counted from 0.
    [[nodiscard]] std::optional<Answer> page(int page);
    /// Lets go of the file.
    void close();

    /// Hands it a file of messages (ParserProtocol::MessageSize); false when it is not running any
    /// more. `deadline` is for all of them.
    [[nodiscard]] bool openMessages(const FileDescriptor &file,
                                    std::uint32_t count,
                                    QDeadlineTimer deadline,
                                    const std::stop_token &stop);
    struct Message
    {
        std::int64_t date; ///< seconds since 1970, or ParserProtocol::MessageReply::kNoDate
        std::array<QByteArray, ParserProtocol::kMessageTexts> texts;
    };
    /// The next of them, as many as were handed over. Absent when it is not running any more.
    [[nodiscard]] std::optional<Message> nextMessage();

private:
    [[nodiscard]] bool start(const QString &program, Service service);
    [[nodiscard]] bool send(const ParserProtocol::Request &request, int file = -1);
    [[nodiscard]] std::optional<Answer> receive();
    [[nodiscard]] bool receiveAll(void *data, std::size_t size);
    void end(State state);

    FileDescriptor m_socket;
    pid_t m_process = -1;
    State m_state = State::died;
    QString m_version;
    QDeadlineTimer m_deadline;
    std::stop_token m_stop;
};

} // namespace dugwise
