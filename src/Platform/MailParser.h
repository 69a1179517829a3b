// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/FileDescriptor.h"
#include "Platform/ParserProcess.h"

#include <QByteArray>
#include <QList>
#include <QStringList>

#include <memory>
#include <optional>
#include <span>
#include <stop_token>

namespace dugwise {

/// What a stored message says; all texts are valid UTF-8, their white space single blanks.
struct ParsedMail
{
    std::optional<qint64> date;  ///< when it was sent, in seconds since 1970
    QByteArray subject;          ///< empty when there is none, like all of these
    QList<QByteArray> authors;   ///< display names, or the address of whoever has none
    QList<QByteArray> addresses; ///< the authors'
    QByteArray identifier;       ///< the Message-ID
    QByteArray text;             ///< of all parts that are text, at most 64 KiB
};

/// Reads messages through dugwise-extract, which is started when it is needed and again when it
/// died. Belongs to one thread.
class MailParser
{
public:
    /// `program` is the path of dugwise-extract.
    explicit MailParser(QString program);

    /// One entry for each message, in their order, absent for one that ended the parser or took it
    /// too long, twice. Fewer when `stop` came or no parser can be started. Best called with many
    /// messages of a megabyte together.
    [[nodiscard]] QList<std::optional<ParsedMail>> parse(const QList<QByteArray> &messages,
                                                         const std::stop_token &stop);

    /// Bytes of a message that are read; the rest of a larger one is attachments, mostly.
    static constexpr qint64 kMostMessage = qint64{8} * 1024 * 1024;

private:
    [[nodiscard]] ParserProcess &parser(const std::stop_token &stop);
    [[nodiscard]] QList<ParsedMail> parseSome(std::span<const QByteArray> messages,
                                              const std::stop_token &stop);

    QString m_program;
    std::unique_ptr<ParserProcess> m_parser;
};

} // namespace dugwise
