// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/IndexedFolders.h"

#include "Platform/FolderBookmark.h"
#include "Platform/Platform.h"

#include <QCoroFuture>
#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <QSet>
#include <QtConcurrentRun>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

using Resolved = QList<Outcome<QString>>;

Resolved resolveAll(const QByteArrayList &bookmarks)
{
    Resolved resolved;
    for (const QByteArray &bookmark : bookmarks)
        resolved.append(FolderBookmark::resolve(bookmark));
    return resolved;
}

} // namespace

QStringList existingFolders(const QStringList &paths)
{
    QStringList existing;
    std::ranges::copy_if(paths, std::back_inserter(existing), [](const QString &path) {
        return QDir::isAbsolutePath(path) && QFileInfo(path).isDir();
    });
    return existing;
}

IndexedFolders::IndexedFolders(Platform &platform, QThreadPool &workers)
    : m_platform(platform)
    , m_workers(workers)
{}

bool IndexedFolders::contains(const QString &folder) const
{
    return m_urls.contains(QUrl::fromLocalFile(folder));
}

QStringList IndexedFolders::paths() const
{
    QStringList paths;
    for (const QUrl &folder : m_urls)
        paths.append(folder.toLocalFile());
    return paths;
}

QCoro::Task<void> IndexedFolders::restore()
{
    const QPointer<IndexedFolders> self(this);
    const QByteArrayList bookmarks =
        m_platform.userDefaults.byteArrayList(kBookmarksKey).value_or(QByteArrayList());
    const QStringList paths = m_platform.userDefaults.stringList(kPathsKey).value_or(QStringList());
    const QFuture<Resolved> resolving = QtConcurrent::run(&m_workers, resolveAll, bookmarks);
    const QFuture<QStringList> checking = QtConcurrent::run(&m_workers, existingFolders, paths);
    const Resolved resolved = co_await resolving;
    const QStringList existing = co_await checking;
    if (!self)
        co_return;
    QStringList folders;
    for (const Outcome<QString> &folder : resolved) {
        if (folder)
            folders.append(*folder);
        else
            m_platform.log(u"Failed to resolve bookmark: "_s + folder.error());
    }
    append(folders + existing);
}

bool IndexedFolders::append(const QStringList &folders)
{
    QSet<QUrl> listed(m_urls.cbegin(), m_urls.cend());
    const qsizetype before = m_urls.size();
    for (const QString &folder : folders) {
        const QUrl url = QUrl::fromLocalFile(folder);
        if (listed.contains(url))
            continue;
        listed.insert(url);
        m_urls.append(url);
    }
    if (m_urls.size() == before)
        return false;
    Q_EMIT changed();
    return true;
}

void IndexedFolders::remove(const QString &folder)
{
    setWalked(folder);
    m_urls.removeAll(QUrl::fromLocalFile(folder));
    Q_EMIT changed();
}

void IndexedFolders::savePaths()
{
    m_platform.userDefaults.setStringList(kPathsKey, paths());
}

QStringList IndexedFolders::unwalked() const
{
    QStringList folders = m_platform.userDefaults.stringList(kUnwalkedKey).value_or(QStringList());
    folders.removeIf([this](const QString &folder) { return !contains(folder); });
    return folders;
}

void IndexedFolders::addUnwalked(const QStringList &folders)
{
    QStringList all = unwalked();
    for (const QString &folder : folders) {
        if (contains(folder) && !all.contains(folder))
            all.append(folder);
    }
    m_platform.userDefaults.setStringList(kUnwalkedKey, all);
}

void IndexedFolders::setWalked(const QString &folder)
{
    QStringList left = unwalked();
    if (left.removeAll(folder) > 0)
        m_platform.userDefaults.setStringList(kUnwalkedKey, left);
}

QCoro::Task<void> IndexedFolders::saveBookmark(QString folder)
{
    const QPointer<IndexedFolders> self(this);
    const std::shared_ptr<Turnstile::Pass> pass = co_await m_bookmarks.enter();
    if (!self)
        co_return;
    const QFuture<Outcome<QByteArray>> creating =
        QtConcurrent::run(&m_workers, FolderBookmark::create, folder);
    const Outcome<QByteArray> bookmark = co_await creating;
    if (!self)
        co_return;
    if (!bookmark) {
        m_platform.log(u"Failed to save bookmark: "_s + bookmark.error());
        co_return;
    }
    UserDefaults &defaults = m_platform.userDefaults;
    QByteArrayList bookmarks = defaults.byteArrayList(kBookmarksKey).value_or(QByteArrayList());
    bookmarks.append(*bookmark);
    defaults.setByteArrayList(kBookmarksKey, bookmarks);
}

QCoro::Task<void> IndexedFolders::removeBookmark(QString folder)
{
    const QPointer<IndexedFolders> self(this);
    const std::shared_ptr<Turnstile::Pass> pass = co_await m_bookmarks.enter();
    if (!self)
        co_return;
    const QByteArrayList bookmarks =
        m_platform.userDefaults.byteArrayList(kBookmarksKey).value_or(QByteArrayList());
    const QFuture<Resolved> resolving = QtConcurrent::run(&m_workers, resolveAll, bookmarks);
    const Resolved resolved = co_await resolving;
    if (!self)
        co_return;
    QByteArrayList kept;
    for (qsizetype i = 0; i < bookmarks.size(); ++i) {
        if (!resolved[i] || *resolved[i] != folder)
            kept.append(bookmarks[i]);
    }
    if (kept.size() < bookmarks.size())
        m_platform.userDefaults.setByteArrayList(kBookmarksKey, kept);
}

} // namespace dugwise
