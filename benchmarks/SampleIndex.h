// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/IndexedFile.h"
#include "SampleText.h"
#include "Utilities/Clock.h"
#include "Utilities/FilePath.h"
#include "Utilities/Text.h"

#include <QList>

namespace dugwise::bench {

/// Records of texts of 5,000 characters in folders of a hundred, over the past year.
inline QList<IndexedFile> sampleIndex(qsizetype count)
{
    constexpr qsizetype kCharacters = 5000;
    constexpr unsigned kYear = 365 * 86'400;
    SampleText sample(1);
    const Instant now = Clock().now();
    QList<IndexedFile> files;
    QString folder;
    for (qsizetype i = 0; i < count; ++i) {
        if (i % 100 == 0)
            folder = QStringLiteral("/home/sample/Documents/%1").arg(sample.name());
        const QString name = QStringLiteral("%1 %2.txt").arg(sample.name()).arg(i);
        const QByteArray text = sample.text(kCharacters);
        IndexedFileFields fields{
            .id = QUuid::createUuid(),
            .name = name,
            .path = folder + u'/' + name,
            .fileExtension = QStringLiteral("txt"),
            .size = text.size(),
            .createdDate = {now.seconds - sample.number(kYear) - 0.125},
            .modifiedDate = {now.seconds - sample.number(kYear) - 0.375},
            .folderPath = folder,
            .extractedText = makeTextContent(text),
            .lastUsedDate = std::nullopt,
            .downloadDate = std::nullopt,
            .downloadSource = std::nullopt,
        };
        files.append(IndexedFile(std::move(fields)));
    }
    return files;
}

/// Bytes of UTF-8 text in the records.
inline double textSize(const QList<IndexedFile> &files)
{
    double size = 0;
    for (const IndexedFile &file : files)
        size += static_cast<double>(file->extractedText->text().size());
    return size;
}

} // namespace dugwise::bench
