// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace dugwise {

/// One entry of an address book. What the entry leaves out is empty.
struct StoredContact
{
    QString givenName;
    QString familyName;
    QStringList emails;       ///< in the entry's order
    QStringList phoneNumbers; ///< as they are written there

    bool operator==(const StoredContact &) const = default;
};

/// The address books that the person's other programs keep. Callable from any thread, one call at a
/// time.
class ContactStore
{
public:
    ContactStore() = default;
    Q_DISABLE_COPY_MOVE(ContactStore)
    virtual ~ContactStore() = default;

    /// The entries whose names have, for each word of `name`, a word that begins with it, without
    /// regard to case and accents; store by store, then in the store's own order. Names are the
    /// given name, the family name, the nickname and the full name. None for a name without words.
    /// A store that cannot be read, or does not answer within a second, adds nothing. Reads files
    /// and asks services: for workers.
    [[nodiscard]] virtual QList<StoredContact> contactsNamed(const QString &name) const = 0;
    /// What is read, for people: a line for each source that is there, empty when there is none.
    /// Looks only whether they are there; nothing of theirs is read.
    [[nodiscard]] virtual QStringList sources() const = 0;
};

} // namespace dugwise
