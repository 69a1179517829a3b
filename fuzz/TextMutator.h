// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayList>

#include <algorithm>
#include <random>
#include <utility>

namespace dugwise::fuzz {

/// Spoils texts; the same ones for the same seed.
class TextMutator
{
public:
    /// `parts` are what a parser looks for.
    TextMutator(QByteArrayList parts, quint64 seed)
        : m_parts(std::move(parts))
        , m_random(seed)
    {}

    QByteArray spoilt(QByteArray text)
    {
        for (qsizetype changes = 1 + below(6); changes > 0; --changes) {
            const qsizetype place = below(text.size());
            const qsizetype length = below(std::min<qsizetype>(text.size() - place, 80) + 1);
            const QByteArray piece = text.sliced(place, length);
            switch (below(6)) {
            case 0:
                text[place] = static_cast<char>(m_random());
                break;
            case 1:
                text.remove(place, length);
                break;
            case 2:
                text.insert(below(text.size()), piece);
                break;
            case 3:
                text.insert(place, m_parts[below(m_parts.size())]);
                break;
            case 4:
                text.replace(place, length, m_parts[below(m_parts.size())]);
                break;
            default:
                text.insert(place, piece.repeated(below(200)));
            }
            text += ' ';
        }
        return text;
    }

private:
    qsizetype below(qsizetype bound)
    {
        return static_cast<qsizetype>(m_random() % static_cast<quint64>(bound));
    }

    QByteArrayList m_parts;
    std::mt19937_64 m_random;
};

} // namespace dugwise::fuzz
