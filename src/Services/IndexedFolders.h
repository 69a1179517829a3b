// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Utilities/Turnstile.h"

#include <QCoroTask>
#include <QLatin1StringView>
#include <QList>
#include <QObject>
#include <QThreadPool>
#include <QUrl>

namespace dugwise {

struct Platform;

/// Those of the paths that are folders now, in order; looks at the disk.
[[nodiscard]] QStringList existingFolders(const QStringList &paths);

/// The list of the indexed folders, and how it is kept: bookmarks, which survive a renaming, and
/// paths, both in the user defaults, where it is also kept which of them are still to be walked, so
/// that a walk that was cut short is made up for. Lives on the UI thread; bookmarks are made and
/// resolved in the given workers.
class IndexedFolders : public QObject
{
    Q_OBJECT

public:
    static constexpr QLatin1StringView kBookmarksKey{"SavedFolderBookmarks"};
    static constexpr QLatin1StringView kPathsKey{"SavedFolderPaths"};
    static constexpr QLatin1StringView kUnwalkedKey{"UnwalkedFolderPaths"};

    /// Both outlive the list.
    IndexedFolders(Platform &platform, QThreadPool &workers);

    /// In the order in which they were added.
    [[nodiscard]] QList<QUrl> urls() const { return m_urls; }
    [[nodiscard]] QStringList paths() const;
    [[nodiscard]] bool contains(const QString &folder) const;

    /// Lists what was kept, as far as it is there: bookmarks first, then paths.
    [[nodiscard]] QCoro::Task<void> restore();
    /// Lists those that are not listed yet, and tells whether there were any.
    bool append(const QStringList &folders);
    void remove(const QString &folder);
    void savePaths();
    /// Those listed whose walk has not come to its end, in this run or an earlier one.
    [[nodiscard]] QStringList unwalked() const;
    /// Of these, those that are listed are to be walked now.
    void addUnwalked(const QStringList &folders);
    void setWalked(const QString &folder);
    [[nodiscard]] QCoro::Task<void> saveBookmark(QString folder);
    [[nodiscard]] QCoro::Task<void> removeBookmark(QString folder);

Q_SIGNALS:
    void changed();

private:
    Platform &m_platform;
    QThreadPool &m_workers;
    Turnstile m_bookmarks; ///< changes of the stored bookmarks
    QList<QUrl> m_urls;
};

} // namespace dugwise
