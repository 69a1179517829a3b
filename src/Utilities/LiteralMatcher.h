// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

struct hs_database;
struct hs_scratch;

namespace dugwise {

/// A set of strings to be looked for; equal ones are held once.
class LiteralSet
{
public:
    /// Number of the string in the set. The empty string has one too and is found nowhere.
    [[nodiscard]] std::size_t add(const std::string &literal);

    [[nodiscard]] const std::vector<std::string> &literals() const { return m_literals; }

private:
    std::vector<std::string> m_literals;
    std::unordered_map<std::string, std::size_t> m_numbers;
};

/// Which strings of a set occur in one text.
class FoundLiterals
{
public:
    explicit FoundLiterals(std::size_t count)
        : m_bits((count + 63) / 64)
    {}

    void clear() { std::fill(m_bits.begin(), m_bits.end(), 0); }
    void insert(std::size_t number) { m_bits[number / 64] |= bit(number); }
    [[nodiscard]] bool contains(std::size_t number) const
    {
        return (m_bits[number / 64] & bit(number)) != 0;
    }

private:
    static std::uint64_t bit(std::size_t number) { return std::uint64_t{1} << (number % 64); }

    std::vector<std::uint64_t> m_bits;
};

/// Looks for all strings of a set in one pass over a text, byte for byte. For one thread.
class LiteralMatcher
{
public:
    explicit LiteralMatcher(const LiteralSet &set);

    /// Replaces what `found` holds.
    void scan(std::string_view text, FoundLiterals &found) const;

private:
    struct Numbered
    {
        std::string_view literal; ///< in m_literals
        std::size_t number = 0;
    };
    /// A string of the set that begins with no other, and those that begin with it: only the
    /// former is looked for, which halves the work for words and their inflections.
    struct Stem
    {
        Numbered stem;
        std::string_view compiled; ///< its beginning, as far as it is looked for
        std::vector<Numbered> longer{};
    };
    struct Scan;
    struct DatabaseDeleter
    {
        void operator()(hs_database *database) const;
    };
    struct ScratchDeleter
    {
        void operator()(hs_scratch *scratch) const;
    };

    [[nodiscard]] std::vector<Stem> findStems() const;
    [[nodiscard]] static std::vector<Stem> group(const std::vector<Numbered> &sorted,
                                                 std::size_t beginning);
    [[nodiscard]] bool compile();
    static int foundStem(
        unsigned stem, unsigned long long from, unsigned long long to, unsigned flags, void *scan);

    std::vector<std::string> m_literals;
    std::vector<Stem> m_stems;
    std::unique_ptr<hs_database, DatabaseDeleter> m_database; ///< null: searched one by one
    std::unique_ptr<hs_scratch, ScratchDeleter> m_scratch;
};

} // namespace dugwise
