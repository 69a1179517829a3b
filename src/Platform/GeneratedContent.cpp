// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/GeneratedContent.h"

#include "Utilities/Text.h"

#include <rapidjson/document.h>
#include <rapidjson/encodedstream.h>
#include <rapidjson/memorystream.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

using Json = rapidjson::Value;

/// How many opening braces are tried, each of which may read on to the end of the answer.
constexpr int kMostTries = 20;

QString textOf(const Json &string)
{
    return toQString(std::string_view(string.GetString(), string.GetStringLength()));
}

/// The elements of a list up to `maximumCount`; none when one is of another type.
template <typename Element, typename Is, typename Get>
std::optional<QList<Element>>
list(const Json &json, const GenerationProperty &property, Is is, Get get)
{
    if (!json.IsArray())
        return std::nullopt;
    QList<Element> elements;
    for (const Json &element : json.GetArray()) {
        if (!(element.*is)())
            return std::nullopt;
        if (!property.maximumCount || elements.size() < *property.maximumCount)
            elements.append(get(element));
    }
    return elements;
}

std::optional<GeneratedContent::Value> value(const Json &json, const GenerationProperty &property)
{
    switch (property.type) {
    case GenerationProperty::Type::string:
    case GenerationProperty::Type::choice:
        if (json.IsString())
            return textOf(json);
        break;
    case GenerationProperty::Type::strings:
        return list<QString>(
            json, property, &Json::IsString, [](const Json &text) { return textOf(text); });
    case GenerationProperty::Type::integers:
        return list<qint64>(
            json, property, &Json::IsInt64, [](const Json &number) { return number.GetInt64(); });
    }
    return std::nullopt;
}

Outcome<GeneratedContent> content(const Json &object, const GenerationSchema &schema)
{
    GeneratedContent content;
    for (const GenerationProperty &property : schema.properties) {
        const auto at = object.FindMember(property.name.toUtf8().constData());
        if (at == object.MemberEnd())
            return Failure{u"%1 is missing in %2"_s.arg(property.name, schema.name)};
        const std::optional<GeneratedContent::Value> read = value(at->value, property);
        if (!read)
            return Failure{u"%1 of %2 is of another type"_s.arg(property.name, schema.name)};
        content.properties.append({property.name, *read});
    }
    return content;
}

/// The first object in the text that is of the schema.
Outcome<GeneratedContent> firstContent(const QByteArray &text, const GenerationSchema &schema)
{
    // Not by recursion, which nesting could drive too deep.
    constexpr unsigned kHow = rapidjson::kParseIterativeFlag | rapidjson::kParseStopWhenDoneFlag
                              | rapidjson::kParseValidateEncodingFlag;
    Outcome<GeneratedContent> outcome = Failure{u"there is no JSON object"_s};
    qsizetype start = text.indexOf('{');
    for (int i = 0; i < kMostTries && start >= 0; ++i) {
        rapidjson::Document document;
        rapidjson::MemoryStream rest(text.constData() + start,
                                     static_cast<std::size_t>(text.size() - start));
        rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream> stream(rest);
        document.ParseStream<kHow, rapidjson::UTF8<>>(stream);
        qsizetype length = 1;
        if (!document.HasParseError()) {
            outcome = content(document, schema);
            if (outcome)
                break;
            length = static_cast<qsizetype>(stream.Tell());
        }
        start = text.indexOf('{', start + length);
    }
    return outcome;
}

} // namespace

const GeneratedContent::Value *GeneratedContent::value(const QString &name) const
{
    const auto at = std::ranges::find(properties, name, &Property::name);
    return at == properties.end() ? nullptr : &at->value;
}

Outcome<GeneratedContent> readGeneratedContent(const QByteArray &text,
                                               const GenerationSchema &schema)
{
    const qsizetype reasoningEnd = text.lastIndexOf("</think>");
    if (reasoningEnd >= 0) {
        if (auto behind = firstContent(text.sliced(reasoningEnd), schema))
            return behind;
    }
    return firstContent(text, schema);
}

} // namespace dugwise
