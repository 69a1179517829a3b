// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/DesktopContactStore.h"

#include "Platform/Linux/CollectionFolders.h"
#include "Platform/Linux/ThunderbirdStores.h"

#include <chrono>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr std::chrono::seconds kLongestReading{1};

} // namespace

DesktopContactStore::DesktopContactStore(StandardFolders folders, QString parser)
    : m_folders(std::move(folders))
    , m_parser(std::move(parser))
{}

QList<StoredContact> DesktopContactStore::contactsNamed(const QString &name) const
{
    const QStringList words = foldedWords(name);
    if (words.isEmpty())
        return {};
    AgendaParser parser(m_parser);
    QList<StoredContact> contacts;
    const auto read = [&](Documents &documents, const QList<StoreDocument> &found) {
        const QDeadlineTimer deadline(kLongestReading);
        documents.update(parser, AgendaProtocol::Task::contacts, found, deadline);
        documents.forEach([&](const ContactItem &item) {
            if (item.isNamed(words))
                contacts.append(item.contact);
        });
    };
    read(m_files, collectionFiles(contactFolders(m_folders), ".vcf"));
    read(m_thunderbird, thunderbirdAddressBooks(m_folders));
    return contacts;
}

QStringList DesktopContactStore::sources() const
{
    QStringList lines = folderDescriptions(contactFolders(m_folders), m_folders.home);
    if (!thunderbirdAddressBooks(m_folders).isEmpty())
        lines.append(u"Thunderbird"_s);
    return lines;
}

} // namespace dugwise
