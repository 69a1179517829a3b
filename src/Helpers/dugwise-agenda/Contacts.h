// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Helpers/dugwise-agenda/Records.h"

namespace dugwise {

/// The entries of an address book's document (vCard 2.1, 3.0 and 4.0). Groups and lists are no
/// entries.
void addContacts(std::uint32_t number, std::string_view document, std::vector<Item> &items);

} // namespace dugwise
