// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QHashFunctions>

#include <utility>

namespace dugwise {

/// Text read from a file, as UTF-8, with its lower-cased form beside it. Both are implicitly
/// shared; a text that lower-casing leaves as it is holds its bytes once.
class TextContent
{
public:
    TextContent() = default;
    /// `lowered` must be the lower-cased form of `text`; makeTextContent() sees to that.
    TextContent(QByteArray text, QByteArray lowered)
        : m_text(std::move(text))
        , m_lowered(std::move(lowered))
    {}

    [[nodiscard]] const QByteArray &text() const { return m_text; }
    [[nodiscard]] const QByteArray &lowered() const { return m_lowered; }

    friend bool operator==(const TextContent &a, const TextContent &b)
    {
        return a.m_text == b.m_text;
    }
    friend size_t qHash(const TextContent &content, size_t seed = 0)
    {
        return qHashMulti(seed, content.m_text);
    }

private:
    QByteArray m_text;
    QByteArray m_lowered;
};

} // namespace dugwise

Q_DECLARE_TYPEINFO(dugwise::TextContent, Q_RELOCATABLE_TYPE);
