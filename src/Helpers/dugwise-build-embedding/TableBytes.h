// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Helpers/dugwise-build-embedding/Vocabulary.h"
#include "Platform/EmbeddingTable.h"

#include <string>
#include <vector>

namespace dugwise {

/// The table as a file. Absent when there is more of something than the format can hold.
[[nodiscard]] std::optional<std::string>
tableBytes(const Dictionary &dictionary,
           const Vocabulary &vocabulary,
           const std::vector<EmbeddingFormat::Codes> &codes,
           const EmbeddingTable::Vector &mean);

} // namespace dugwise
