// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/IndexedFile.h"

#include <QString>

#include <cstddef>
#include <optional>
#include <stop_token>

namespace dugwise {

class PDFDocumentReader;

/// The readable text of one file, on demand: more of it than the index keeps, with the pages of
/// PDFs marked, and images described by their file facts. Holds no state; callable from any thread.
class FilePreviewService
{
public:
    /// Null: PDFs have no text. The reader outlives the service.
    explicit FilePreviewService(const PDFDocumentReader *pdfDocuments)
        : m_pdfDocuments(pdfDocuments)
    {}

    /// At most `maxLength` characters, and a marker behind them where there is more. Absent when
    /// the file cannot be read or is of a kind that has no text. Reads the file, so it takes as
    /// long as that: never call it on the UI thread.
    [[nodiscard]] std::optional<QString> extractPreviewText(const IndexedFile &file,
                                                            std::size_t maxLength,
                                                            const std::stop_token &stop = {}) const;

    /// Whether the file is of a kind that has text.
    [[nodiscard]] static bool canPreview(const IndexedFile &file);

private:
    [[nodiscard]] std::optional<QString>
    readPDFFile(const QString &path, std::size_t maxLength, const std::stop_token &stop) const;

    const PDFDocumentReader *m_pdfDocuments;
};

} // namespace dugwise
