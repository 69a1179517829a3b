// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/FileKind.h"

#include <algorithm>
#include <initializer_list>

namespace dugwise {

namespace {

bool containsAny(std::string_view text, std::initializer_list<std::string_view> parts)
{
    return std::ranges::any_of(
        parts, [&](std::string_view part) { return text.find(part) != std::string_view::npos; });
}

} // namespace

bool isLikelyScreenshot(FileType kind, const FileNames &names)
{
    if (containsAny(names.name, {"screenshot", "screen shot", "screen capture"}))
        return true;
    if (kind != FileType::image)
        return false;
    // The last three are names that screen-capture tools give their files.
    return names.name.starts_with("screen")
           || containsAny(names.name, {"capture", "cleanshot", "shottr", "snagit"})
           || containsAny(names.folder, {"screenshots", "screen shots", "desktop"});
}

bool matchesFileType(FileType kind, const FileNames &names, FileType target)
{
    if (kind == target)
        return true;
    switch (target) {
    case FileType::document:
        return kind == FileType::text || kind == FileType::markdown;
    case FileType::image:
    case FileType::screenshot:
        return isLikelyScreenshot(kind, names);
    default:
        return false;
    }
}

} // namespace dugwise
