// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/SQLiteDatabase.h"
#include "Platform/MetadataQuery.h"

#include <QDeadlineTimer>

#include <string>
#include <string_view>

namespace dugwise {

/// The full-text index of stored mail: a database of our own in the cache folder, which any process
/// may search while one writes (MailIndexWriter). It can always be made again from the mail.
///
/// Texts are in it as folded() makes them, by their trigrams and those' places, so that any stretch
/// of three or more characters is found without reading a text. Addresses are spaced(), so that no
/// trigram is both of an address and of a text: to have the index heed the column takes it as long
/// again. The number of a message begins with its date: the index delivers the newest first, and a
/// range of dates is a range of numbers.
class MailIndex
{
public:
    /// Nothing is found where there is no index yet, or one of another version.
    explicit MailIndex(const QString &folder);

    /// As MetadataQuery::gather() says; messages with the same Message-ID count once. Ends at the
    /// deadline with what was found until then.
    [[nodiscard]] QList<MailItem>
    search(const MailPredicate &predicate, int most, QDeadlineTimer deadline);

    struct Summary
    {
        qint64 messages = 0;
        qint64 folders = 0; ///< with messages in them
        int percent = 100;  ///< of what is known to be new that has been read
    };
    [[nodiscard]] Summary summary();

    /// With a line feed between every two characters; no text has any.
    [[nodiscard]] static std::string spaced(std::string_view utf8);
    /// The database's file, in the cache folder.
    [[nodiscard]] static QString path(const QString &folder);
    /// Leaves a note that the index is damaged, to have it made anew.
    static void markDamaged(const QString &folder);
    /// Whether there was one; it is gone then.
    [[nodiscard]] static bool takeDamageMark(const QString &folder);

    /// Of the tables. To be raised with them, and when texts are folded or parted in another way.
    static constexpr int kVersion = 2;
    /// The lower bits of a message's number, which tell messages of one second apart.
    static constexpr int kSequenceBits = 24;
    /// Beyond every date of four digits.
    static constexpr qint64 kLastSecond = (qint64{1} << 38) - 1;

private:
    QString m_folder;
    SQLiteDatabase m_database;
    bool m_isUsable = false;
};

} // namespace dugwise
