// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <memory>
#include <optional>

namespace dugwise {

/// An opened PDF document.
class PDFDocument
{
public:
    PDFDocument() = default;
    Q_DISABLE_COPY_MOVE(PDFDocument)
    virtual ~PDFDocument() = default;

    [[nodiscard]] virtual int pageCount() const = 0;
    /// Plain text of a page counted from 0; absent when the page is missing or has none.
    [[nodiscard]] virtual std::optional<QString> pageText(int page) const = 0;
};

/// Opens PDF documents; callable from any thread.
class PDFDocumentReader
{
public:
    PDFDocumentReader() = default;
    Q_DISABLE_COPY_MOVE(PDFDocumentReader)
    virtual ~PDFDocumentReader() = default;

    /// Null when the file cannot be opened as a PDF.
    [[nodiscard]] virtual std::unique_ptr<PDFDocument> open(const QString &path) const = 0;
};

} // namespace dugwise
