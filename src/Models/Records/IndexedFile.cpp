// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/Records/IndexedFile.h"

#include "Models/Records/Hash.h"

namespace dugwise {

size_t qHash(const IndexedFileFields &fields, size_t seed)
{
    return qHashMulti(seed,
                      fields.id,
                      fields.name,
                      fields.path,
                      fields.fileExtension,
                      fields.size,
                      fields.createdDate,
                      fields.modifiedDate,
                      fields.folderPath,
                      hashOf(fields.extractedText),
                      hashOf(fields.lastUsedDate),
                      hashOf(fields.downloadDate),
                      hashOf(fields.downloadSource));
}

IndexedFile::IndexedFile()
{
    static const auto kEmpty = std::make_shared<const Content>();
    m_content = kEmpty;
}

IndexedFile::IndexedFile(IndexedFileFields fields, QByteArray passageVectors)
    : m_content(
        std::make_shared<const Content>(Content{std::move(fields), std::move(passageVectors)}))
{}

} // namespace dugwise
