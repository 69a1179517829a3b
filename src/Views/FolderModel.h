// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractListModel>
#include <QUrl>
#include <QtQmlIntegration>

namespace dugwise {

class FileIndexer;

/// The indexed folders, in order. Rows come and go one by one, so that a view keeps its place.
/// Lives on the UI thread.
class FolderModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role {
        nameRole = Qt::UserRole, ///< last component of the path
        pathRole,
    };

    /// `indexer` outlives the model.
    explicit FolderModel(const FileIndexer &indexer, QObject *parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    void follow();

    const FileIndexer &m_indexer;
    QList<QUrl> m_folders;
};

} // namespace dugwise
