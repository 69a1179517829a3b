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

QByteArrayList bookmarksIn(const UserDefaults &defaults)
{
    return defaults.byteArrayList(IndexedFolders::kBookmarksKey).value_or(QByteArrayList());
}

QByteArrayList bookmarksOf(const QString &folder, const QString &defaultsPath)
{
    QByteArrayList bookmarks = bookmarksIn(UserDefaults(defaultsPath));
    bookmarks.removeIf([&](const QByteArray &bookmark) {
        const Outcome<QString> resolved = FolderBookmark::resolve(bookmark);
        return !resolved || *resolved != folder;
    });
    return bookmarks;
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

/// Kept paths that are listed already count also when nothing is there just now.
IndexedFolders::Kept IndexedFolders::keptIn(const QString &defaultsPath, const QStringList &listed)
{
    const UserDefaults defaults(defaultsPath);
    const QSet<QString> known(listed.cbegin(), listed.cend());
    Kept kept;
    QSet<QString> left;
    for (const QByteArray &bookmark : bookmarksIn(defaults)) {
        const Outcome<QString> folder = FolderBookmark::resolve(bookmark);
        if (!folder) {
            kept.errors.append(folder.error());
            continue;
        }
        kept.folders.append(*folder);
        if (FolderBookmark::path(bookmark) != *folder)
            left.insert(FolderBookmark::path(bookmark));
    }
    for (const QString &path : defaults.stringList(kPathsKey).value_or(QStringList())) {
        if (left.contains(path))
            kept.left.append(path);
        else if (known.contains(path) || !existingFolders({path}).isEmpty())
            kept.folders.append(path);
    }
    return kept;
}

QCoro::Task<void> IndexedFolders::restore()
{
    const QPointer<IndexedFolders> self(this);
    while (self) {
        // Each time anew: what is removed meanwhile removes its bookmark first.
        const std::shared_ptr<Turnstile::Pass> pass = co_await m_bookmarks.enter();
        if (!self)
            co_return;
        const int changes = m_changes;
        const QFuture<bool> storing = m_platform.userDefaults.stored();
        co_await storing;
        if (!self)
            co_return;
        const QFuture<Kept> reading =
            QtConcurrent::run(&m_workers, keptIn, m_platform.userDefaults.filePath(), paths());
        const Kept kept = co_await reading;
        if (!self)
            co_return;
        if (m_changes != changes)
            continue;
        list(kept);
        co_return;
    }
}

void IndexedFolders::list(const Kept &kept)
{
    for (const QString &error : kept.errors)
        m_platform.log(u"Failed to resolve bookmark: "_s + error);
    const QSet<QString> folders(kept.folders.cbegin(), kept.folders.cend());
    const qsizetype gone = m_urls.removeIf([&](const QUrl &url) {
        const QString path = url.toLocalFile();
        return !folders.contains(path) && !m_unkept.contains(path);
    });
    if (!add(kept.folders) && gone > 0)
        Q_EMIT changed();
    if (!kept.left.isEmpty())
        m_platform.userDefaults.changeStringList(kPathsKey, kept.left, {});
}

bool IndexedFolders::append(const QStringList &folders)
{
    for (const QString &folder : folders) {
        if (!contains(folder))
            m_unkept.insert(folder);
    }
    return add(folders);
}

bool IndexedFolders::add(const QStringList &folders)
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

void IndexedFolders::save(const QStringList &folders)
{
    ++m_changes;
    for (const QString &folder : folders)
        m_unkept.remove(folder);
    m_platform.userDefaults.changeStringList(kPathsKey, {}, folders);
}

void IndexedFolders::remove(const QString &folder)
{
    setWalked(folder);
    ++m_changes;
    m_unkept.remove(folder);
    m_platform.userDefaults.changeStringList(kPathsKey, {folder}, {});
    m_urls.removeAll(QUrl::fromLocalFile(folder));
    Q_EMIT changed();
}

QStringList IndexedFolders::unwalked() const
{
    return listedOf(m_platform.userDefaults.stringList(kUnwalkedKey).value_or(QStringList()));
}

QStringList IndexedFolders::listedOf(QStringList folders) const
{
    if (folders.isEmpty())
        return folders;
    const QSet<QUrl> listed(m_urls.cbegin(), m_urls.cend());
    folders.removeIf(
        [&](const QString &folder) { return !listed.contains(QUrl::fromLocalFile(folder)); });
    return folders;
}

void IndexedFolders::addUnwalked(const QStringList &folders)
{
    m_platform.userDefaults.changeStringList(kUnwalkedKey, {}, listedOf(folders));
}

void IndexedFolders::setWalked(const QString &folder)
{
    if (m_platform.userDefaults.stringList(kUnwalkedKey).value_or(QStringList()).contains(folder))
        m_platform.userDefaults.changeStringList(kUnwalkedKey, {folder}, {});
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
    m_platform.userDefaults.changeByteArrayList(kBookmarksKey, {}, {*bookmark});
}

QCoro::Task<void> IndexedFolders::removeBookmark(QString folder)
{
    const QPointer<IndexedFolders> self(this);
    const std::shared_ptr<Turnstile::Pass> pass = co_await m_bookmarks.enter();
    if (!self)
        co_return;
    const QFuture<bool> storing = m_platform.userDefaults.stored();
    co_await storing;
    if (!self)
        co_return;
    const QFuture<QByteArrayList> finding =
        QtConcurrent::run(&m_workers, bookmarksOf, folder, m_platform.userDefaults.filePath());
    const QByteArrayList bookmarks = co_await finding;
    if (self && !bookmarks.isEmpty())
        m_platform.userDefaults.changeByteArrayList(kBookmarksKey, bookmarks, {});
}

} // namespace dugwise
