// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <functional>
#include <optional>
#include <stop_token>

namespace dugwise {

class PDFDocumentReader;

/// How much of a document is read, and how its pages are put together.
struct PDFTextPlan
{
    int mostPages = 0;
    std::size_t maxLength = 0; ///< characters; no page is read beyond the one that passes it
    /// What a page, counted from 1, adds to the text, in UTF-8.
    std::function<QByteArray(int number, const QString &text)> page;
};

/// The text of the document's pages that have some; it may be longer than the plan's length.
/// Absent when the document cannot be opened or read to that point.
[[nodiscard]] std::optional<QByteArray> readPDFText(const QString &path,
                                                    const PDFTextPlan &plan,
                                                    const PDFDocumentReader &reader,
                                                    const std::stop_token &stop = {});

} // namespace dugwise
