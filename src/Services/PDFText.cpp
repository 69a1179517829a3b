// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/PDFText.h"

#include "Platform/PDFDocument.h"
#include "Utilities/Text.h"

#include <algorithm>

namespace dugwise {

std::optional<QByteArray> readPDFText(const QString &path,
                                      const PDFTextPlan &plan,
                                      const PDFDocumentReader &reader,
                                      const std::stop_token &stop)
{
    QByteArray text;
    const auto isLonger = [&] {
        return prefixLength(view(text), plan.maxLength) < static_cast<std::size_t>(text.size());
    };
    const auto readPages = [&](const PDFDocument &document) {
        text.clear();
        const int pages = std::min(document.pageCount(), plan.mostPages);
        for (int page = 0; page < pages && !isLonger(); ++page) {
            if (const std::optional<QString> pageText = document.pageText(page))
                text += plan.page(page + 1, *pageText);
        }
    };
    return reader.read(path, readPages, stop) ? std::optional(text) : std::nullopt;
}

} // namespace dugwise
