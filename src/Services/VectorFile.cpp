// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/VectorFile.h"

#include "Platform/MappedText.h"
#include "Platform/ReplacedFile.h"
#include "Platform/StandardFolders.h"
#include "Utilities/FilePath.h"

#include <QFile>
#include <QHash>

#include <xxhash.h>

#include <array>
#include <cstring>
#include <memory>

namespace dugwise::VectorFile {

namespace {

/// How much is gathered before it is written.
constexpr qsizetype kPiece = qsizetype{1024} * 1024;

/// At the file's beginning, in the byte order of the machine: this is a cache, not a document.
struct Header
{
    std::array<char, 4> magic{'D', 'W', 'P', 'V'};
    quint32 format = 1;
    quint64 version = 0;  ///< of the embedding
    quint64 checksum = 0; ///< of all that follows
};

/// Before each file's vectors.
struct Entry
{
    std::array<char, sizeof(XXH128_canonical_t)> key{};
    quint32 size = 0; ///< bytes of vectors
};

using Key = decltype(Entry::key);

/// Tells one name and text from all others.
Key keyOf(const IndexedFileFields &file)
{
    const QByteArray text = file.extractedText ? file.extractedText->text() : QByteArray();
    const auto nameBytes = static_cast<std::size_t>(file.name.size()) * sizeof(QChar);
    const XXH64_hash_t name = XXH3_64bits(file.name.constData(), nameBytes);
    XXH128_canonical_t canonical;
    XXH128_canonicalFromHash(
        &canonical,
        XXH3_128bits_withSeed(text.constData(), static_cast<std::size_t>(text.size()), name));
    Key key{};
    std::memcpy(key.data(), canonical.digest, key.size());
    return key;
}

/// Where in the mapped file the vectors of each key are; empty when anything of it is not right.
QHash<QByteArray, QByteArray> entriesOf(const MappedText &file, quint64 version)
{
    Header header;
    if (file.size() < sizeof header)
        return {};
    std::memcpy(&header, file.data(), sizeof header);
    const std::size_t rest = file.size() - sizeof header;
    if (header.magic != Header().magic || header.format != Header().format
        || header.version != version
        || header.checksum != XXH3_64bits(file.data() + sizeof header, rest))
        return {};
    QHash<QByteArray, QByteArray> entries;
    for (std::size_t at = sizeof header; at + sizeof(Entry) <= file.size();) {
        Entry entry;
        std::memcpy(&entry, file.data() + at, sizeof entry);
        const char *const key = file.data() + at;
        at += sizeof entry;
        if (entry.size > file.size() - at)
            return {};
        entries.insert(QByteArray::fromRawData(key, sizeof entry.key),
                       QByteArray::fromRawData(file.data() + at, entry.size));
        at += entry.size;
    }
    return entries;
}

bool writeAll(const QList<IndexedFile> &files, QFile &file, quint64 version)
{
    const std::unique_ptr<XXH3_state_t, decltype(&XXH3_freeState)> checksum(XXH3_createState(),
                                                                            XXH3_freeState);
    XXH3_64bits_reset(checksum.get());
    Header header{.version = version};
    const auto writeHeader = [&] {
        return file.write(reinterpret_cast<const char *>(&header), sizeof header) == sizeof header;
    };
    QByteArray piece;
    const auto flush = [&] {
        XXH3_64bits_update(
            checksum.get(), piece.constData(), static_cast<std::size_t>(piece.size()));
        const bool isWritten = file.write(piece) == piece.size();
        piece.resize(0);
        return isWritten;
    };
    bool isGood = writeHeader();
    for (const IndexedFile &record : files) {
        const QByteArray &vectors = record.passageVectors();
        if (vectors.isEmpty())
            continue;
        const Entry entry{.key = keyOf(*record), .size = static_cast<quint32>(vectors.size())};
        piece.append(reinterpret_cast<const char *>(&entry), sizeof entry);
        piece.append(vectors);
        if (piece.size() >= kPiece)
            isGood = isGood && flush();
    }
    isGood = isGood && flush() && file.seek(0);
    header.checksum = XXH3_64bits_digest(checksum.get());
    return isGood && writeHeader();
}

} // namespace

QList<IndexedFile> attach(const QList<IndexedFile> &files, const QString &path, quint64 version)
{
    const std::optional<MappedText> file = MappedText::open(path);
    if (!file)
        return files;
    const QHash<QByteArray, QByteArray> entries = entriesOf(*file, version);
    if (entries.isEmpty())
        return files;
    QList<IndexedFile> attached;
    attached.reserve(files.size());
    for (const IndexedFile &record : files) {
        const Key key = keyOf(*record);
        const QByteArray vectors = entries.value(QByteArray::fromRawData(key.data(), key.size()));
        // A copy of its own: the mapped file goes.
        attached.append(
            vectors.isEmpty()
                ? record
                : IndexedFile(*record, QByteArray(vectors.constData(), vectors.size())));
    }
    return attached;
}

void save(const QList<IndexedFile> &files, const QString &path, quint64 version)
{
    makePrivateFolder(FilePath::folder(path));
    [[maybe_unused]] const Outcome<Success> outcome =
        replaceFile(path, [&](QFile &file) { return writeAll(files, file, version); });
}

} // namespace dugwise::VectorFile
