// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine/AnswerJson.h"

#include "Utilities/FileTypeHelper.h"
#include "Utilities/JsonText.h"

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

std::optional<QString> actionName(const std::optional<ChatAction> &action)
{
    if (!action)
        return std::nullopt;
    return action->kind == ChatAction::Kind::openFile ? u"openFile"_s : u"getInsights"_s;
}

std::optional<double> seconds(const std::optional<Instant> &instant)
{
    if (!instant)
        return std::nullopt;
    return instant->seconds;
}

void addResult(JsonText &json, qsizetype number, const SearchResult &result)
{
    const IndexedFile &file = result.file;
    QStringList reasons;
    for (const SearchResult::MatchReason reason : result.matchReasons)
        reasons.append(rawValue(reason));
    json.startObject();
    json.member(u"number"_s, number);
    json.member(u"id"_s, result.id.toString(QUuid::WithoutBraces));
    json.member(u"name"_s, file->name);
    json.member(u"path"_s, file->path);
    json.member(u"folderPath"_s, file->folderPath);
    json.member(u"fileExtension"_s, file->fileExtension);
    json.member(u"kind"_s, rawValue(FileTypeHelper::fileType(file->fileExtension)));
    json.member(u"size"_s, file->size);
    json.member(u"createdDate"_s, file->createdDate.seconds);
    json.member(u"modifiedDate"_s, file->modifiedDate.seconds);
    json.member(u"lastUsedDate"_s, seconds(file->lastUsedDate));
    json.member(u"downloadDate"_s, seconds(file->downloadDate));
    json.member(u"downloadSource"_s, file->downloadSource);
    json.member(u"relevanceScore"_s, result.relevanceScore);
    json.member(u"matchReasons"_s, reasons);
    json.member(u"summary"_s, result.summary);
    json.endObject();
}

void addCrossAppResult(JsonText &json, const CrossAppResult &result)
{
    json.startObject();
    json.member(u"source"_s, rawValue(result.source));
    json.member(u"title"_s, result.title);
    json.member(u"subtitle"_s, result.subtitle);
    json.member(u"snippet"_s, result.snippet);
    json.member(u"date"_s, result.date.seconds);
    json.member(u"relevanceScore"_s, result.relevanceScore);
    json.member(u"actionPath"_s, result.actionPath);
    json.endObject();
}

void addInsights(JsonText &json, const DocumentInsightsResult &insights)
{
    json.startObject();
    json.member(u"fileName"_s, insights.fileName);
    json.member(u"summary"_s, insights.summary);
    json.member(u"keyPoints"_s, insights.keyPoints);
    json.member(u"documentType"_s, insights.documentType);
    json.member(u"entities"_s, insights.entities);
    json.endObject();
}

} // namespace

QByteArray answerJson(const QString &request,
                      const std::optional<ChatAction> &action,
                      const ChatMessage &answer)
{
    JsonText json;
    json.startObject();
    json.member(u"request"_s, request);
    json.member(u"action"_s, actionName(action));
    json.member(u"answer"_s, answer.content);
    json.key(u"results"_s);
    json.startArray();
    for (qsizetype i = 0; i < answer.results.size(); ++i)
        addResult(json, i + 1, answer.results[i]);
    json.endArray();
    json.key(u"crossAppResults"_s);
    json.startArray();
    for (const CrossAppResult &result : answer.crossAppResults)
        addCrossAppResult(json, result);
    json.endArray();
    json.key(u"insights"_s);
    if (answer.insights)
        addInsights(json, *answer.insights);
    else
        json.null();
    json.endObject();
    return json.bytes();
}

} // namespace dugwise
