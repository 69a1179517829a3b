// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Helpers/dugwise-build-embedding/SparseMatrix.h"
#include "Platform/EmbeddingTableFormat.h"

#include <vector>

namespace dugwise {

/// The rows of the matrix in the fewer dimensions that keep most of it (singular value
/// decomposition by subspace iteration), as codes for their directions.
[[nodiscard]] std::vector<EmbeddingFormat::Codes> wordVectors(const SparseMatrix &contexts,
                                                              std::size_t threads);

} // namespace dugwise
