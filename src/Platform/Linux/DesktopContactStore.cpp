// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/DesktopContactStore.h"

#include "Platform/Linux/CollectionFolders.h"
#include "Platform/Linux/EvolutionDataServer.h"
#include "Platform/Linux/ThunderbirdStores.h"

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

// Of the time that a source has: to have what is in it at hand, and to read one item of that.
constexpr double kFinding = 0.7;
constexpr double kReadingAnItem = 0.3;

} // namespace

DesktopContactStore::DesktopContactStore(StandardFolders folders,
                                         QString parser,
                                         std::chrono::milliseconds time)
    : m_folders(std::move(folders))
    , m_parser(std::move(parser))
    , m_time(time)
{}

QList<StoredContact> DesktopContactStore::contactsNamed(const QString &name) const
{
    const QStringList words = foldedWords(name);
    if (words.isEmpty())
        return {};
    AgendaParser parser(m_parser, partOf(m_time, kReadingAnItem));
    QList<StoredContact> contacts;
    const auto read = [&](Documents &documents, const auto &find) {
        const QDeadlineTimer deadline(m_time);
        const QList<StoreDocument> found = find(QDeadlineTimer(partOf(m_time, kFinding)));
        documents.update(parser, AgendaProtocol::Task::contacts, found, deadline);
        documents.forEach([&](const ContactItem &item) {
            if (item.isNamed(words))
                contacts.append(item.contact);
        });
    };
    read(m_evolution, [&](const QDeadlineTimer &deadline) {
        return EvolutionDataServer(m_folders).addressBooks(words, deadline);
    });
    read(m_files, [&](const QDeadlineTimer &deadline) {
        return collectionFiles(contactFolders(m_folders), ".vcf", deadline);
    });
    read(m_thunderbird, [&](const QDeadlineTimer &deadline) {
        return addressBookDocuments(thunderbirdAddressBooks(m_folders), m_folders.cache, deadline);
    });
    return contacts;
}

QStringList DesktopContactStore::sources() const
{
    QStringList lines;
    if (EvolutionDataServer(m_folders).isThere(QDeadlineTimer(m_time)))
        lines.append(u"Evolution Data Server"_s);
    lines += folderDescriptions(contactFolders(m_folders), m_folders.home);
    if (!thunderbirdAddressBooks(m_folders).isEmpty())
        lines.append(u"Thunderbird"_s);
    return lines;
}

} // namespace dugwise
