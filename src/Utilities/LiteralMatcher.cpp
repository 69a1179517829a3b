// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/LiteralMatcher.h"

#include <hs.h>

#include <algorithm>

namespace dugwise {

namespace {

/// Bytes of a string that are looked for at first. English words end alike more often than they
/// begin alike, and the matcher sorts candidates out by their ends: five bytes were fastest.
constexpr std::size_t kShortBeginning = 5;
/// The same for strings that begin like many others, which have to be told apart at once.
constexpr std::size_t kLongBeginning = 200;
/// Strings that may begin alike before they count as many.
constexpr std::size_t kMostAlike = 16;

} // namespace

std::size_t LiteralSet::add(const std::string &literal)
{
    const auto [entry, isNew] = m_numbers.try_emplace(literal, m_literals.size());
    if (isNew)
        m_literals.push_back(literal);
    return entry->second;
}

void LiteralMatcher::DatabaseDeleter::operator()(hs_database *database) const
{
    hs_free_database(database);
}

void LiteralMatcher::ScratchDeleter::operator()(hs_scratch *scratch) const
{
    hs_free_scratch(scratch);
}

/// What one scan works on.
struct LiteralMatcher::Scan
{
    const std::vector<Stem> &stems;
    std::string_view text;
    FoundLiterals &found;

    /// The stem is at `begin`, which may begin something longer.
    void see(const Stem &stem, std::size_t begin) const
    {
        const auto check = [&](const Numbered &string) {
            if (!found.contains(string.number) && text.substr(begin).starts_with(string.literal))
                found.insert(string.number);
        };
        check(stem.stem);
        std::ranges::for_each(stem.longer, check);
    }
};

LiteralMatcher::LiteralMatcher(const LiteralSet &set)
    : m_literals(set.literals())
    , m_stems(findStems())
{
    if (!m_stems.empty() && !compile()) {
        m_database.reset();
        m_scratch.reset();
    }
}

std::vector<LiteralMatcher::Stem> LiteralMatcher::findStems() const
{
    std::vector<Numbered> sorted;
    for (std::size_t i = 0; i < m_literals.size(); ++i) {
        if (!m_literals[i].empty())
            sorted.push_back({m_literals[i], i});
    }
    // What begins with a string comes right behind it.
    std::ranges::sort(sorted, {}, &Numbered::literal);
    std::vector<Stem> stems = group(sorted, kShortBeginning);
    std::vector<Stem> result;
    for (Stem &stem : stems) {
        if (stem.longer.size() < kMostAlike) {
            result.push_back(std::move(stem));
            continue;
        }
        result.push_back({stem.stem, stem.stem.literal.substr(0, kLongBeginning)});
        const std::vector<Stem> apart = group(stem.longer, kLongBeginning);
        result.insert(result.end(), apart.begin(), apart.end());
    }
    return result;
}

/// Groups sorted strings by their first `beginning` bytes.
std::vector<LiteralMatcher::Stem> LiteralMatcher::group(const std::vector<Numbered> &sorted,
                                                        std::size_t beginning)
{
    std::vector<Stem> stems;
    for (const Numbered &string : sorted) {
        if (!stems.empty() && string.literal.starts_with(stems.back().compiled))
            stems.back().longer.push_back(string);
        else
            stems.push_back({string, string.literal.substr(0, beginning)});
    }
    return stems;
}

bool LiteralMatcher::compile()
{
    std::vector<const char *> texts;
    std::vector<std::size_t> lengths;
    std::vector<unsigned> numbers;
    for (const Stem &stem : m_stems) {
        const std::string_view part = stem.compiled;
        texts.push_back(part.data());
        lengths.push_back(part.size());
        numbers.push_back(static_cast<unsigned>(numbers.size()));
    }
    const std::vector<unsigned> flags(m_stems.size(), 0);
    hs_database_t *database = nullptr;
    hs_compile_error_t *error = nullptr;
    hs_scratch_t *scratch = nullptr;
    const auto count = static_cast<unsigned>(m_stems.size());
    const bool isCompiled = hs_compile_lit_multi(texts.data(),
                                                 flags.data(),
                                                 numbers.data(),
                                                 lengths.data(),
                                                 count,
                                                 HS_MODE_BLOCK,
                                                 nullptr,
                                                 &database,
                                                 &error)
                            == HS_SUCCESS;
    hs_free_compile_error(error);
    m_database.reset(database);
    const bool isReady = isCompiled && hs_alloc_scratch(database, &scratch) == HS_SUCCESS;
    m_scratch.reset(scratch);
    return isReady;
}

int LiteralMatcher::foundStem(unsigned stem,
                              unsigned long long /*from*/,
                              unsigned long long to,
                              unsigned /*flags*/,
                              void *context)
{
    const auto *scan = static_cast<const Scan *>(context);
    const Stem &seen = scan->stems[stem];
    scan->see(seen, static_cast<std::size_t>(to) - seen.compiled.size());
    return 0;
}

void LiteralMatcher::scan(std::string_view text, FoundLiterals &found) const
{
    found.clear();
    Scan scan{m_stems, text, found};
    if (m_database) {
        hs_scan(m_database.get(),
                text.data(),
                static_cast<unsigned>(text.size()),
                0,
                m_scratch.get(),
                foundStem,
                &scan);
        return;
    }
    for (const Stem &stem : m_stems) {
        const std::string_view part = stem.compiled;
        for (std::size_t at = text.find(part); at != std::string_view::npos;
             at = text.find(part, at + 1))
            scan.see(stem, at);
    }
}

} // namespace dugwise
