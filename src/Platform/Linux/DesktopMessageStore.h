// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/MessageStore.h"
#include "Platform/StandardFolders.h"

namespace dugwise {

/// The history in Library/Messages/chat.db of the home folder (iMessage and SMS); where there is no
/// such file, that of Chatty, GNOME's program for SMS, XMPP and Matrix, without drafts. Neither is
/// ever locked or written: what is being written is read from a private copy in `folders.cache`. A
/// search takes two seconds at most.
class DesktopMessageStore final : public MessageStore
{
public:
    explicit DesktopMessageStore(StandardFolders folders);

    [[nodiscard]] bool isReadable() const override;
    [[nodiscard]] QList<StoredMessage> matching(const QString &textPattern,
                                                const std::optional<QString> &senderPattern,
                                                int limit) const override;
    [[nodiscard]] QString description() const override;

private:
    struct Source
    {
        QString path;
        QList<QByteArray> views; ///< in place of the tables, in turn until there are enough rows
    };
    [[nodiscard]] Source source() const;

    StandardFolders m_folders;
};

} // namespace dugwise
