// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/EnglishWords.h"

#include <algorithm>
#include <array>
#include <utility>

namespace dugwise::EnglishWords {

namespace {

// What is left of short forms ("don't", "he'll") is among them.
constexpr std::array<std::string_view, 160> kFunctionWords{
    "a",          "about",   "above",   "again",    "against",   "all",       "also",
    "although",   "am",      "among",   "an",       "and",       "any",       "anyone",
    "anything",   "are",     "as",      "at",       "be",        "because",   "been",
    "being",      "below",   "between", "both",     "but",       "by",        "can",
    "could",      "d",       "did",     "do",       "does",      "doing",     "done",
    "down",       "during",  "each",    "eg",       "else",      "etc",       "everyone",
    "everything", "few",     "for",     "from",     "further",   "had",       "has",
    "have",       "having",  "he",      "her",      "here",      "hers",      "herself",
    "him",        "himself", "his",     "how",      "i",         "ie",        "if",
    "in",         "into",    "is",      "it",       "its",       "itself",    "just",
    "ll",         "m",       "may",     "me",       "might",     "mine",      "more",
    "most",       "must",    "my",      "myself",   "no",        "nor",       "not",
    "nothing",    "of",      "off",     "on",       "once",      "only",      "onto",
    "or",         "other",   "our",     "ours",     "ourselves", "out",       "over",
    "own",        "per",     "re",      "s",        "same",      "shall",     "she",
    "should",     "so",      "some",    "somebody", "someone",   "something", "such",
    "t",          "than",    "that",    "the",      "their",     "theirs",    "them",
    "themselves", "then",    "there",   "these",    "they",      "this",      "those",
    "though",     "through", "to",      "too",      "under",     "unless",    "until",
    "up",         "upon",    "us",      "ve",       "very",      "via",       "was",
    "we",         "were",    "what",    "when",     "where",     "which",     "while",
    "who",        "whom",    "whose",   "why",      "will",      "with",      "without",
    "would",      "you",     "your",    "yours",    "yourself",  "yourselves"};
static_assert(std::ranges::is_sorted(kFunctionWords));

constexpr std::array<std::pair<std::string_view, std::string_view>, 37> kBases{
    {{"am", "be"},       {"an", "a"},         {"are", "be"},     {"been", "be"},
     {"being", "be"},    {"could", "can"},    {"did", "do"},     {"does", "do"},
     {"doing", "do"},    {"done", "do"},      {"had", "have"},   {"has", "have"},
     {"having", "have"}, {"her", "she"},      {"hers", "she"},   {"him", "he"},
     {"his", "he"},      {"is", "be"},        {"its", "it"},     {"me", "i"},
     {"might", "may"},   {"mine", "i"},       {"my", "i"},       {"our", "we"},
     {"ours", "we"},     {"should", "shall"}, {"their", "they"}, {"theirs", "they"},
     {"them", "they"},   {"these", "this"},   {"those", "that"}, {"us", "we"},
     {"was", "be"},      {"were", "be"},      {"would", "will"}, {"your", "you"},
     {"yours", "you"}}};
static_assert(std::ranges::is_sorted(kBases));

constexpr std::array<std::string_view, 6> kNegations{
    "never", "no", "none", "nor", "not", "without"};
static_assert(std::ranges::is_sorted(kNegations));

constexpr std::array<std::string_view, 36> kRequestWords{
    "ago",  "copy",   "couple",  "day",      "document", "download", "few",   "file",
    "find", "folder", "get",     "give",     "item",     "last",     "look",  "month",
    "need", "open",   "please",  "receive",  "recent",   "recently", "save",  "search",
    "send", "show",   "someone", "stuff",    "tell",     "thing",    "today", "tomorrow",
    "want", "week",   "year",    "yesterday"};
static_assert(std::ranges::is_sorted(kRequestWords));

} // namespace

bool isFunctionWord(std::string_view word)
{
    return std::ranges::binary_search(kFunctionWords, word);
}

std::string_view functionWordBase(std::string_view word)
{
    const auto *const found = std::ranges::lower_bound(
        kBases, word, {}, &std::pair<std::string_view, std::string_view>::first);
    return found != kBases.end() && found->first == word ? found->second : word;
}

bool isNegation(std::string_view word)
{
    return std::ranges::binary_search(kNegations, word);
}

bool isRequestWord(std::string_view word)
{
    return std::ranges::binary_search(kRequestWords, word);
}

} // namespace dugwise::EnglishWords
