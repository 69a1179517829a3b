// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoroTask>
#include <QList>
#include <QStringList>

namespace dugwise {

/// One entry of the address book.
struct ResolvedContact
{
    QString fullName;
    QStringList emails;
    QStringList phoneNumbers;
};

/// Resolves names of people. As it stands here there is no address book to ask for, access is
/// never granted and nobody is found.
class ContactsService
{
public:
    ContactsService() = default;
    Q_DISABLE_COPY_MOVE(ContactsService)
    virtual ~ContactsService() = default;

    /// Asks for access; hasAccess() then tells the answer.
    [[nodiscard]] virtual QCoro::Task<void> requestAccess();
    [[nodiscard]] virtual bool hasAccess() const;
    [[nodiscard]] virtual QList<ResolvedContact> findContacts(const QString &name) const;
};

} // namespace dugwise
