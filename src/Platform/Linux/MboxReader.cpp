// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/MboxReader.h"

#include "Platform/MailParser.h"

#include <unistd.h>
#include <xxhash.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <memory>
#include <string_view>

namespace dugwise {

namespace {

using namespace std::string_view_literals;

constexpr std::size_t kPiece = std::size_t{1} << 20U; // bytes read at a time
constexpr std::size_t kLongestSeparator = 1024;
/// What is kept of a message that goes on, to see whether an empty line ends there.
constexpr std::size_t kBefore = 3;
/// Thunderbird's mark of a message that was deleted (nsMsgMessageFlags::Expunged).
constexpr unsigned kExpunged = 8;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool hasTime(std::string_view line)
{
    for (std::size_t at = 1; at + 1 < line.size(); ++at) {
        if (line[at] == ':' && isDigit(line[at - 1]) && isDigit(line[at + 1]))
            return true;
    }
    return false;
}

bool isYear(std::string_view word)
{
    return word.size() == 4 && std::ranges::all_of(word, isDigit);
}

/// Whether a line that starts with "From " parts two messages.
bool isSeparator(std::string_view line)
{
    if (line.starts_with("From - "))
        return true;
    std::string_view rest = line.substr(0, line.find_last_not_of(" \r\t") + 1);
    for (int word = 0; hasTime(line) && word < 2; ++word) { // a zone may follow the year
        const std::size_t blank = rest.rfind(' ');
        if (isYear(rest.substr(blank + 1)))
            return true;
        rest = rest.substr(0, rest.find_last_not_of(' ', blank) + 1);
    }
    return false;
}

/// Whether the line feed at `at` ends an empty line.
bool endsEmptyLine(std::string_view text, std::size_t at)
{
    if (at > 0 && text[at - 1] == '\r')
        --at;
    return at > 0 && text[at - 1] == '\n';
}

/// What programs write into the header of a message that lies in its folder already.
bool isNote(std::string_view line)
{
    constexpr std::array kNotes{"X-Mozilla-Status:"sv,
                                "X-Mozilla-Status2:"sv,
                                "X-Mozilla-Keys:"sv,
                                "Status:"sv,
                                "X-Status:"sv,
                                "X-Keywords:"sv,
                                "X-UID:"sv};
    return std::ranges::any_of(kNotes,
                               [&](std::string_view note) { return line.starts_with(note); });
}

bool isExpungedStatus(std::string_view line)
{
    constexpr auto kStatus = "X-Mozilla-Status:"sv;
    if (!line.starts_with(kStatus))
        return false;
    std::string_view value = line.substr(kStatus.size());
    value.remove_prefix(std::min(value.find_first_not_of(' '), value.size()));
    unsigned flags = 0;
    std::from_chars(value.data(), value.data() + value.size(), flags, 16);
    return (flags & kExpunged) != 0;
}

/// Gives the message its key, and tells whether it is expunged.
void recognise(MboxReader::Message &message)
{
    struct Free
    {
        void operator()(XXH3_state_t *state) const { XXH3_freeState(state); }
    };
    const std::unique_ptr<XXH3_state_t, Free> hash(XXH3_createState());
    XXH3_64bits_reset_withSeed(hash.get(), static_cast<XXH64_hash_t>(0));
    std::string_view rest(message.bytes.constData(),
                          static_cast<std::size_t>(message.bytes.size()));
    while (!rest.empty() && rest.front() != '\n' && rest.front() != '\r') {
        const std::size_t length = std::min(rest.find('\n'), rest.size() - 1) + 1;
        const std::string_view line = rest.substr(0, length);
        message.isExpunged = message.isExpunged || isExpungedStatus(line);
        // Some programs end the lines that they add in their own way.
        if (!isNote(line))
            XXH3_64bits_update(hash.get(), line.data(), line.size());
        rest.remove_prefix(length);
    }
    XXH3_64bits_update(hash.get(), rest.data(), rest.size());
    message.key = XXH3_64bits_digest(hash.get());
}

} // namespace

MboxReader::MboxReader(FileDescriptor file, qint64 offset, qint64 end)
    : m_file(std::move(file))
    , m_end(end)
    , m_offset(offset)
{}

qint64 MboxReader::position() const
{
    return m_offset + static_cast<qint64>(m_next);
}

std::optional<MboxReader::Message> MboxReader::next()
{
    dropTaken();
    Message message{.start = position(), .size = 0, .bytes = {}, .key = 0, .isExpunged = false};
    if (!takeSeparator())
        return std::nullopt;
    std::size_t from = m_next - 1; // the line feed that ends the separator
    for (;;) {
        const Separator separator = findSeparator(from);
        take(separator.isFound ? separator.at + 1 : separator.at, message);
        if (separator.isFound)
            break;
        const std::size_t before = m_next;
        dropTaken();
        from = separator.at - (before - m_next);
        if (!readOn()) {
            take(m_buffer.size(), message);
            break;
        }
    }
    const bool isWhole = message.size == message.bytes.size();
    while (isWhole && (message.bytes.endsWith('\n') || message.bytes.endsWith('\r')))
        message.bytes.chop(1);
    if (isWhole)
        message.size = message.bytes.size();
    recognise(message);
    return message;
}

/// Where the next separator is, from a line feed on; or how far there is none for sure.
MboxReader::Separator MboxReader::findSeparator(std::size_t from) const
{
    constexpr auto kStart = "\nFrom "sv;
    const std::string_view text(m_buffer);
    for (;;) {
        const void *const found =
            ::memmem(text.data() + from, text.size() - from, kStart.data(), kStart.size());
        if (!found)
            break;
        const auto at = static_cast<std::size_t>(static_cast<const char *>(found) - text.data());
        const std::string_view rest = text.substr(at + 1, kLongestSeparator);
        const std::size_t length = rest.find('\n');
        if (length == std::string_view::npos && rest.size() < kLongestSeparator && !m_isAtEnd)
            return {at, false};
        const bool isLine = length != std::string_view::npos;
        if (isLine && endsEmptyLine(text, at) && isSeparator(rest.substr(0, length)))
            return {at, true};
        from = at + 1;
    }
    return {std::max(from, text.size() - std::min(text.size(), kStart.size() - 1)), false};
}

/// Goes behind the line that parts messages; false when there is none here.
bool MboxReader::takeSeparator()
{
    while (m_buffer.size() - m_next < kLongestSeparator && readOn()) {
    }
    const std::string_view text = std::string_view(m_buffer).substr(m_next, kLongestSeparator);
    const std::size_t length = text.find('\n');
    if (length == std::string_view::npos || !text.starts_with("From ")
        || !isSeparator(text.substr(0, length)))
        return false;
    m_next += length + 1;
    return true;
}

/// Reads the next piece of the file; false at its end, or where it cannot be read.
bool MboxReader::readOn()
{
    if (m_isAtEnd)
        return false;
    const std::size_t before = m_buffer.size();
    const qint64 from = m_offset + static_cast<qint64>(before);
    const auto most = std::clamp<qint64>(m_end - from, 0, kPiece);
    m_buffer.resize(before + kPiece);
    const ssize_t count =
        ::pread(m_file.get(), m_buffer.data() + before, static_cast<std::size_t>(most), from);
    m_buffer.resize(before + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    m_isAtEnd = count <= 0;
    m_hasFailed = count < 0;
    return !m_isAtEnd;
}

/// Has the message go on up to `end`.
void MboxReader::take(std::size_t end, Message &message)
{
    if (end <= m_next)
        return;
    const auto count = static_cast<qint64>(end - m_next);
    const qint64 room = MailParser::kMostMessage - message.bytes.size();
    message.bytes.append(m_buffer.data() + m_next, std::min(count, room));
    message.size += count;
    m_next = end;
}

/// Forgets what is in messages already.
void MboxReader::dropTaken()
{
    if (m_next < kPiece / 2 && !m_buffer.empty() && m_buffer.size() - m_next > kLongestSeparator)
        return;
    const std::size_t count = m_next - std::min(m_next, kBefore);
    m_buffer.erase(0, count);
    m_offset += static_cast<qint64>(count);
    m_next -= count;
}

} // namespace dugwise
