// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/EmbeddingTable.h"
#include "Platform/SentenceVector.h"
#include "Platform/WordIdentity.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace dugwise {

/// Turns English text into vectors: a sum over its words, in which rare words count more (smooth
/// inverse frequency, Arora, Liang, Ma 2017), less what all sentences have in common. Remembers the
/// words it has met. For one thread; several can share a table, which must outlive them.
class SentenceEncoder
{
public:
    explicit SentenceEncoder(const EmbeddingTable &table)
        : m_table(table)
    {}

    [[nodiscard]] SentenceVector encode(std::string_view utf8);
    /// The same for the name of a file, whose words capitals may tell apart.
    [[nodiscard]] SentenceVector encodeName(std::string_view utf8);

private:
    using Sum = EmbeddingTable::Vector;

    /// A word that a token stands for, or may stand for.
    struct Term
    {
        std::uint64_t hash = 0;                                ///< fnv1a() of the word
        std::shared_ptr<const WordIdentity::Vector> unknown{}; ///< of letters that are no word
        std::optional<EmbeddingTable::Codes> meaning{};
        float meaningScale = 0; ///< of the levels that the codes stand for
        float identityWeight = 0;
    };
    struct Token
    {
        std::vector<Term> terms{};
        bool isNumber = false;
        bool isLong = false; ///< of letters, and enough of them to tell a language by
        bool isFunctionWord = false;
        bool isWord = false;   ///< itself or a form of a word of the table
        bool isParted = false; ///< two words that were written as one
        float count = 0;       ///< in the text that is being encoded
    };
    using Tokens = std::unordered_map<std::string, Token>;

    [[nodiscard]] SentenceVector encodeTokens(const std::vector<std::string> &tokens);
    [[nodiscard]] static bool areEnglish(const std::vector<Token *> &tokens);
    [[nodiscard]] Token &lookUp(const std::string &token);
    [[nodiscard]] Token &lookUpRepaired(const std::string &token);
    [[nodiscard]] Token read(const std::string &token) const;
    [[nodiscard]] std::vector<Term> terms(std::string_view token, float factor) const;
    [[nodiscard]] Term term(const std::string &word, float share) const;
    static void addToken(Sum &sum, const Token &token, bool isEnglish);
    static void addTerm(Sum &sum, const Term &term, float count, bool isEnglish);
    void centre(Sum &sum, bool isEnglish) const;

    const EmbeddingTable &m_table;
    Tokens m_tokens;
    Tokens m_repaired; ///< what stands for unknown words of short texts
};

} // namespace dugwise
