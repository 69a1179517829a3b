// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>
#include <optional>
#include <stop_token>

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

/// Reads PDF documents; callable from any thread, which waits.
class PDFDocumentReader
{
public:
    PDFDocumentReader() = default;
    Q_DISABLE_COPY_MOVE(PDFDocumentReader)
    virtual ~PDFDocumentReader() = default;

    /// Opens the document and has `use` read from it. False when it cannot be opened, or could not
    /// be read to the end; `use` may then have been called, and is called again, from the start,
    /// when that may help.
    [[nodiscard]] virtual bool read(const QString &path,
                                    const std::function<void(const PDFDocument &document)> &use,
                                    const std::stop_token &stop) const = 0;
    /// Forgets which documents could not be read: they are tried again.
    virtual void forgetFailures() const {}
};

} // namespace dugwise
