// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace dugwise {

/// Leads the real window through its pages and states, over the person's own files but with an
/// index and settings of its own that are gone afterwards. Writes a picture of each state into
/// `pictureFolder` unless that is empty. Needs a QGuiApplication.
///
/// Returns the program's exit status: 1 when a state could not be reached or drawn, or when a
/// warning was given, each told in a line on standard error; otherwise 0.
[[nodiscard]] int runSelfTest(const QString &pictureFolder);

} // namespace dugwise
