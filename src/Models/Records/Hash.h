// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QList>

#include <optional>
#include <type_traits>

/// Hashes of field types that Qt 6.4 has no qHash() for.
namespace dugwise {

template <typename T>
[[nodiscard]] size_t hashOf(const std::optional<T> &value)
{
    return value ? qHashMulti(1, *value) : 0;
}

template <typename Enum>
requires std::is_enum_v<Enum>
[[nodiscard]] size_t hashOf(Enum value)
{
    return ::qHash(static_cast<int>(value), size_t{0});
}

template <typename Enum>
requires std::is_enum_v<Enum>
[[nodiscard]] size_t hashOf(const QList<Enum> &values)
{
    size_t seed = 0;
    for (const Enum value : values)
        seed = qHashMulti(seed, static_cast<int>(value));
    return seed;
}

} // namespace dugwise
