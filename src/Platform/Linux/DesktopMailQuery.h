// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/MailIndexer.h"
#include "Platform/MetadataQuery.h"
#include "Platform/StandardFolders.h"

#include <QDeadlineTimer>
#include <QThreadPool>

namespace dugwise {

/// Searches the mail of this person's mail programs, over an index of our own that each search has
/// brought up to date. A search waits for that for a moment, the first one for longer, and answers
/// from what is there by then.
class DesktopMailQuery final : public MetadataQuery
{
public:
    /// `program` is the path of dugwise-extract.
    DesktopMailQuery(StandardFolders folders, const QString &program);

    void prepare() override;
    [[nodiscard]] QCoro::Task<QList<MailItem>> gather(MailPredicate predicate, int most) override;
    [[nodiscard]] bool hasStores() const override;
    [[nodiscard]] QString description() const override;

private:
    StandardFolders m_folders;
    QThreadPool m_searches; ///< gone after the indexer that they wait for
    MailIndexer m_indexer;
    /// Until when searches wait for the index to be made; from the first update on.
    QDeadlineTimer m_patience{QDeadlineTimer::Forever};
};

} // namespace dugwise
