// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/IndexedFile.h"
#include "Utilities/FilePath.h"
#include "Utilities/Text.h"

#include <QDir>
#include <QFile>
#include <QTest>

/// Records and files for tests.
namespace dugwise::test {

/// What a test says of a record; the rest follows from the path.
struct FileFacts
{
    QString path;
    Instant modified{};
    std::optional<QByteArray> text{};
    std::optional<Instant> lastUsed{};
    std::optional<Instant> downloaded{};
    std::optional<QString> source{};
};

inline IndexedFile indexedFile(const FileFacts &facts)
{
    IndexedFileFields fields{
        .id = QUuid::createUuid(),
        .name = FilePath::name(facts.path),
        .path = facts.path,
        .fileExtension = FilePath::fileExtension(facts.path),
        .size = facts.text ? facts.text->size() : 0,
        .createdDate = facts.modified,
        .modifiedDate = facts.modified,
        .folderPath = FilePath::folder(facts.path),
        .extractedText = std::nullopt,
        .lastUsedDate = facts.lastUsed,
        .downloadDate = facts.downloaded,
        .downloadSource = facts.source,
    };
    if (facts.text)
        fields.extractedText = makeTextContent(*facts.text);
    return IndexedFile(fields);
}

/// Makes a file with what is missing above it.
inline void writeFile(const QString &path, const QByteArray &content)
{
    QVERIFY(QDir().mkpath(FilePath::folder(path)));
    QFile file(path);
    QVERIFY2(file.open(QFile::WriteOnly), qPrintable(path));
    QCOMPARE(file.write(content), content.size());
}

inline QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

/// Days and hours before and after an instant.
constexpr Instant operator-(Instant instant, double seconds)
{
    return {instant.seconds - seconds};
}
constexpr double kHour = 3600;
constexpr double kDay = 24 * kHour;

} // namespace dugwise::test
