// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/IndexFile.h"

#include "Services/IndexedFileJson.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <rapidjson/reader.h>

#include <array>
#include <vector>

using namespace Qt::StringLiterals;

namespace dugwise::IndexFile {

namespace {

constexpr std::size_t kBufferSize = 1024 * 1024;

/// A file as the JSON reader takes it: read on a buffer at a time, so that a large index is never
/// in memory beside its records.
class InputStream
{
public:
    using Ch = char;

    explicit InputStream(QFile &file)
        : m_file(file)
        , m_buffer(kBufferSize)
    {
        refill();
    }

    [[nodiscard]] Ch Peek() const { return *m_at; }
    Ch Take()
    {
        const Ch taken = *m_at;
        if (++m_at == m_end)
            refill();
        return taken;
    }
    [[nodiscard]] std::size_t Tell() const
    {
        return m_before + static_cast<std::size_t>(m_at - m_buffer.data());
    }

    // The reader asks for these, and calls them only when it parses in place.
    static Ch *PutBegin() { return nullptr; }
    static void Put(Ch) {}
    static std::size_t PutEnd(Ch *) { return 0; }

private:
    void refill()
    {
        m_before += static_cast<std::size_t>(m_end ? m_end - m_buffer.data() : 0);
        const qint64 count = m_file.read(m_buffer.data(), static_cast<qint64>(m_buffer.size()));
        const std::size_t filled = count > 0 ? static_cast<std::size_t>(count) : 0;
        if (filled == 0)
            m_buffer.front() = '\0'; // how the reader knows the end
        m_at = m_buffer.data();
        m_end = m_at + std::max(filled, std::size_t{1});
    }

    QFile &m_file;
    std::vector<char> m_buffer;
    const char *m_at = nullptr;
    const char *m_end = nullptr;
    std::size_t m_before = 0;
};

/// A file as the JSON writer takes it.
class OutputStream
{
public:
    using Ch = char;

    explicit OutputStream(QSaveFile &file)
        : m_file(file)
        , m_buffer(kBufferSize)
    {}

    void Put(Ch c)
    {
        if (m_filled == m_buffer.size())
            Flush();
        m_buffer[m_filled++] = c;
    }
    void Flush()
    {
        const auto length = static_cast<qint64>(m_filled);
        m_isGood = m_isGood && m_file.write(m_buffer.data(), length) == length;
        m_filled = 0;
    }
    [[nodiscard]] bool isGood() const { return m_isGood; }

private:
    QSaveFile &m_file;
    std::vector<char> m_buffer;
    std::size_t m_filled = 0;
    bool m_isGood = true;
};

/// What earlier saves left behind when they were killed.
void removeLeftovers(const QString &path)
{
    const QFileInfo info(path);
    QDir folder = info.dir();
    const QStringList leftovers = folder.entryList({info.fileName() + ".??????"_L1}, QDir::Files);
    for (const QString &name : leftovers)
        folder.remove(name);
}

} // namespace

std::optional<QList<IndexedFile>> load(const QString &path)
{
    QFile file(path);
    if (!file.open(QFile::ReadOnly | QFile::Unbuffered))
        return std::nullopt;
    InputStream input(file);
    IndexedFileReader records;
    rapidjson::Reader reader;
    constexpr unsigned kFlags =
        rapidjson::kParseFullPrecisionFlag | rapidjson::kParseValidateEncodingFlag;
    if (reader.Parse<kFlags>(input, records).IsError())
        return std::nullopt;
    return records.takeFiles();
}

Outcome<Success> save(const QString &path, const QList<IndexedFile> &files)
{
    removeLeftovers(path);
    QSaveFile file(path);
    if (!file.open(QFile::WriteOnly | QFile::Unbuffered))
        return Failure{file.errorString()};
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    OutputStream output(file);
    if (!writeJson(files, output))
        return Failure{u"a record cannot be written as JSON"_s};
    output.Flush();
    if (!output.isGood() || !file.commit())
        return Failure{file.errorString()};
    return Success{};
}

} // namespace dugwise::IndexFile
