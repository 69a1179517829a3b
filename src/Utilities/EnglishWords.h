// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

/// Words that are told apart by lists, in lower case.
namespace dugwise::EnglishWords {

/// Articles, pronouns, prepositions, conjunctions, auxiliaries and the like: they carry grammar
/// rather than meaning, and dictionaries take many of them for something else ("he" for helium).
[[nodiscard]] bool isFunctionWord(std::string_view word);

/// The form that stands for all forms of a function word: "be" for "was"; the word itself where it
/// has no other.
[[nodiscard]] std::string_view functionWordBase(std::string_view word);

/// "not" and its like, which turn a sentence round.
[[nodiscard]] bool isNegation(std::string_view word);

/// What people say when they ask for any file at all: "find", "document", "yesterday".
[[nodiscard]] bool isRequestWord(std::string_view word);

} // namespace dugwise::EnglishWords
