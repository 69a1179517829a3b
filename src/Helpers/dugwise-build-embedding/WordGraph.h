// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Helpers/dugwise-build-embedding/SparseMatrix.h"
#include "Helpers/dugwise-build-embedding/Vocabulary.h"

namespace dugwise {

/// How strongly words are tied to the synsets and words around them. Rows are the words of the
/// vocabulary, columns the synsets, then the words. An element says how much likelier than by
/// chance a walk of two steps from the word ends there - over its meanings, to those related to
/// them and to the words of their definitions - as a logarithm; what is hardly likelier is left out
/// (positive pointwise mutual information).
[[nodiscard]] SparseMatrix wordContexts(const Dictionary &dictionary,
                                        const Vocabulary &vocabulary,
                                        Lemmatizer &lemmatizer,
                                        std::size_t threads);

} // namespace dugwise
