// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/UserDefaults.h"

#include "Platform/StandardFolders.h"

#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QtConcurrentRun>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr QLatin1StringView kTrue{"true"};
constexpr QLatin1StringView kFalse{"false"};

template <typename T>
bool holdsOnly(const QVariantList &values)
{
    const int type = QMetaType::fromType<T>().id();
    return std::ranges::all_of(values, [&](const QVariant &v) { return v.typeId() == type; });
}

void keepAside(const QString &path)
{
    const QString aside = path + ".damaged"_L1;
    QFile::remove(aside);
    QFile::copy(path, aside);
}

/// False when it cannot be written.
bool store(const QString &path, const QString &key, const QVariant &value, bool isDamaged)
{
    makePrivateFolder(QFileInfo(path).path());
    QSettings settings(path, QSettings::IniFormat);
    if (isDamaged) {
        keepAside(path);
        settings.clear();
    }
    settings.setValue(key, value);
    settings.sync();
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    return settings.status() == QSettings::NoError;
}

} // namespace

UserDefaults::UserDefaults(const QString &filePath)
    : m_filePath(filePath)
{
    m_writer.setMaxThreadCount(1);
    QSettings settings(filePath, QSettings::IniFormat);
    // Sections are read when they are first asked for, and only then is the status right.
    const QStringList keys = settings.allKeys();
    m_isDamaged = settings.status() == QSettings::FormatError;
    if (m_isDamaged)
        return;
    for (const QString &key : keys)
        m_values.insert(key, settings.value(key));
}

std::optional<QStringList> UserDefaults::stringList(const QString &key) const
{
    // A list of one string is stored as that string.
    const QVariant value = m_values.value(key);
    const bool isString = value.typeId() == QMetaType::QString;
    if (isString || value.typeId() == QMetaType::QStringList)
        return value.toStringList();
    return std::nullopt;
}

std::optional<QByteArrayList> UserDefaults::byteArrayList(const QString &key) const
{
    const QVariant value = m_values.value(key);
    if (value.typeId() != QMetaType::QVariantList || !holdsOnly<QByteArray>(value.toList()))
        return std::nullopt;
    QByteArrayList list;
    for (const QVariant &entry : value.toList())
        list.append(entry.toByteArray());
    return list;
}

std::optional<bool> UserDefaults::boolean(const QString &key) const
{
    const QStringList value = stringList(key).value_or(QStringList());
    if (value == QStringList{kTrue})
        return true;
    if (value == QStringList{kFalse})
        return false;
    return std::nullopt;
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

void UserDefaults::setBoolean(const QString &key, bool value)
{
    setStringList(key, {value ? kTrue : kFalse});
}

bool UserDefaults::synchronize()
{
    return !m_latestWrite || m_latestWrite->result();
}

void UserDefaults::write(const QString &key, const QVariant &value)
{
    m_values.insert(key, value);
    m_latestWrite = QtConcurrent::run(
        &m_writer, store, m_filePath, key, value, std::exchange(m_isDamaged, false));
}

} // namespace dugwise
