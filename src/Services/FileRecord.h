// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/IndexedFile.h"
#include "Platform/DirectoryListing.h"
#include "Services/SpotlightMetadataService.h"
#include "Utilities/Clock.h"

#include <optional>
#include <stop_token>

namespace dugwise {

class PDFDocumentReader;

/// What making a record needs beside the file itself; callable from any thread.
struct FileRecordSources
{
    SpotlightMetadataService spotlightService;
    const PDFDocumentReader *pdfDocuments = nullptr; ///< null: PDFs give no text
    Clock clock;
};

/// The record of one file; absent when its attributes cannot be read.
[[nodiscard]] std::optional<IndexedFile> createIndexedFile(const ListedFile &file,
                                                           const FileRecordSources &sources,
                                                           const std::stop_token &stop = {});

/// The first `maxLength` characters of the first ten pages, each followed by a line feed; absent
/// when the document cannot be opened or has no text.
[[nodiscard]] std::optional<QByteArray> extractPDFText(const QString &path,
                                                       std::size_t maxLength,
                                                       const PDFDocumentReader &reader,
                                                       const std::stop_token &stop = {});

} // namespace dugwise
