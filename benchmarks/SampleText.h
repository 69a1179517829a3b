// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QFile>
#include <QString>

#include <array>
#include <random>

namespace dugwise::bench {

/// Makes texts of English out of the project's licence, a few of its words at a time, with the
/// frequencies of letters and words that matter to a search. A quarter of the texts also holds
/// words beyond ASCII. The same seed makes the same texts.
class SampleText
{
public:
    explicit SampleText(unsigned seed)
        : m_random(seed)
    {
        QFile licence(QStringLiteral(DUGWISE_LICENCE));
        if (!licence.open(QFile::ReadOnly))
            qFatal("cannot read the licence");
        m_words = licence.readAll().simplified().split(' ');
    }

    /// A text of about `characters` characters.
    QByteArray text(qsizetype characters)
    {
        const bool hasAccents = number(4) == 0;
        QByteArray text;
        while (text.size() < characters) {
            const unsigned at = number(static_cast<unsigned>(m_words.size()) - 8);
            text += m_words.mid(at, 2 + number(6)).join(' ');
            text += number(6) == 0 ? '\n' : ' ';
            if (hasAccents && number(3) == 0)
                text += accented();
        }
        text.squeeze();
        return text;
    }

    /// A file name without its extension.
    QString name() { return QString::fromUtf8(word() + '_' + word() + '-' + word()).remove(u'/'); }

    unsigned number(unsigned below) { return static_cast<unsigned>(m_random() % below); }

private:
    QByteArray word() { return m_words[number(static_cast<unsigned>(m_words.size()))]; }

    const char *accented()
    {
        static constexpr std::array kWords{
            "déjà vu ", "Größe ", "señor ", "Übung ", "naïve ", "façade ", "façon ", "Ærø "};
        return kWords[number(kWords.size())];
    }

    std::mt19937 m_random;
    QByteArrayList m_words;
};

} // namespace dugwise::bench
