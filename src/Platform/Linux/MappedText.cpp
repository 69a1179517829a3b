// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/MappedText.h"

#include "Platform/FileDescriptor.h"

#include <QFile>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>

namespace dugwise {

namespace {

std::size_t pageSize()
{
    return static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

/// Length of the mapping: whole pages, with room for the NUL.
std::size_t mappedLength(std::size_t size)
{
    return (size / pageSize() + 1) * pageSize();
}

} // namespace

std::optional<MappedText> MappedText::open(const QString &path)
{
    const FileDescriptor file(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat facts = {};
    if (!file || ::fstat(file.get(), &facts) != 0 || !S_ISREG(facts.st_mode))
        return std::nullopt;
    const auto size = static_cast<std::size_t>(facts.st_size);
    // Zeros first, then the file over them: a zero is left behind its end in any case.
    void *const pages = ::mmap(
        nullptr, mappedLength(size), PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (pages == MAP_FAILED)
        return std::nullopt;
    MappedText text(static_cast<char *>(pages), size);
    if (size > 0
        && ::mmap(pages, size, PROT_READ, MAP_PRIVATE | MAP_FIXED, file.get(), 0) == MAP_FAILED)
        return std::nullopt;
    ::madvise(pages, size, MADV_SEQUENTIAL);
    return text;
}

MappedText::~MappedText()
{
    if (m_data)
        ::munmap(m_data, mappedLength(m_size));
}

void MappedText::release(std::size_t length)
{
    ::madvise(m_data, length / pageSize() * pageSize(), MADV_DONTNEED);
}

} // namespace dugwise
