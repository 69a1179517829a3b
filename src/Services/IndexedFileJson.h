// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/IndexedFile.h"

#include <QList>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <bitset>
#include <string_view>

namespace dugwise {

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

using JsonWriter = rapidjson::Writer<rapidjson::StringBuffer>;

/// Writes one record as a JSON object; false when a number cannot be written as JSON.
[[nodiscard]] bool writeJson(const IndexedFile &file, JsonWriter &writer);

} // namespace dugwise
