// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/FileType.h"
#include "Models/Records/IndexedFile.h"

#include <string_view>

namespace dugwise {

/// The lower-cased texts of a file that scoring looks at, beside its record.
struct FileNames
{
    std::string_view name;
    std::string_view folder;
};

/// Whether name and folder say that this is a picture of a screen.
[[nodiscard]] bool isLikelyScreenshot(FileType kind, const FileNames &names);

/// Whether a file of this kind is what a request for `target` wants.
[[nodiscard]] bool matchesFileType(FileType kind, const FileNames &names, FileType target);

} // namespace dugwise
