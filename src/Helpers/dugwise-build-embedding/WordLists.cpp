// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-build-embedding/WordLists.h"

#include "Helpers/dugwise-build-embedding/Lines.h"

#include <algorithm>
#include <optional>

namespace dugwise {

using namespace Qt::StringLiterals;

namespace {

bool isComment(std::string_view line)
{
    return line.empty() || line.front() == '#';
}

std::optional<GlossaryEntry> glossaryEntry(const std::string &line)
{
    const std::size_t first = line.find('|');
    const std::size_t second = line.find('|', first + 1);
    if (first == std::string::npos || second == std::string::npos)
        return std::nullopt;
    std::string words = line.substr(0, first);
    std::ranges::replace(words, ',', ' ');
    const auto count = fieldsOf(std::string_view(line).substr(first + 1, second - first - 1));
    GlossaryEntry entry{{}, 0, line.substr(second + 1)};
    for (const std::string_view word : fieldsOf(words)) {
        if (isAlphabetic(word))
            entry.words.emplace_back(word);
    }
    if (entry.words.empty() || count.size() != 1)
        return std::nullopt;
    entry.count = static_cast<float>(numberIn(count.front()));
    return entry;
}

std::optional<Topic> topic(const std::string &line)
{
    const std::size_t colon = line.find(':');
    if (colon == std::string::npos)
        return std::nullopt;
    return Topic{line.substr(0, colon), line.substr(colon + 1)};
}

/// What `parse` makes of each line that is no comment.
template <typename Parsed>
Outcome<std::vector<Parsed>> parsedLines(const std::string &path,
                                         std::optional<Parsed> (*parse)(const std::string &))
{
    const auto lines = linesOf(path);
    if (!lines)
        return Failure{u"cannot read "_s + QString::fromStdString(path)};
    std::vector<Parsed> all;
    for (const std::string &line : *lines) {
        if (isComment(line))
            continue;
        std::optional<Parsed> parsed = parse(line);
        if (!parsed)
            return Failure{u"broken line in "_s + QString::fromStdString(path) + u": "_s
                           + QString::fromStdString(line)};
        all.push_back(std::move(*parsed));
    }
    return all;
}

} // namespace

Outcome<WordLists> WordLists::read(const std::string &folder)
{
    const auto glossary = parsedLines(folder + "/glossary.txt", glossaryEntry);
    if (!glossary)
        return Failure{glossary.error()};
    const auto topics = parsedLines(folder + "/topics.txt", topic);
    if (!topics)
        return Failure{topics.error()};
    return WordLists{*glossary, *topics};
}

} // namespace dugwise
