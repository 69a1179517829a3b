// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Utilities/Turnstile.h"

#include <QCoroTask>
#include <QLatin1StringView>
#include <QList>
#include <QObject>
#include <QSet>
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

    /// Lists what is kept, as far as it is there: bookmarks first, then paths. Once more, it takes
    /// in what other processes have changed.
    [[nodiscard]] QCoro::Task<void> restore();
    /// Lists those that are not listed yet, and tells whether there were any. They are not kept.
    bool append(const QStringList &folders);
    /// Keeps the paths of these from now on.
    void save(const QStringList &folders);
    /// The folder is no longer listed, nor is its path kept.
    void remove(const QString &folder);
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
    struct Kept
    {
        QStringList folders; ///< those of bookmarks, then those of paths
        QStringList errors;  ///< of bookmarks
        QStringList left;    ///< kept paths of folders that were renamed since, as bookmarks tell
    };

    [[nodiscard]] static Kept keptIn(const QString &defaultsPath, const QStringList &listed);
    void list(const Kept &kept);
    bool add(const QStringList &folders);
    [[nodiscard]] QStringList listedOf(QStringList folders) const;

    Platform &m_platform;
    QThreadPool &m_workers;
    Turnstile m_bookmarks; ///< changes of the stored bookmarks
    QList<QUrl> m_urls;
    QSet<QString> m_unkept; ///< listed and not kept yet
    int m_changes = 0;      ///< of what is kept
};

} // namespace dugwise
