// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace dugwise {

/// Writes the records of AgendaProtocol.
class Records
{
public:
    /// Begins one that belongs to this document of the batch.
    void begin(std::uint32_t document);
    /// Adds a field. The text is UTF-8, else taken for Latin-1; more than 65,536 UTF-16 code units
    /// of it are cut.
    void text(std::string_view text);
    void number(std::int64_t number);
    void list(const std::vector<std::string> &elements);
    /// What the program gives back as it is, at any length.
    void whole(std::string_view text);
    void end();
    /// Takes back what was written behind this many code units.
    void cutTo(std::size_t size) { m_written.resize(size); }

    /// Bytes of a whole text; what is longer must not be given.
    static constexpr std::size_t kMostOfWhole = 262'144;

    [[nodiscard]] const std::u16string &written() const { return m_written; }

private:
    void append(std::string_view text, std::size_t most);

    std::u16string m_written;
};

/// Something in a document, that can be told. Telling is left for later, because that is where
/// foreign libraries get to see what is in it.
using Item = std::function<void(Records &records)>;

/// A document may have this many; what it has beyond is left out.
constexpr std::size_t kMostItems = 200'000;

} // namespace dugwise
