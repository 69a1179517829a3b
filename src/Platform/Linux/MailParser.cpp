// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/MailParser.h"

#include <sys/mman.h>
#include <sys/uio.h>

#include <array>
#include <chrono>

namespace dugwise {

namespace {

/// For the messages of one file together. The limit that counts is that of processor time: whoever
/// runs when nobody else wants to may have to wait for long.
constexpr std::chrono::seconds kDeadline{60};

bool writeAll(int file, const void *data, std::size_t size)
{
    const char *from = static_cast<const char *>(data);
    while (size > 0) {
        const ssize_t written = ::write(file, from, size);
        if (written <= 0)
            return false;
        from += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

/// The messages in a file without a name; an invalid one when there is no room for it.
FileDescriptor fileOf(std::span<const QByteArray> messages)
{
    FileDescriptor file(::memfd_create("messages", MFD_CLOEXEC));
    for (const QByteArray &message : messages) {
        const auto size = static_cast<ParserProtocol::MessageSize>(message.size());
        if (!file || !writeAll(file.get(), &size, sizeof size)
            || !writeAll(file.get(), message.constData(), size))
            return {};
    }
    return file;
}

QList<QByteArray> lines(const QByteArray &text)
{
    return text.isEmpty() ? QList<QByteArray>() : text.split('\n');
}

ParsedMail parsed(ParserProcess::Message message)
{
    using namespace ParserProtocol;
    ParsedMail mail;
    // Zero and before come of clocks that were never set.
    if (message.date > 0)
        mail.date = message.date;
    mail.subject = std::move(message.texts[subject]);
    mail.authors = lines(message.texts[authors]);
    mail.addresses = lines(message.texts[addresses]);
    mail.identifier = std::move(message.texts[identifier]);
    mail.text = std::move(message.texts[body]);
    return mail;
}

} // namespace

MailParser::MailParser(QString program)
    : m_program(std::move(program))
{}

QList<std::optional<ParsedMail>> MailParser::parse(const QList<QByteArray> &messages,
                                                   const std::stop_token &stop)
{
    QList<std::optional<ParsedMail>> mails;
    mails.reserve(messages.size());
    bool isAlone = false; // the message that the parser died of, or somebody else's accident
    while (mails.size() < messages.size()) {
        const std::span<const QByteArray> left(messages.cbegin() + mails.size(), messages.cend());
        if (parser(stop).version().isEmpty() || stop.stop_requested())
            break;
        const QList<ParsedMail> some = parseSome(left.first(isAlone ? 1 : left.size()), stop);
        for (const ParsedMail &mail : some)
            mails.append(mail);
        const bool isDead = m_parser->state() != ParserProcess::State::running;
        if (stop.stop_requested() || (!isDead && some.isEmpty())) // no room for them
            break;
        if (isDead && isAlone)
            mails.append(std::nullopt);
        isAlone = isDead && !isAlone;
    }
    return mails;
}

ParserProcess &MailParser::parser(const std::stop_token &stop)
{
    if (!m_parser || m_parser->state() != ParserProcess::State::running)
        m_parser = std::make_unique<ParserProcess>(m_program, ParserProcess::Service::mail, stop);
    return *m_parser;
}

QList<ParsedMail> MailParser::parseSome(std::span<const QByteArray> messages,
                                        const std::stop_token &stop)
{
    QList<ParsedMail> mails;
    const FileDescriptor file = fileOf(messages);
    const auto count = static_cast<std::uint32_t>(messages.size());
    if (!file || !m_parser->openMessages(file, count, QDeadlineTimer(kDeadline), stop))
        return mails;
    while (static_cast<std::size_t>(mails.size()) < messages.size()) {
        std::optional<ParserProcess::Message> message = m_parser->nextMessage();
        if (!message)
            break;
        mails.append(parsed(std::move(*message)));
    }
    return mails;
}

} // namespace dugwise
