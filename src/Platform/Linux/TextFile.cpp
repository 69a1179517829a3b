// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/TextFile.h"

#include "Platform/FileDescriptor.h"
#include "Utilities/Text.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <vector>

namespace dugwise {

namespace {

constexpr std::size_t kPiece = std::size_t{256} * 1024;
constexpr qsizetype kMostKept = qsizetype{1024} * 1024;

/// Length of `bytes` without the sequence that its end cuts in the middle, if any.
std::size_t lengthOfWholeSequences(std::string_view bytes)
{
    constexpr std::size_t kLongestTail = 3;
    for (std::size_t back = 1; back <= std::min(kLongestTail, bytes.size()); ++back) {
        const auto byte = static_cast<unsigned char>(bytes[bytes.size() - back]);
        if (byte < 0x80)
            break;
        if (byte >= 0xC0) { // a leading byte: how many follow it
            const std::size_t length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : 2;
            return length > back ? bytes.size() - back : bytes.size();
        }
    }
    return bytes.size();
}

bool isValid(std::string_view bytes)
{
    return QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())).isValidUtf8();
}

/// Reads on at the end of `piece`; the number of bytes read, 0 at the end of the file, negative
/// on an error.
ssize_t readMore(int descriptor, std::vector<char> &piece, std::size_t filled)
{
    ssize_t count = 0;
    do {
        count = ::read(descriptor, piece.data() + filled, piece.size() - filled);
    } while (count < 0 && errno == EINTR);
    return count;
}

/// Opens without waiting, in case a pipe has taken the file's place.
FileDescriptor openRegularFile(const QString &path)
{
    FileDescriptor file(::open(QFile::encodeName(path).constData(),
                               O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY));
    struct stat facts = {};
    if (!file || ::fstat(file.get(), &facts) != 0 || !S_ISREG(facts.st_mode))
        return {};
    return file;
}

} // namespace

std::optional<TextHead>
readTextHead(const QString &path, std::size_t characters, const std::stop_token &stop)
{
    const FileDescriptor file = openRegularFile(path);
    if (!file)
        return std::nullopt;

    thread_local std::vector<char> piece(kPiece);
    std::size_t carried = 0; // bytes at the start of the piece: a sequence cut by the last one
    QByteArray head;
    bool isWhole = true;
    for (;;) {
        const ssize_t count = readMore(file.get(), piece, carried);
        if (count < 0 || stop.stop_requested())
            return std::nullopt;
        if (count == 0)
            break;
        const std::string_view filled(piece.data(), carried + static_cast<std::size_t>(count));
        const std::string_view whole = filled.substr(0, lengthOfWholeSequences(filled));
        if (!isValid(whole))
            return std::nullopt;
        if (isWhole && head.size() + static_cast<qsizetype>(whole.size()) <= kMostKept)
            head.append(whole.data(), static_cast<qsizetype>(whole.size()));
        else
            isWhole = false;
        carried = filled.size() - whole.size();
        std::copy(filled.begin() + static_cast<std::ptrdiff_t>(whole.size()),
                  filled.end(),
                  piece.begin());
    }
    if (carried > 0)
        return std::nullopt;

    const std::size_t length = prefixLength(view(head), characters);
    if (length < view(head).size()) {
        isWhole = false;
        head = head.first(static_cast<qsizetype>(length));
    }
    head.squeeze();
    return TextHead{std::move(head), isWhole};
}

} // namespace dugwise
