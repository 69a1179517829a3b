// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/ContactStore.h"
#include "Platform/Linux/ContactItem.h"
#include "Platform/Linux/StoreDocuments.h"
#include "Platform/StandardFolders.h"

namespace dugwise {

/// The address books of Evolution Data Server, folders of .vcf files, as vdirsyncer and khard keep
/// them, and Thunderbird's address books. None of them is ever changed. What was read is kept in
/// memory, and read again when it has changed. Each source has a second; groups are left out.
class DesktopContactStore final : public ContactStore
{
public:
    /// `parser` is the path of dugwise-agenda.
    DesktopContactStore(StandardFolders folders, QString parser);

    [[nodiscard]] QList<StoredContact> contactsNamed(const QString &name) const override;
    [[nodiscard]] QStringList sources() const override;

private:
    using Documents = StoreDocuments<ContactItem>;

    StandardFolders m_folders;
    QString m_parser;
    mutable Documents m_evolution;
    mutable Documents m_files;
    mutable Documents m_thunderbird;
};

} // namespace dugwise
