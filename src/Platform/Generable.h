// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/GeneratedContent.h"

#include <algorithm>
#include <tuple>
#include <type_traits>

/// Types of values that a language model generates. Such a type is a struct with
/// - `kName` and `kDescription`, which the model is given,
/// - `properties()`, a std::tuple of GeneratedProperty in the order in which they are presented.
/// A member is a QString, a QStringList, a QList<qint64> or an enumeration with a GeneratedChoice.
namespace dugwise {

template <typename T, typename Member>
struct GeneratedProperty
{
    QLatin1StringView name;
    QLatin1StringView description;
    Member T::*member = nullptr;
    std::optional<int> maximumCount = std::nullopt; ///< elements of a list
};

/// Specialised for an enumeration: `kName`, and `kValues`, the texts of its enumerators in order.
template <typename Choice>
struct GeneratedChoice;

namespace detail {

template <typename Member>
GenerationProperty::Type typeOf()
{
    if constexpr (std::is_enum_v<Member>)
        return GenerationProperty::Type::choice;
    else if constexpr (std::is_same_v<Member, QString>)
        return GenerationProperty::Type::string;
    else if constexpr (std::is_same_v<Member, QStringList>)
        return GenerationProperty::Type::strings;
    else
        return GenerationProperty::Type::integers;
}

template <typename Member>
QStringList choicesOf()
{
    QStringList choices;
    if constexpr (std::is_enum_v<Member>) {
        for (const QLatin1StringView value : GeneratedChoice<Member>::kValues)
            choices.append(value);
    }
    return choices;
}

/// Reads one member; the failure says why it could not be.
template <typename Member>
Outcome<Success>
decode(const GeneratedContent::Value *value, QLatin1StringView name, Member &member)
{
    using Read = std::conditional_t<std::is_enum_v<Member>, QString, Member>;
    const Read *const read = value ? std::get_if<Read>(value) : nullptr;
    if (!read)
        return Failure{QStringLiteral("No usable value for %1").arg(name)};
    if constexpr (std::is_enum_v<Member>) {
        using Choice = GeneratedChoice<Member>;
        const auto at = std::ranges::find(Choice::kValues, *read);
        if (at == Choice::kValues.end()) {
            return Failure{
                QStringLiteral("Unexpected value \"%1\" for %2").arg(*read, Choice::kName)};
        }
        member = static_cast<Member>(at - Choice::kValues.begin());
    } else {
        member = *read;
    }
    return Success();
}

template <typename Member>
GeneratedContent::Value encode(const Member &member)
{
    if constexpr (std::is_enum_v<Member>)
        return QString(GeneratedChoice<Member>::kValues.at(static_cast<std::size_t>(member)));
    else
        return member;
}

} // namespace detail

/// What a model is told about the type.
template <typename T>
[[nodiscard]] GenerationSchema generationSchema()
{
    GenerationSchema schema{T::kName, T::kDescription, {}};
    const auto add = [&]<typename Member>(const GeneratedProperty<T, Member> &property) {
        schema.properties.append({property.name,
                                  property.description,
                                  detail::typeOf<Member>(),
                                  detail::choicesOf<Member>(),
                                  property.maximumCount});
    };
    std::apply([&](const auto &...properties) { (add(properties), ...); }, T::properties());
    return schema;
}

/// A generated value as its type. Fails on a text that is none of a choice's, matched exactly.
template <typename T>
[[nodiscard]] Outcome<T> decoded(const GeneratedContent &content)
{
    T value;
    Outcome<Success> outcome = Success();
    const auto read = [&](const auto &property) {
        outcome =
            detail::decode(content.value(property.name), property.name, value.*(property.member));
        return bool(outcome);
    };
    std::apply([&](const auto &...properties) { (read(properties) && ...); }, T::properties());
    if (!outcome)
        return Failure{outcome.error()};
    return value;
}

/// The generic form of a value, from which decoded() reads it again.
template <typename T>
[[nodiscard]] GeneratedContent generatedContent(const T &value)
{
    GeneratedContent content;
    const auto add = [&](const auto &property) {
        content.properties.append({property.name, detail::encode(value.*(property.member))});
    };
    std::apply([&](const auto &...properties) { (add(properties), ...); }, T::properties());
    return content;
}

} // namespace dugwise
