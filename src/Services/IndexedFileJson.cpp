// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/IndexedFileJson.h"

#include "Utilities/Text.h"

#include <array>
#include <cmath>
#include <limits>

namespace dugwise {

namespace {

/// Keys of a record's JSON object.
constexpr std::string_view kId = "id";
constexpr std::string_view kName = "name";
constexpr std::string_view kPath = "path";
constexpr std::string_view kFileExtension = "fileExtension";
constexpr std::string_view kSize = "size";
constexpr std::string_view kCreatedDate = "createdDate";
constexpr std::string_view kModifiedDate = "modifiedDate";
constexpr std::string_view kFolderPath = "folderPath";
constexpr std::string_view kExtractedText = "extractedText";
constexpr std::string_view kLastUsedDate = "lastUsedDate";
constexpr std::string_view kDownloadDate = "downloadDate";
constexpr std::string_view kDownloadSource = "downloadSource";

/// How deep what is passed over may be nested; the JSON reader works by recursion.
constexpr int kDeepest = 64;

/// Length of a UUID in its textual form.
constexpr std::size_t kUuidLength = 36;

bool isUtf8(std::string_view text)
{
    return QByteArrayView(text.data(), static_cast<qsizetype>(text.size())).isValidUtf8();
}

} // namespace

IndexedFileReader::Field IndexedFileReader::fieldNamed(std::string_view key)
{
    static constexpr std::array kKeys{
        kId,
        kName,
        kPath,
        kFileExtension,
        kSize,
        kCreatedDate,
        kModifiedDate,
        kFolderPath,
        kExtractedText,
        kLastUsedDate,
        kDownloadDate,
        kDownloadSource,
    };
    const auto at = std::ranges::find(kKeys, key);
    return static_cast<Field>(at - kKeys.begin());
}

bool IndexedFileReader::Null()
{
    if (m_depth < 2)
        return false;
    return isSkipping() || m_field >= requiredFields; // an optional field that is null is absent
}

bool IndexedFileReader::Bool(bool /*value*/)
{
    return m_depth >= 2 && isSkipping();
}

bool IndexedFileReader::Uint64(quint64 value)
{
    if (m_depth >= 2 && isSkipping())
        return true;
    constexpr auto kMost = static_cast<quint64>(std::numeric_limits<qint64>::max());
    return value <= kMost ? integer(static_cast<qint64>(value))
                          : m_field != size && Double(static_cast<double>(value));
}

bool IndexedFileReader::integer(qint64 value)
{
    if (m_depth == 2 && m_field == size) {
        m_fields.size = value;
        m_seen.set(size);
        return true;
    }
    return Double(static_cast<double>(value));
}

bool IndexedFileReader::Double(double value)
{
    if (m_depth < 2)
        return false;
    if (isSkipping())
        return true;
    switch (m_field) {
    case createdDate:
        m_fields.createdDate = {value};
        break;
    case modifiedDate:
        m_fields.modifiedDate = {value};
        break;
    case lastUsedDate:
        m_fields.lastUsedDate = Instant{value};
        break;
    case downloadDate:
        m_fields.downloadDate = Instant{value};
        break;
    default:
        return false;
    }
    m_seen.set(m_field);
    return true;
}

bool IndexedFileReader::String(const char *text, unsigned length, bool /*isCopied*/)
{
    if (m_depth < 2 || !isUtf8({text, length}))
        return false;
    return isSkipping() || setText({text, length});
}

bool IndexedFileReader::setText(std::string_view text)
{
    switch (m_field) {
    case id:
        m_fields.id = QUuid::fromString(toQString(text));
        if (text.size() != kUuidLength || m_fields.id.isNull())
            return false;
        break;
    case name:
        m_fields.name = toQString(text);
        break;
    case path:
        m_fields.path = toQString(text);
        break;
    case fileExtension:
        m_fields.fileExtension = m_lastExtension = shared(m_lastExtension, text);
        break;
    case folderPath:
        m_fields.folderPath = m_lastFolder = shared(m_lastFolder, text);
        break;
    case extractedText:
        m_fields.extractedText =
            makeTextContent(QByteArray(text.data(), static_cast<qsizetype>(text.size())));
        break;
    case downloadSource:
        m_fields.downloadSource = toQString(text);
        break;
    default:
        return false;
    }
    m_seen.set(m_field);
    return true;
}

QString IndexedFileReader::shared(QString &last, std::string_view text) const
{
    const QString read = toQString(text);
    return read == last ? last : read;
}

bool IndexedFileReader::StartObject()
{
    if (++m_depth > kDeepest)
        return false;
    if (m_depth == 2) {
        m_fields = {};
        m_seen.reset();
        m_field = unknown;
        return true;
    }
    return m_depth > 2 && (m_depth > 3 || m_field == unknown);
}

bool IndexedFileReader::Key(const char *text, unsigned length, bool /*isCopied*/)
{
    if (m_depth == 2)
        m_field = fieldNamed({text, length});
    return isUtf8({text, length});
}

bool IndexedFileReader::EndObject(unsigned /*memberCount*/)
{
    --m_depth;
    if (m_depth != 1)
        return true;
    for (std::size_t field = 0; field < requiredFields; ++field) {
        if (!m_seen.test(field))
            return false;
    }
    m_files.append(IndexedFile(std::move(m_fields)));
    return true;
}

bool IndexedFileReader::StartArray()
{
    if (++m_depth > kDeepest)
        return false;
    return m_depth == 1 || (m_depth > 2 && (m_depth > 3 || m_field == unknown));
}

bool IndexedFileReader::EndArray(unsigned /*elementCount*/)
{
    --m_depth;
    return true;
}

bool writeJson(const IndexedFile &file, JsonWriter &writer)
{
    bool isGood = writer.StartObject();
    const auto string = [&](std::string_view bytes) {
        isGood = isGood && writer.String(bytes.data(), static_cast<unsigned>(bytes.size()));
    };
    const auto key = [&](std::string_view name) {
        isGood = isGood && writer.Key(name.data(), static_cast<unsigned>(name.size()));
    };
    const auto utf8 = [&](std::string_view name, const QByteArray &text) {
        key(name);
        string(view(text));
    };
    const auto text = [&](std::string_view name, const QString &value) {
        utf8(name, value.toUtf8());
    };
    const auto date = [&](std::string_view name, Instant value) {
        key(name);
        isGood = isGood && writer.Double(value.seconds);
    };
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
    return isGood && writer.EndObject();
}

} // namespace dugwise
