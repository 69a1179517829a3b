// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/IndexedFile.h"

#include <QList>

#include <rapidjson/writer.h>

#include <bitset>
#include <string_view>

namespace dugwise {

/// Keys of a record's JSON object.
namespace IndexedFileKey {
inline constexpr std::string_view kId = "id";
inline constexpr std::string_view kName = "name";
inline constexpr std::string_view kPath = "path";
inline constexpr std::string_view kFileExtension = "fileExtension";
inline constexpr std::string_view kSize = "size";
inline constexpr std::string_view kCreatedDate = "createdDate";
inline constexpr std::string_view kModifiedDate = "modifiedDate";
inline constexpr std::string_view kFolderPath = "folderPath";
inline constexpr std::string_view kExtractedText = "extractedText";
inline constexpr std::string_view kLastUsedDate = "lastUsedDate";
inline constexpr std::string_view kDownloadDate = "downloadDate";
inline constexpr std::string_view kDownloadSource = "downloadSource";
} // namespace IndexedFileKey

/// Receives the events of a JSON reader and makes records of an array of objects. Ends the parse
/// on a missing key, on a value of a wrong type and on anything but such an array; keys that it
/// does not know are passed over with all that is in them.
class IndexedFileReader
{
public:
    [[nodiscard]] QList<IndexedFile> takeFiles() { return std::move(m_files); }

    // The events, as rapidjson::Reader names them; false ends the parse.
    bool Null();
    bool Bool(bool value);
    bool Int(int value) { return integer(value); }
    bool Uint(unsigned value) { return integer(value); }
    bool Int64(qint64 value) { return integer(value); }
    bool Uint64(quint64 value);
    bool Double(double value);
    bool RawNumber(const char *, unsigned, bool) { return false; }
    bool String(const char *text, unsigned length, bool isCopied);
    bool StartObject();
    bool Key(const char *text, unsigned length, bool isCopied);
    bool EndObject(unsigned memberCount);
    bool StartArray();
    bool EndArray(unsigned elementCount);

private:
    enum Field {
        id,
        name,
        path,
        fileExtension,
        size,
        createdDate,
        modifiedDate,
        folderPath,
        requiredFields, ///< how many there are; the rest may be missing
        extractedText = requiredFields,
        lastUsedDate,
        downloadDate,
        downloadSource,
        unknown,
    };
    static Field fieldNamed(std::string_view key);

    bool integer(qint64 value);
    bool setText(std::string_view text);
    [[nodiscard]] bool isSkipping() const { return m_depth > 2 || m_field == unknown; }
    QString shared(QString &last, std::string_view text) const;

    QList<IndexedFile> m_files;
    IndexedFileFields m_fields;
    std::bitset<unknown> m_seen;
    Field m_field = unknown;
    int m_depth = 0; ///< of arrays and objects: records are at 2
    // Most neighbours share these two; they then share their memory too.
    QString m_lastFolder;
    QString m_lastExtension;
};

/// Writes the records as one JSON array; false when a number cannot be written as JSON.
template <typename OutputStream>
[[nodiscard]] bool writeJson(const QList<IndexedFile> &files, OutputStream &output)
{
    using namespace IndexedFileKey;
    rapidjson::Writer<OutputStream> writer(output);
    bool isGood = writer.StartArray();
    const auto bytes = [&](std::string_view text) {
        isGood = isGood && writer.String(text.data(), static_cast<unsigned>(text.size()));
    };
    const auto key = [&](std::string_view name) {
        isGood = isGood && writer.Key(name.data(), static_cast<unsigned>(name.size()));
    };
    const auto utf8 = [&](std::string_view name, const QByteArray &text) {
        key(name);
        bytes({text.constData(), static_cast<std::size_t>(text.size())});
    };
    const auto text = [&](std::string_view name, const QString &value) {
        utf8(name, value.toUtf8());
    };
    const auto date = [&](std::string_view name, Instant value) {
        key(name);
        isGood = isGood && writer.Double(value.seconds);
    };
    for (const IndexedFile &file : files) {
        isGood = isGood && writer.StartObject();
        utf8(kId, file->id.toByteArray(QUuid::WithoutBraces));
        text(kName, file->name);
        text(kPath, file->path);
        text(kFileExtension, file->fileExtension);
        key(kSize);
        isGood = isGood && writer.Int64(file->size);
        date(kCreatedDate, file->createdDate);
        date(kModifiedDate, file->modifiedDate);
        text(kFolderPath, file->folderPath);
        if (file->extractedText)
            utf8(kExtractedText, file->extractedText->text());
        if (file->lastUsedDate)
            date(kLastUsedDate, *file->lastUsedDate);
        if (file->downloadDate)
            date(kDownloadDate, *file->downloadDate);
        if (file->downloadSource)
            text(kDownloadSource, *file->downloadSource);
        isGood = isGood && writer.EndObject();
    }
    return isGood && writer.EndArray();
}

} // namespace dugwise
