// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

#include <memory>

namespace dugwise {

/// Makes the vectors of passages. Belongs to one thread, and remembers the words it has met, so
/// that many texts in a row take less time than each by itself.
class PassageEncoder
{
public:
    PassageEncoder() = default;
    Q_DISABLE_COPY_MOVE(PassageEncoder)
    virtual ~PassageEncoder() = default;

    /// The vectors of a file's name, in which capitals may tell words apart, and of passages of its
    /// text (UTF-8), packed into bytes that only the embedding reads.
    [[nodiscard]] virtual QByteArray vectors(const QByteArray &name,
                                             const QByteArrayList &passages) = 0;
};

/// A text that passages are compared with; callable from any thread.
class PassageQuery
{
public:
    PassageQuery() = default;
    Q_DISABLE_COPY_MOVE(PassageQuery)
    virtual ~PassageQuery() = default;

    /// The least cosine distance to the name or any of the passages, from 0 (same meaning) to 2.
    [[nodiscard]] virtual double nearest(const QByteArray &vectors) const = 0;
};

/// An English sentence embedding: texts near in meaning are near as vectors. Immutable; callable
/// from any thread.
class SentenceEmbedding
{
public:
    SentenceEmbedding() = default;
    Q_DISABLE_COPY_MOVE(SentenceEmbedding)
    virtual ~SentenceEmbedding() = default;

    /// Vectors of another version say nothing to this one.
    [[nodiscard]] virtual quint64 version() const = 0;
    /// What it is and how large, in a few words.
    [[nodiscard]] virtual QString description() const = 0;
    [[nodiscard]] virtual std::unique_ptr<PassageEncoder> encoder() const = 0;
    [[nodiscard]] virtual std::unique_ptr<PassageQuery> query(const QByteArray &text) const = 0;
};

} // namespace dugwise
