// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>
#include <optional>

namespace dugwise {

/// The closed set of file kinds that requests, results and views speak of.
enum class FileType {
    pdf,
    text,
    markdown,
    document,
    image,
    screenshot,
    spreadsheet,
    presentation,
    code,
    archive,
    other,
};

/// Every kind, in declaration order.
inline constexpr std::array kAllFileTypes{
    FileType::pdf,
    FileType::text,
    FileType::markdown,
    FileType::document,
    FileType::image,
    FileType::screenshot,
    FileType::spreadsheet,
    FileType::presentation,
    FileType::code,
    FileType::archive,
    FileType::other,
};

/// The name under which a kind is written in JSON.
[[nodiscard]] QString rawValue(FileType type);
/// The kind of that name, matched exactly; none for any other name.
[[nodiscard]] std::optional<FileType> fileTypeFromRawValue(QStringView rawValue);
/// The label that people see.
[[nodiscard]] QString displayName(FileType type);

} // namespace dugwise
