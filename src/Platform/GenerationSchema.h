// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>

#include <optional>

namespace dugwise {

/// One property of a type of value that a language model generates.
struct GenerationProperty
{
    enum class Type {
        string,
        choice, ///< one of `choices`
        strings,
        integers,
    };

    QString name;
    QString description;
    Type type = Type::string;
    QStringList choices;             ///< in the order in which they are offered
    std::optional<int> maximumCount; ///< elements of a list
};

/// A type of value that a language model generates.
struct GenerationSchema
{
    QString name;
    QString description;
    QList<GenerationProperty> properties; ///< in the order in which they are presented
};

/// The type as JSON Schema (draft 2020-12), UTF-8 on one line, in the subset that model servers
/// enforce: an object with all of its properties and no others.
[[nodiscard]] QByteArray jsonSchema(const GenerationSchema &schema);

} // namespace dugwise
