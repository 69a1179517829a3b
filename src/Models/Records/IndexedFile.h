// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/Instant.h"
#include "Models/Records/TextContent.h"

#include <QByteArray>
#include <QString>
#include <QUuid>

#include <memory>
#include <optional>

namespace dugwise {

/// The facts of one indexed file.
struct IndexedFileFields
{
    QUuid id;              ///< random, given when the record is made; kept on disk
    QString name;          ///< last path component, with its extension
    QString path;          ///< absolute
    QString fileExtension; ///< without the dot, in its own case; empty when there is none
    qint64 size = 0;       ///< bytes
    Instant createdDate;   ///< from the file system
    Instant modifiedDate;  ///< from the file system
    QString folderPath;    ///< absolute path of the folder that holds the file
    std::optional<TextContent> extractedText; ///< leading text, where the kind has any
    std::optional<Instant> lastUsedDate;      ///< when the person last opened it
    std::optional<Instant> downloadDate;      ///< when it was downloaded
    std::optional<QString> downloadSource;    ///< where it was downloaded from

    bool operator==(const IndexedFileFields &) const = default;
};

[[nodiscard]] size_t qHash(const IndexedFileFields &fields, size_t seed = 0);

/// One indexed file, as every part of the system passes it around: an immutable value whose copy
/// costs one reference count, so that a list of 100,000 of them is a cheap snapshot for a worker.
/// To change a field, copy the fields, change the copy and make a new record of it.
class IndexedFile
{
public:
    IndexedFile();
    explicit IndexedFile(IndexedFileFields fields, QByteArray passageVectors = {});

    const IndexedFileFields &operator*() const { return m_content->fields; }
    const IndexedFileFields *operator->() const { return &m_content->fields; }

    /// The vectors of the name and text in a sentence embedding, which alone reads them; empty when
    /// they are not made. They follow from the fields and are no part of comparing records.
    [[nodiscard]] const QByteArray &passageVectors() const { return m_content->passageVectors; }

    friend bool operator==(const IndexedFile &a, const IndexedFile &b)
    {
        return a.m_content == b.m_content || *a == *b;
    }
    friend size_t qHash(const IndexedFile &file, size_t seed = 0) { return qHash(*file, seed); }

private:
    struct Content
    {
        IndexedFileFields fields;
        QByteArray passageVectors;
    };

    // Shared because records are immutable snapshots that live in many lists at once.
    std::shared_ptr<const Content> m_content;
};

} // namespace dugwise

Q_DECLARE_TYPEINFO(dugwise::IndexedFile, Q_RELOCATABLE_TYPE);
