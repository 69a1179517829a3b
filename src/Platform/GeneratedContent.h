// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/GenerationSchema.h"
#include "Utilities/Outcome.h"

#include <variant>

namespace dugwise {

/// What a language model generated, before it is read as a type of its own: properties by name, in
/// the order of their schema.
struct GeneratedContent
{
    using Value = std::variant<QString, QStringList, QList<qint64>>;

    struct Property
    {
        QString name;
        Value value;

        bool operator==(const Property &) const = default;
    };

    QList<Property> properties;

    /// Null when there is none of that name.
    [[nodiscard]] const Value *value(const QString &name) const;

    bool operator==(const GeneratedContent &) const = default;
};

/// The first JSON object in a model's answer that has every property of the schema in its type.
/// What stands around it (reasoning, a code fence) and further properties are passed over, and a
/// list that is longer than it may be is cut. `text` may be any bytes, and reading a megabyte may
/// take longer than a frame.
[[nodiscard]] Outcome<GeneratedContent> readGeneratedContent(const QByteArray &text,
                                                             const GenerationSchema &schema);

} // namespace dugwise
