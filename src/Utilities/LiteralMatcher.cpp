// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/LiteralMatcher.h"

#include <hs.h>

namespace dugwise {

namespace {

/// Longer strings do not fit the compiler's limits well, and are rare enough to be searched
/// one by one.
constexpr std::size_t kLongestCompiled = 256;

int insertMatch(unsigned number,
                unsigned long long /*from*/,
                unsigned long long /*to*/,
                unsigned /*flags*/,
                void *found)
{
    static_cast<FoundLiterals *>(found)->insert(number);
    return 0;
}

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

LiteralMatcher::LiteralMatcher(const LiteralSet &set)
{
    std::vector<Numbered> compiled;
    for (std::size_t i = 0; i < set.literals().size(); ++i) {
        const std::string &literal = set.literals()[i];
        if (literal.empty())
            continue;
        (literal.size() <= kLongestCompiled ? compiled : m_searchedSingly).push_back({literal, i});
    }
    if (!compiled.empty())
        compile(compiled);
}

void LiteralMatcher::compile(const std::vector<Numbered> &strings)
{
    std::vector<const char *> texts;
    std::vector<std::size_t> lengths;
    std::vector<unsigned> numbers;
    for (const Numbered &string : strings) {
        texts.push_back(string.literal.data());
        lengths.push_back(string.literal.size());
        numbers.push_back(static_cast<unsigned>(string.number));
    }
    const std::vector<unsigned> flags(strings.size(), HS_FLAG_SINGLEMATCH);
    hs_database_t *database = nullptr;
    hs_compile_error_t *error = nullptr;
    hs_scratch_t *scratch = nullptr;
    const auto count = static_cast<unsigned>(strings.size());
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
    if (isCompiled && hs_alloc_scratch(database, &scratch) == HS_SUCCESS) {
        m_scratch.reset(scratch);
    } else {
        m_database.reset();
        m_searchedSingly.insert(m_searchedSingly.end(), strings.begin(), strings.end());
    }
}

void LiteralMatcher::scan(std::string_view text, FoundLiterals &found) const
{
    found.clear();
    if (m_database && !text.empty()) {
        hs_scan(m_database.get(),
                text.data(),
                static_cast<unsigned>(text.size()),
                0,
                m_scratch.get(),
                insertMatch,
                &found);
    }
    for (const Numbered &string : m_searchedSingly) {
        if (text.find(string.literal) != std::string_view::npos)
            found.insert(string.number);
    }
}

} // namespace dugwise
