// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/FileRecord.h"

#include "Platform/FileAttributes.h"
#include "Platform/TextFile.h"
#include "Services/PDFText.h"
#include "Utilities/FilePath.h"
#include "Utilities/FileTypeHelper.h"
#include "Utilities/Text.h"

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

/// Characters of text that a record keeps.
constexpr std::size_t kMostCharacters = 5000;
constexpr int kMostPages = 10;

std::optional<QByteArray> extractText(const QString &path,
                                      const QString &extension,
                                      const FileRecordSources &sources,
                                      const std::stop_token &stop)
{
    const QString lowered = lowerCased(extension);
    if (FileTypeHelper::isTextExtractable(lowered)) {
        const std::optional<TextHead> head = readTextHead(path, kMostCharacters, stop);
        return head ? std::optional(head->text) : std::nullopt;
    }
    if (lowered == "pdf"_L1 && sources.pdfDocuments)
        return extractPDFText(path, kMostCharacters, *sources.pdfDocuments, stop);
    return std::nullopt;
}

} // namespace

std::optional<IndexedFile> createIndexedFile(const ListedFile &file,
                                             const FileRecordSources &sources,
                                             const std::stop_token &stop)
{
    const QString path = file.path();
    const auto attributes = fileAttributes(path);
    if (!attributes || !attributes->isRegularFile)
        return std::nullopt;
    const QString extension = FilePath::fileExtension(file.name);
    const SpotlightFileMetadata metadata = sources.spotlightService.getMetadata(path);
    IndexedFileFields fields{
        .id = QUuid::createUuid(),
        .name = file.name,
        .path = path,
        .fileExtension = extension,
        .size = attributes->size,
        .createdDate = attributes->createdDate.value_or(sources.clock.now()),
        .modifiedDate = attributes->modifiedDate,
        .folderPath = file.folderPath,
        .extractedText = std::nullopt,
        .lastUsedDate = metadata.lastUsedDate,
        .downloadDate = metadata.downloadDate,
        .downloadSource = metadata.downloadSource,
    };
    if (auto text = extractText(path, extension, sources, stop))
        fields.extractedText = makeTextContent(std::move(*text));
    return IndexedFile(std::move(fields));
}

std::optional<QByteArray> extractPDFText(const QString &path,
                                         std::size_t maxLength,
                                         const PDFDocumentReader &reader,
                                         const std::stop_token &stop)
{
    const PDFTextPlan plan{
        .mostPages = kMostPages,
        .maxLength = maxLength,
        .page = [](int, const QString &text) { return text.toUtf8() + '\n'; },
    };
    const std::optional<QByteArray> text = readPDFText(path, plan, reader, stop);
    if (!text || text->isEmpty())
        return std::nullopt;
    return text->first(static_cast<qsizetype>(prefixLength(view(*text), maxLength)));
}

} // namespace dugwise
