// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/TableEmbedding.h"

#include "Platform/PassageVectors.h"
#include "Platform/SentenceEncoder.h"
#include "Utilities/Text.h"

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

class TableEncoder final : public PassageEncoder
{
public:
    explicit TableEncoder(const EmbeddingTable &table)
        : m_encoder(table)
    {}
    [[nodiscard]] QByteArray vectors(const QByteArray &name,
                                     const QByteArrayList &passages) override
    {
        QList<SentenceVector> all{m_encoder.encodeName(view(name))};
        for (const QByteArray &passage : passages)
            all.append(m_encoder.encode(view(passage)));
        return PassageVectors::packed(all);
    }

private:
    SentenceEncoder m_encoder;
};

} // namespace

QString TableEmbedding::description() const
{
    return u"%1 English words, version %2"_s.arg(m_table.wordCount())
        .arg(m_table.version(), 16, 16, QLatin1Char('0'));
}

std::unique_ptr<PassageEncoder> TableEmbedding::encoder() const
{
    return std::make_unique<TableEncoder>(m_table);
}

std::unique_ptr<PassageQuery> TableEmbedding::query(const QByteArray &text) const
{
    return std::make_unique<PassageVectors::Query>(SentenceEncoder(m_table).encode(view(text)));
}

} // namespace dugwise
