// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/EmbeddingTable.h"
#include "Platform/SentenceEmbedding.h"

namespace dugwise {

/// The sentence embedding of a table that dugwise-build-embedding has made.
class TableEmbedding final : public SentenceEmbedding
{
public:
    explicit TableEmbedding(EmbeddingTable table)
        : m_table(std::move(table))
    {}

    [[nodiscard]] quint64 version() const override { return m_table.version(); }
    [[nodiscard]] QString description() const override;
    [[nodiscard]] std::unique_ptr<PassageEncoder> encoder() const override;
    [[nodiscard]] std::unique_ptr<PassageQuery> query(const QByteArray &text) const override;

private:
    EmbeddingTable m_table;
};

} // namespace dugwise
