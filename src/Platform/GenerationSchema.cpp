// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/GenerationSchema.h"

#include "Utilities/JsonText.h"

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

void addList(JsonText &json, const QString &elementType, std::optional<qint64> maximumCount)
{
    json.member(u"type"_s, u"array"_s);
    json.key(u"items"_s);
    json.startObject();
    json.member(u"type"_s, elementType);
    json.endObject();
    if (maximumCount)
        json.member(u"maxItems"_s, *maximumCount);
}

void addProperty(JsonText &json, const GenerationProperty &property)
{
    json.key(property.name);
    json.startObject();
    json.member(u"description"_s, property.description);
    switch (property.type) {
    case GenerationProperty::Type::string:
        json.member(u"type"_s, u"string"_s);
        break;
    case GenerationProperty::Type::choice:
        json.member(u"type"_s, u"string"_s);
        json.member(u"enum"_s, property.choices);
        break;
    case GenerationProperty::Type::strings:
        addList(json, u"string"_s, property.maximumCount);
        break;
    case GenerationProperty::Type::integers:
        addList(json, u"integer"_s, property.maximumCount);
        break;
    }
    json.endObject();
}

} // namespace

QByteArray jsonSchema(const GenerationSchema &schema)
{
    QStringList names;
    JsonText json;
    json.startObject();
    json.member(u"type"_s, u"object"_s);
    json.member(u"description"_s, schema.description);
    json.key(u"properties"_s);
    json.startObject();
    for (const GenerationProperty &property : schema.properties) {
        names.append(property.name);
        addProperty(json, property);
    }
    json.endObject();
    json.member(u"required"_s, names);
    json.member(u"additionalProperties"_s, false);
    json.endObject();
    return json.bytes();
}

} // namespace dugwise
