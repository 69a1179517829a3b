// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace dugwise {

/// The text without what tells capitals from small letters and letters with marks from those
/// without
/// ("Größe" and "GROSSE" are alike), for finding one text in another: equal stretches of two texts
/// are equal stretches of their folded forms. Characters that are written in one piece or in
/// several become the same. `utf8` must be valid.
[[nodiscard]] std::string folded(std::string_view utf8);

} // namespace dugwise
