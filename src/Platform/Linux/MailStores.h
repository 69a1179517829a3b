// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/StandardFolders.h"

#include <QList>
#include <QString>

namespace dugwise {

/// A folder of messages, in a form that several programs share.
struct MailFolder
{
    enum class Kind {
        mbox,       ///< one file, if it is one at all: that is seen when it is read
        maildir,    ///< a folder with cur and mostly new in it, a file for each message
        unreadable, ///< a folder of which it is not known now what is in it
    };
    QString path;
    Kind kind = Kind::mbox;
    /// Messages that were deleted are marked where they are, anywhere in the file.
    bool marksDeleted = false;

    bool operator==(const MailFolder &) const = default;
};

/// Where one program keeps mail.
struct MailStore
{
    QString program; ///< its name; that of the form where several have it
    QString root;    ///< a folder that is there
};

/// The stores of this person: Thunderbird's profiles (packages, snap, flatpak), the local mail of
/// Evolution and KMail, and the folders where other programs keep mail by custom.
[[nodiscard]] QList<MailStore> mailStores(const StandardFolders &folders);

/// The folders in a store and their subfolders, in the order of their paths; without the deleted,
/// junk and drafts. Links are not followed.
[[nodiscard]] QList<MailFolder> mailFolders(const MailStore &store);

/// Where mail is looked for, for people.
[[nodiscard]] QString mailPlaces();

} // namespace dugwise
