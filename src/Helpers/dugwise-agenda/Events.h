// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Helpers/dugwise-agenda/Records.h"

namespace dugwise {

/// The events of a calendar's document, one of which stands for all occurrences that are alike.
/// Cancelled ones are left out, occurrences too.
void addEvents(std::uint32_t number, std::string_view document, std::vector<Item> &items);

/// The occurrences of the one event of a document that an event's record came with.
void addOccurrences(std::uint32_t number,
                    std::string_view document,
                    std::int64_t earliest,
                    std::int64_t latest,
                    std::vector<Item> &items);

} // namespace dugwise
