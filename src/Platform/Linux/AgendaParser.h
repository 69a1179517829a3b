// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AgendaProtocol.h"
#include "Platform/ParserProcess.h"

#include <QByteArray>
#include <QList>
#include <QStringList>

#include <chrono>
#include <functional>
#include <memory>

namespace dugwise {

/// Reads calendars and address books through dugwise-agenda, which is started when there is
/// something to read. An item that ends it costs that item; one that takes too long, too.
class AgendaParser
{
public:
    struct Request
    {
        AgendaProtocol::Task task = AgendaProtocol::Task::events;
        qint64 earliest = 0; ///< seconds, for occurrences
        qint64 latest = 0;
        qsizetype documents = 0;
        /// Gives the text of a document counted from 0, where it can be had; asked for once.
        std::function<std::optional<QByteArray>(qsizetype document)> text{};
    };
    /// What came of a document.
    struct Reading
    {
        enum class Outcome {
            unread,      ///< there was no time for it, or it could not be had
            interrupted, ///< it was begun, with less time than it may take
            late,        ///< it was begun, and took too long
            read,
        };
        Outcome outcome = Outcome::unread;
        QList<QStringList> records{}; ///< fields as AgendaProtocol tells them
    };

    /// How often a document was tried in vain.
    struct Attempts
    {
        int begun = 0;
        int late = 0;

        void count(Reading::Outcome outcome);
        /// Whether it is not worth another.
        [[nodiscard]] bool areUp() const;
    };

    /// `program` is the path of dugwise-agenda; without one, nothing can be read. An item may take
    /// `patience`, and a large document twice as much.
    AgendaParser(QString program, std::chrono::milliseconds patience)
        : m_program(std::move(program))
        , m_patience(patience)
    {}

    /// What comes of each document until the deadline. Waits for it: for workers.
    [[nodiscard]] QList<Reading> read(const Request &request, const QDeadlineTimer &deadline);

private:
    [[nodiscard]] bool isRunning(const QDeadlineTimer &deadline);
    /// The number of items.
    [[nodiscard]] std::optional<int> open(const Request &request,
                                          const QList<QByteArray> &texts,
                                          quint32 itemsAtATime,
                                          const QDeadlineTimer &deadline);
    [[nodiscard]] QList<Reading> readTogether(const Request &request,
                                              const QList<QByteArray> &texts,
                                              const QDeadlineTimer &deadline,
                                              bool isFirst);
    [[nodiscard]] Reading
    readItemwise(const Request &request, const QByteArray &text, const QDeadlineTimer &deadline);

    /// How long a batch may take.
    [[nodiscard]] std::chrono::milliseconds timeFor(const QList<QByteArray> &texts) const;

    QString m_program;
    std::chrono::milliseconds m_patience;
    std::unique_ptr<ParserProcess> m_process;
};

} // namespace dugwise
