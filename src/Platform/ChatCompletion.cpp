// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/ChatCompletion.h"

#include "Utilities/JsonText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace dugwise::ChatCompletion {

namespace {

void addMessage(JsonText &json, const QString &role, const QString &content)
{
    json.startObject();
    json.member(u"role"_s, role);
    json.member(u"content"_s, content);
    json.endObject();
}

/// Servers that cannot hold a model to a form still tell it of the form.
QString systemMessage(const LanguageModelRequest &request)
{
    if (!request.schema)
        return request.instructions;
    return request.instructions + u"\n\n"_s + QString::fromUtf8(jsonSchema(*request.schema))
           + u"\nAnswer with one JSON object of the form that this JSON Schema describes, and with "
             "nothing else."_s;
}

void addResponseFormat(JsonText &json, const GenerationSchema &schema)
{
    json.key(u"response_format"_s);
    json.startObject();
    json.member(u"type"_s, u"json_schema"_s);
    json.key(u"json_schema"_s);
    json.startObject();
    json.member(u"name"_s, schema.name);
    json.member(u"strict"_s, true);
    json.key(u"schema"_s);
    json.raw(jsonSchema(schema));
    json.endObject();
    json.endObject();
}

} // namespace

QStringList modelNames(const QByteArray &body)
{
    QStringList names;
    const QJsonArray models = QJsonDocument::fromJson(body).object()["data"_L1].toArray();
    for (const auto &model : models) {
        const QString name = model["id"_L1].toString();
        if (!name.isEmpty())
            names.append(name);
    }
    return names;
}

QByteArray requestBody(const QString &model, const LanguageModelRequest &request)
{
    JsonText json;
    json.startObject();
    json.member(u"model"_s, model);
    json.key(u"messages"_s);
    json.startArray();
    addMessage(json, u"system"_s, systemMessage(request));
    addMessage(json, u"user"_s, request.prompt);
    json.endArray();
    json.member(u"stream"_s, false);
    if (request.schema)
        addResponseFormat(json, *request.schema);
    json.endObject();
    return json.bytes();
}

Outcome<QString> answerText(const QByteArray &body)
{
    const QJsonObject choice =
        QJsonDocument::fromJson(body).object()["choices"_L1].toArray().at(0).toObject();
    if (choice["finish_reason"_L1].toString() == "length"_L1)
        return Failure{u"the model was cut short"_s};
    const QString text = choice["message"_L1]["content"_L1].toString();
    if (text.isEmpty())
        return Failure{u"the answer has no text"_s};
    return text;
}

} // namespace dugwise::ChatCompletion
