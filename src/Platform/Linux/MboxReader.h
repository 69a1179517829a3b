// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/FileDescriptor.h"

#include <QByteArray>

#include <limits>
#include <optional>
#include <string>

namespace dugwise {

/// Reads the messages of an mbox file one after the other. A message begins behind a line that
/// follows an empty line or is the file's first, starts with "From ", and has a time and a year in
/// it or goes on with "- ", as Thunderbird writes; other lines that start with "From " belong to a
/// message, for not every program marks those (RFC 4155 and what its section A tells of).
class MboxReader
{
public:
    struct Message
    {
        qint64 start;     ///< offset of its separator in the file
        qint64 size;      ///< bytes behind the separator, without line ends at the end
        QByteArray bytes; ///< the first of them, kMostMessage at most
        /// Tells the message from others: of what it says, not of its separator or of what programs
        /// note in its header (read, flagged, ...).
        quint64 key;
        bool isExpunged; ///< deleted in Thunderbird, and still there until the folder is compacted
    };

    /// Begins with the separator at `offset`; a file that has none there has no messages. What is
    /// behind `end` is taken for not there.
    explicit MboxReader(FileDescriptor file,
                        qint64 offset = 0,
                        qint64 end = std::numeric_limits<qint64>::max());

    /// Absent behind the last one, and where the file cannot be read.
    [[nodiscard]] std::optional<Message> next();
    /// Offset of what comes next.
    [[nodiscard]] qint64 position() const;
    /// Whether some of the file could not be read; there may be more in it then.
    [[nodiscard]] bool hasFailed() const { return m_hasFailed; }

private:
    struct Separator
    {
        std::size_t at; ///< of the line feed before it, or from where to look on
        bool isFound;
    };
    [[nodiscard]] Separator findSeparator(std::size_t from) const;
    [[nodiscard]] bool takeSeparator();
    bool readOn();
    void take(std::size_t end, Message &message);
    void dropTaken();

    FileDescriptor m_file;
    qint64 m_end;
    std::string m_buffer;   ///< a stretch of the file
    qint64 m_offset;        ///< where it begins there
    std::size_t m_next = 0; ///< the first byte in it that is in no message yet
    bool m_isAtEnd = false; ///< there is nothing behind the buffer
    bool m_hasFailed = false;
};

} // namespace dugwise
