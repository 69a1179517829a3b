// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Utilities/Outcome.h"

#include <string>
#include <vector>

/// Our own additions to the dictionary, in files whose lines begin with # where they are comments.
namespace dugwise {

/// Words that the dictionary lacks, or lacks in this meaning. A line of glossary.txt:
///     word, word | how common | definition
struct GlossaryEntry
{
    std::vector<std::string> words;
    float count;
    std::string definition;
};

/// Words that belong to one subject. A line of topics.txt:
///     subject: word word word
struct Topic
{
    std::string subject;
    std::string words;
};

struct WordLists
{
    /// Fails when a file is missing or a line has another form.
    [[nodiscard]] static Outcome<WordLists> read(const std::string &folder);

    std::vector<GlossaryEntry> glossary;
    std::vector<Topic> topics;
};

} // namespace dugwise
