// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/ContactStore.h"
#include "Platform/Linux/ContactItem.h"
#include "Platform/Linux/StoreDocuments.h"
#include "Platform/StandardFolders.h"

#include <chrono>

namespace dugwise {

/// The address books of Evolution Data Server, folders of .vcf files, as vdirsyncer and khard keep
/// them, and Thunderbird's address books. None of them is ever changed. What was read is kept in
/// memory, and read again when it has changed. Each source has a second; groups are left out.
class DesktopContactStore final : public ContactStore
{
public:
    /// `parser` is the path of dugwise-agenda; each source has `time`.
    DesktopContactStore(StandardFolders folders,
                        QString parser,
                        std::chrono::milliseconds time = std::chrono::seconds(1));

    [[nodiscard]] QList<StoredContact> contactsNamed(const QString &name) const override;
    [[nodiscard]] QStringList sources() const override;

private:
    using Documents = StoreDocuments<ContactItem>;

    StandardFolders m_folders;
    QString m_parser;
    std::chrono::milliseconds m_time;
    mutable Documents m_evolution;
    mutable Documents m_files;
    mutable Documents m_thunderbird;
};

} // namespace dugwise
