// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/FolderModel.h"

#include "Services/FileIndexer.h"
#include "Utilities/FilePath.h"
#include "Utilities/PrintableText.h"

#include <algorithm>

namespace dugwise {

FolderModel::FolderModel(const FileIndexer &indexer, QObject *parent)
    : QAbstractListModel(parent)
    , m_indexer(indexer)
    , m_folders(indexer.indexedFolderURLs())
{
    connect(&indexer, &FileIndexer::indexedFolderURLsChanged, this, &FolderModel::follow);
}

int FolderModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_folders.size());
}

QVariant FolderModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const QString path = m_folders[index.row()].toLocalFile();
    switch (role) {
    case Qt::DisplayRole:
    case nameRole:
        return printable(FilePath::name(path));
    case pathRole:
        return printable(path);
    default:
        return {};
    }
}

QHash<int, QByteArray> FolderModel::roleNames() const
{
    return {{nameRole, "name"}, {pathRole, "path"}};
}

/// What lies between the rows that stay at the beginning and those that stay at the end is
/// replaced.
void FolderModel::follow()
{
    const QList<QUrl> folders = m_indexer.indexedFolderURLs();
    const auto differing = std::ranges::mismatch(m_folders, folders);
    const auto first = static_cast<int>(differing.in1 - m_folders.begin());
    const auto rest = std::min(m_folders.size(), folders.size()) - first;
    const auto same =
        std::mismatch(m_folders.crbegin(), m_folders.crbegin() + rest, folders.crbegin());
    const auto kept = static_cast<int>(same.first - m_folders.crbegin());

    const int removed = rowCount() - kept - first;
    if (removed > 0) {
        beginRemoveRows({}, first, first + removed - 1);
        m_folders.remove(first, removed);
        endRemoveRows();
    }
    const int added = static_cast<int>(folders.size()) - kept - first;
    if (added > 0) {
        beginInsertRows({}, first, first + added - 1);
        m_folders = folders;
        endInsertRows();
    }
}

} // namespace dugwise
