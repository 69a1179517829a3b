// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-build-embedding/Lines.h"

#include <algorithm>
#include <charconv>
#include <fstream>

namespace dugwise {

std::optional<std::vector<std::string>> linesOf(const std::string &path)
{
    std::ifstream file(path);
    if (!file)
        return std::nullopt;
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(std::move(line));
    if (file.bad())
        return std::nullopt;
    return lines;
}

std::vector<std::string_view> fieldsOf(std::string_view line)
{
    std::vector<std::string_view> found;
    std::size_t at = line.find_first_not_of(' ');
    while (at < line.size()) {
        const std::size_t end = std::min(line.find(' ', at), line.size());
        found.push_back(line.substr(at, end - at));
        at = line.find_first_not_of(' ', end);
    }
    return found;
}

unsigned numberIn(std::string_view field, int base)
{
    unsigned number = 0;
    std::from_chars(field.data(), field.data() + field.size(), number, base);
    return number;
}

std::string lowerCasedAscii(std::string_view text)
{
    std::string lowered(text);
    for (char &c : lowered)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return lowered;
}

bool isAlphabetic(std::string_view text)
{
    return !text.empty() && std::ranges::all_of(text, [](char c) { return c >= 'a' && c <= 'z'; });
}

} // namespace dugwise
