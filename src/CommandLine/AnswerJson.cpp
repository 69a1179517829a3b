// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine/AnswerJson.h"

#include "Utilities/FileTypeHelper.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace dugwise {

namespace {

/// Writes the parts of an answer, in the documented order of their keys.
class AnswerWriter
{
public:
    QByteArray write(const QString &request, const ChatMessage &answer)
    {
        m_json.StartObject();
        add("request", request);
        addNull("action");
        add("answer", answer.content);
        m_json.Key("results");
        m_json.StartArray();
        for (qsizetype i = 0; i < answer.results.size(); ++i)
            addResult(i + 1, answer.results[i]);
        m_json.EndArray();
        m_json.Key("crossAppResults");
        m_json.StartArray();
        for (const CrossAppResult &result : answer.crossAppResults)
            addCrossAppResult(result);
        m_json.EndArray();
        m_json.Key("insights");
        addInsights(answer.insights);
        m_json.EndObject();
        return {m_buffer.GetString(), static_cast<qsizetype>(m_buffer.GetSize())};
    }

private:
    void addString(const QString &value)
    {
        const QByteArray utf8 = value.toUtf8();
        m_json.String(utf8.constData(), static_cast<unsigned>(utf8.size()));
    }
    void addNull(const char *key)
    {
        m_json.Key(key);
        m_json.Null();
    }
    void add(const char *key, const QString &value)
    {
        m_json.Key(key);
        addString(value);
    }
    void add(const char *key, double value)
    {
        m_json.Key(key);
        m_json.Double(value);
    }
    void add(const char *key, qint64 value)
    {
        m_json.Key(key);
        m_json.Int64(value);
    }
    void add(const char *key, Instant value) { add(key, value.seconds); }
    void add(const char *key, const QStringList &values)
    {
        m_json.Key(key);
        m_json.StartArray();
        for (const QString &value : values)
            addString(value);
        m_json.EndArray();
    }
    template <typename T>
    void add(const char *key, const std::optional<T> &value)
    {
        if (value)
            add(key, *value);
        else
            addNull(key);
    }

    void addResult(qsizetype number, const SearchResult &result)
    {
        const IndexedFile &file = result.file;
        QStringList reasons;
        for (const SearchResult::MatchReason reason : result.matchReasons)
            reasons.append(rawValue(reason));
        m_json.StartObject();
        add("number", static_cast<qint64>(number));
        add("id", result.id.toString(QUuid::WithoutBraces));
        add("name", file->name);
        add("path", file->path);
        add("folderPath", file->folderPath);
        add("fileExtension", file->fileExtension);
        add("kind", rawValue(FileTypeHelper::fileType(file->fileExtension)));
        add("size", file->size);
        add("createdDate", file->createdDate);
        add("modifiedDate", file->modifiedDate);
        add("lastUsedDate", file->lastUsedDate);
        add("downloadDate", file->downloadDate);
        add("downloadSource", file->downloadSource);
        add("relevanceScore", result.relevanceScore);
        add("matchReasons", reasons);
        add("summary", result.summary);
        m_json.EndObject();
    }

    void addCrossAppResult(const CrossAppResult &result)
    {
        m_json.StartObject();
        add("source", rawValue(result.source));
        add("title", result.title);
        add("subtitle", result.subtitle);
        add("snippet", result.snippet);
        add("date", result.date);
        add("relevanceScore", result.relevanceScore);
        add("actionPath", result.actionPath);
        m_json.EndObject();
    }

    void addInsights(const std::optional<DocumentInsightsResult> &insights)
    {
        if (!insights) {
            m_json.Null();
            return;
        }
        m_json.StartObject();
        add("fileName", insights->fileName);
        add("summary", insights->summary);
        add("keyPoints", insights->keyPoints);
        add("documentType", insights->documentType);
        add("entities", insights->entities);
        m_json.EndObject();
    }

    rapidjson::StringBuffer m_buffer;
    rapidjson::Writer<rapidjson::StringBuffer> m_json{m_buffer};
};

} // namespace

QByteArray answerJson(const QString &request, const ChatMessage &answer)
{
    return AnswerWriter().write(request, answer);
}

} // namespace dugwise
