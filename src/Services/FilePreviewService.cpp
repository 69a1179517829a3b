// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/FilePreviewService.h"

#include "Platform/TextFile.h"
#include "Services/PDFText.h"
#include "Utilities/FileTypeHelper.h"
#include "Utilities/Formatters.h"
#include "Utilities/Text.h"

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr int kMostPages = 20;

enum class Kind {
    text,
    pdf,
    image,
    other,
};

Kind kindOf(const IndexedFile &file)
{
    const QString extension = lowerCased(file->fileExtension);
    if (FileTypeHelper::isTextExtractable(extension))
        return Kind::text;
    if (extension == "pdf"_L1)
        return Kind::pdf;
    return FileTypeHelper::fileType(extension) == FileType::image ? Kind::image : Kind::other;
}

QString withMarker(std::string_view text)
{
    return toQString(text) + u"\n\n[Truncated...]"_s;
}

QString imageMetadataDescription(const IndexedFile &file)
{
    return u"Image File: %1\nType: %2\nSize: %3\nLocation: %4"_s.arg(
        file->name, file->fileExtension.toUpper(), byteCount(file->size), file->folderPath);
}

} // namespace

std::optional<QString> FilePreviewService::extractPreviewText(const IndexedFile &file,
                                                              std::size_t maxLength,
                                                              const std::stop_token &stop) const
{
    switch (kindOf(file)) {
    case Kind::text:
        if (const auto head = readTextHead(file->path, maxLength, stop))
            return head->isWhole ? toQString(view(head->text)) : withMarker(view(head->text));
        return std::nullopt;
    case Kind::pdf:
        return readPDFFile(file->path, maxLength, stop);
    case Kind::image:
        return imageMetadataDescription(file);
    case Kind::other:
        break;
    }
    return std::nullopt;
}

bool FilePreviewService::canPreview(const IndexedFile &file)
{
    return kindOf(file) != Kind::other;
}

std::optional<QString> FilePreviewService::readPDFFile(const QString &path,
                                                       std::size_t maxLength,
                                                       const std::stop_token &stop) const
{
    if (!m_pdfDocuments)
        return std::nullopt;
    const PDFTextPlan plan{
        .mostPages = kMostPages,
        .maxLength = maxLength,
        .page =
            [](int number, const QString &text) {
                return "--- Page " + QByteArray::number(number) + " ---\n" + text.toUtf8() + "\n\n";
            },
    };
    const std::optional<QByteArray> text = readPDFText(path, plan, *m_pdfDocuments, stop);
    if (!text)
        return std::nullopt;
    if (text->isEmpty())
        return u"No extractable text in PDF."_s;
    const std::string_view whole = view(*text);
    const std::size_t length = prefixLength(whole, maxLength);
    return length < whole.size() ? withMarker(whole.substr(0, length)) : toQString(whole);
}

} // namespace dugwise
