// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/FailedFiles.h"

#include "Platform/StandardFolders.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace dugwise {

FailedFiles::FailedFiles(QString folder, QString parserVersion)
    : m_folder(std::move(folder))
    , m_parserVersion(std::move(parserVersion))
{}

bool FailedFiles::contains(const QString &path, const FileAttributes &attributes) const
{
    return QFile::exists(markerPath(path, attributes));
}

void FailedFiles::insert(const QString &path, const FileAttributes &attributes) const
{
    makePrivateFolder(m_folder);
    removeOldMarkers();
    QFile marker(markerPath(path, attributes));
    // One that cannot be made costs another attempt at the next walk.
    [[maybe_unused]] const bool isMade =
        marker.open(QFile::WriteOnly, QFile::ReadOwner | QFile::WriteOwner);
}

void FailedFiles::clear() const
{
    QDir(m_folder).removeRecursively();
}

/// Their files have changed or gone, most likely.
void FailedFiles::removeOldMarkers() const
{
    const QDateTime oldest = QDateTime::currentDateTimeUtc().addYears(-1);
    for (const QFileInfo &marker : QDir(m_folder).entryInfoList(QDir::Files)) {
        if (marker.lastModified() < oldest)
            QFile::remove(marker.filePath());
    }
}

QString FailedFiles::markerPath(const QString &path, const FileAttributes &attributes) const
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const QString &fact : {path,
                                QString::number(attributes.size),
                                QString::number(attributes.modifiedDate.seconds, 'g', 17),
                                m_parserVersion}) {
        hash.addData(fact.toUtf8());
        hash.addData(QByteArrayView("\0", 1));
    }
    return m_folder + u'/' + QString::fromLatin1(hash.result().toHex());
}

} // namespace dugwise
