// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLatin1StringView>

#include <array>
#include <optional>

namespace dugwise {

/// A symbol of the views, by the system's name for it.
struct Symbol
{
    QLatin1StringView name;
    /// The symbol's place in the Material icon font; 0 when it is a drawing of our own, in
    /// symbols/NAME.svg.
    char16_t glyph = 0;
};

/// All that the views use, in the order of their names.
extern const std::array<Symbol, 51> kSymbols;

[[nodiscard]] std::optional<Symbol> findSymbol(QStringView name);

} // namespace dugwise
