// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstddef>
#include <optional>
#include <utility>

namespace dugwise {

/// A file mapped into memory for reading (mmap(2)), with a NUL behind its last byte. The file must
/// not be cut while it is mapped; replacing it by another under its name is harmless.
class MappedText
{
public:
    /// Absent when the file cannot be read or is no regular file.
    [[nodiscard]] static std::optional<MappedText> open(const QString &path);

    MappedText(MappedText &&other) noexcept
        : m_data(std::exchange(other.m_data, nullptr))
        , m_size(other.m_size)
    {}
    MappedText &operator=(MappedText &&) = delete;
    MappedText(const MappedText &) = delete;
    MappedText &operator=(const MappedText &) = delete;
    ~MappedText();

    [[nodiscard]] const char *data() const { return m_data; }
    /// Bytes, without the NUL.
    [[nodiscard]] std::size_t size() const { return m_size; }

    /// Gives the memory of the first `length` bytes back to the system; they can still be read.
    void release(std::size_t length);

private:
    MappedText(char *data, std::size_t size)
        : m_data(data)
        , m_size(size)
    {}

    char *m_data;
    std::size_t m_size;
};

} // namespace dugwise
