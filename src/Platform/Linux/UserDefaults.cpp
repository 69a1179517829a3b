// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/UserDefaults.h"

#include "Platform/StandardFolders.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

template <typename T>
bool holdsOnly(const QVariantList &values)
{
    const int type = QMetaType::fromType<T>().id();
    return std::ranges::all_of(values, [&](const QVariant &v) { return v.typeId() == type; });
}

} // namespace

UserDefaults::UserDefaults(const QString &filePath)
    : m_settings(filePath, QSettings::IniFormat)
{
    // Sections are read when they are first asked for, and only then is the status right.
    [[maybe_unused]] const QStringList keys = m_settings.allKeys();
    m_isDamaged = m_settings.status() == QSettings::FormatError;
}

std::optional<QStringList> UserDefaults::stringList(const QString &key) const
{
    // A list of one string is stored as that string.
    const QVariant value = read(key);
    const bool isString = value.typeId() == QMetaType::QString;
    if (isString || value.typeId() == QMetaType::QStringList)
        return value.toStringList();
    return std::nullopt;
}

std::optional<QByteArrayList> UserDefaults::byteArrayList(const QString &key) const
{
    const QVariant value = read(key);
    if (value.typeId() != QMetaType::QVariantList || !holdsOnly<QByteArray>(value.toList()))
        return std::nullopt;
    QByteArrayList list;
    for (const QVariant &entry : value.toList())
        list.append(entry.toByteArray());
    return list;
}

void UserDefaults::setStringList(const QString &key, const QStringList &value)
{
    write(key, value);
}

void UserDefaults::setByteArrayList(const QString &key, const QByteArrayList &value)
{
    QVariantList list;
    for (const QByteArray &entry : value)
        list.append(entry);
    write(key, list);
}

QVariant UserDefaults::read(const QString &key) const
{
    return m_isDamaged ? QVariant() : m_settings.value(key);
}

void UserDefaults::write(const QString &key, const QVariant &value)
{
    const QString path = m_settings.fileName();
    makePrivateFolder(QFileInfo(path).path());
    if (m_isDamaged) {
        const QString aside = path + ".damaged"_L1;
        QFile::remove(aside);
        QFile::copy(path, aside);
        m_settings.clear();
        m_isDamaged = false;
    }
    m_settings.setValue(key, value);
    m_settings.sync();
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
}

} // namespace dugwise
