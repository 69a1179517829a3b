// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/ContactsService.h"

#include "Platform/Platform.h"

namespace dugwise {

ContactsService::ContactsService(Platform &platform)
    : m_platform(platform)
    , m_access(platform, PersonalData::contacts)
{}

QCoro::Task<void> ContactsService::requestAccess(Asking asking)
{
    std::function<QStringList()> sources;
    if (const ContactStore *const store = m_platform.contactStore.get())
        sources = [store] { return store->sources(); };
    return m_access.ask(asking, sources);
}

bool ContactsService::hasAccess() const
{
    return m_access.isGranted();
}

QList<ResolvedContact> ContactsService::findContacts(const QString &name) const
{
    QList<ResolvedContact> contacts;
    if (!hasAccess())
        return contacts;
    for (const StoredContact &stored : m_platform.contactStore->contactsNamed(name)) {
        const QString fullName = stored.givenName + u' ' + stored.familyName;
        contacts.append({fullName.trimmed(), stored.emails, stored.phoneNumbers});
    }
    return contacts;
}

} // namespace dugwise
