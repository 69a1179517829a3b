// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/IndexFile.h"

#include "Platform/MappedText.h"
#include "Platform/ReplacedFile.h"
#include "Services/IndexedFileJson.h"

#include <QFile>

#include <rapidjson/reader.h>

namespace dugwise::IndexFile {

namespace {

/// How much is read or gathered before memory is given back.
constexpr std::size_t kPiece = std::size_t{4} * 1024 * 1024;

/// Gives back the memory of what was read, a piece at a time, while records are made of it.
class ReleasingReader : public IndexedFileReader
{
public:
    ReleasingReader(MappedText &text, const rapidjson::StringStream &stream)
        : m_text(text)
        , m_stream(stream)
    {}

    bool EndObject(unsigned memberCount)
    {
        const std::size_t position = m_stream.Tell();
        if (position - m_released >= kPiece) {
            m_text.release(position);
            m_released = position;
        }
        return IndexedFileReader::EndObject(memberCount);
    }

private:
    MappedText &m_text;
    const rapidjson::StringStream &m_stream;
    std::size_t m_released = 0;
};

/// Writes what the buffer holds and empties it.
bool flush(rapidjson::StringBuffer &buffer, QFile &file)
{
    const auto length = static_cast<qint64>(buffer.GetSize());
    const bool isWritten = file.write(buffer.GetString(), length) == length;
    buffer.Clear();
    return isWritten;
}

bool writeAll(const QList<IndexedFile> &files, QFile &file)
{
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    bool isGood = writer.StartArray();
    for (const IndexedFile &record : files) {
        isGood = isGood && writeJson(record, writer);
        if (buffer.GetSize() >= kPiece)
            isGood = isGood && flush(buffer, file);
    }
    return isGood && writer.EndArray() && flush(buffer, file);
}

} // namespace

std::optional<QList<IndexedFile>> load(const QString &path)
{
    std::optional<MappedText> text = MappedText::open(path);
    if (!text)
        return std::nullopt;
    rapidjson::StringStream stream(text->data());
    ReleasingReader records(*text, stream);
    rapidjson::Reader reader;
    const bool isRead =
        !reader.Parse<rapidjson::kParseFullPrecisionFlag>(stream, records).IsError();
    // A NUL in the file would look like its end.
    return isRead && stream.Tell() == text->size() ? std::optional(records.takeFiles())
                                                   : std::nullopt;
}

Outcome<Success> save(const QString &path, const QList<IndexedFile> &files)
{
    return replaceFile(path, [&](QFile &file) { return writeAll(files, file); });
}

} // namespace dugwise::IndexFile
