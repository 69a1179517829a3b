// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/IndexedFileJson.h"

#include "Utilities/Text.h"

#include <array>
#include <cmath>
#include <limits>

namespace dugwise {

namespace {

/// Length of a UUID in its textual form.
constexpr std::size_t kUuidLength = 36;

QString toQString(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

IndexedFileReader::Field IndexedFileReader::fieldNamed(std::string_view key)
{
    using namespace IndexedFileKey;
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
    if (m_depth < 2)
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
    ++m_depth;
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
    return true;
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
    ++m_depth;
    return m_depth == 1 || (m_depth > 2 && (m_depth > 3 || m_field == unknown));
}

bool IndexedFileReader::EndArray(unsigned /*elementCount*/)
{
    --m_depth;
    return true;
}

} // namespace dugwise
