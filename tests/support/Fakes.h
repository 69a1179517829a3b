// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/FolderPicker.h"
#include "Platform/MetadataItem.h"
#include "Platform/MetadataQueryCommand.h"
#include "Platform/PDFDocument.h"

#include <QHash>

/// Stand-ins for what the desktop gives.
namespace dugwise::test {

/// Knows the items that a test puts in.
class FakeMetadataIndex final : public MetadataIndex
{
public:
    QHash<QString, MetadataItem> items;

    [[nodiscard]] std::optional<MetadataItem> item(const QString &path) const override
    {
        const auto at = items.constFind(path);
        return at == items.cend() ? std::nullopt : std::optional(*at);
    }
};

/// Reads the same at all times.
class FakeMetadataReader final : public MetadataReader
{
public:
    std::shared_ptr<FakeMetadataIndex> index = std::make_shared<FakeMetadataIndex>();

    [[nodiscard]] std::shared_ptr<const MetadataIndex>
    read(std::shared_ptr<const MetadataIndex> /*previous*/, const std::stop_token &) const override
    {
        return index;
    }
};

/// Answers one run after the other with what a test has set down, and keeps the arguments.
class FakeMetadataQueryCommand final : public MetadataQueryCommand
{
public:
    QList<std::optional<QByteArray>> outputs;
    QList<QStringList> runs;

    [[nodiscard]] QCoro::Task<std::optional<QByteArray>> run(QStringList arguments) override
    {
        runs.append(arguments);
        std::optional<QByteArray> output;
        if (!outputs.isEmpty())
            output = outputs.takeFirst();
        co_return output;
    }
};

/// The texts of a document's pages; absent where a page is only a picture.
using FakePages = QList<std::optional<QString>>;

class FakePDFDocument final : public PDFDocument
{
public:
    explicit FakePDFDocument(FakePages pages)
        : m_pages(std::move(pages))
    {}
    [[nodiscard]] int pageCount() const override { return static_cast<int>(m_pages.size()); }
    [[nodiscard]] std::optional<QString> pageText(int page) const override
    {
        return m_pages.value(page);
    }

private:
    FakePages m_pages;
};

/// Opens the documents that a test puts in, by their paths.
class FakePDFDocumentReader final : public PDFDocumentReader
{
public:
    QHash<QString, FakePages> documents;

    [[nodiscard]] bool read(const QString &path,
                            const std::function<void(const PDFDocument &document)> &use,
                            const std::stop_token &) const override
    {
        const auto at = documents.constFind(path);
        if (at != documents.cend())
            use(FakePDFDocument(*at));
        return at != documents.cend();
    }
};

/// Picks what a test has chosen, or cancels.
class FakeFolderPicker final : public FolderPicker
{
public:
    std::optional<QString> choice;
    QStringList shown;

    [[nodiscard]] QCoro::Task<std::optional<QString>> pickFolder(QString message,
                                                                 QString confirmLabel) override
    {
        shown = {message, confirmLabel};
        co_return choice;
    }
};

} // namespace dugwise::test
