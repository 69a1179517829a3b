// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/AccessRequest.h"

#include <QList>
#include <QStringList>

namespace dugwise {

/// One entry of the address book.
struct ResolvedContact
{
    QString fullName;
    QStringList emails;       ///< in the entry's order
    QStringList phoneNumbers; ///< as they are written there

    bool operator==(const ResolvedContact &) const = default;
};

/// Resolves names of people. Access changes on the UI thread, before the first search; the
/// searches read files and ask services, at most a second long, and are for one worker at a time.
class ContactsService
{
public:
    /// `platform` outlives the service.
    explicit ContactsService(Platform &platform);
    Q_DISABLE_COPY_MOVE(ContactsService)
    virtual ~ContactsService() = default;

    /// Asks for access; hasAccess() then tells the answer.
    [[nodiscard]] virtual QCoro::Task<void> requestAccess(Asking asking);
    [[nodiscard]] virtual bool hasAccess() const;
    /// All entries that go by that name, in the address book's order; none without access.
    [[nodiscard]] virtual QList<ResolvedContact> findContacts(const QString &name) const;

private:
    const Platform &m_platform;
    AccessRequest m_access;
};

} // namespace dugwise
