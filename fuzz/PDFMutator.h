// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <cstdint>
#include <random>

namespace dugwise::fuzz {

/// Makes broken and hostile PDF documents out of sound ones; the same ones for the same seed.
class PDFMutator
{
public:
    PDFMutator(QByteArrayList sound, std::uint64_t seed);

    /// A document with a few of its bytes, numbers or parts spoilt.
    [[nodiscard]] QByteArray next();

    /// Documents that are well-formed enough to be followed into trouble: pages and forms that
    /// contain themselves or a billion others, arrays 100,000 deep, pages of astronomical size,
    /// streams that swell to a thousand times their size.
    [[nodiscard]] static QByteArrayList traps();

private:
    [[nodiscard]] qsizetype below(qsizetype bound);
    [[nodiscard]] const QByteArray &anySound();
    void flipBits(QByteArray &document);
    void cut(QByteArray &document);
    void splice(QByteArray &document);
    void zero(QByteArray &document);
    void changeDigits(QByteArray &document);
    void repeat(QByteArray &document);

    QByteArrayList m_sound;
    std::mt19937_64 m_random;
};

} // namespace dugwise::fuzz
