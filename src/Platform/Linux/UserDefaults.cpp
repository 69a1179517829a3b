// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/UserDefaults.h"

#include "Platform/FileLock.h"
#include "Platform/StandardFolders.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QSettings>
#include <QtConcurrentRun>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

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

std::optional<QStringList> toStringList(const QVariant &value)
{
    // A list of one string is stored as that string.
    const bool isString = value.typeId() == QMetaType::QString;
    if (isString || value.typeId() == QMetaType::QStringList)
        return value.toStringList();
    return std::nullopt;
}

std::optional<QByteArrayList> toByteArrayList(const QVariant &value)
{
    if (value.typeId() != QMetaType::QVariantList || !holdsOnly<QByteArray>(value.toList()))
        return std::nullopt;
    QByteArrayList list;
    for (const QVariant &entry : value.toList())
        list.append(entry.toByteArray());
    return list;
}

QVariant toVariant(const QByteArrayList &list)
{
    QVariantList values;
    for (const QByteArray &entry : list)
        values.append(entry);
    return values;
}

template <typename T>
QList<T> changed(QList<T> list, const QList<T> &removed, const QList<T> &added)
{
    for (const T &entry : removed)
        list.removeAll(entry);
    if (added.isEmpty())
        return list;
    QSet<T> known(list.cbegin(), list.cend());
    for (const T &entry : added) {
        const qsizetype before = known.size();
        known.insert(entry);
        if (known.size() > before)
            list.append(entry);
    }
    return list;
}

/// False when it cannot be written.
bool store(const QString &path,
           const QString &key,
           const std::function<QVariant(const QVariant &)> &change,
           bool isDamaged)
{
    const QString folder = QFileInfo(path).path();
    makePrivateFolder(folder);
    // Others hold it for a moment. One that is stopped in that moment is not worth waiting for.
    const FileLock lock = FileLock::ofFolder(folder, 10s);
    QSettings settings(path, QSettings::IniFormat);
    if (isDamaged) {
        keepAside(path);
        settings.clear();
    }
    settings.setValue(key, change(settings.value(key)));
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
    return toStringList(m_values.value(key));
}

std::optional<QByteArrayList> UserDefaults::byteArrayList(const QString &key) const
{
    return toByteArrayList(m_values.value(key));
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
    write(key, [value](const QVariant & /*before*/) { return value; });
}

void UserDefaults::setByteArrayList(const QString &key, const QByteArrayList &value)
{
    write(key, [value](const QVariant & /*before*/) { return toVariant(value); });
}

void UserDefaults::setBoolean(const QString &key, bool value)
{
    setStringList(key, {value ? kTrue : kFalse});
}

void UserDefaults::changeStringList(const QString &key,
                                    const QStringList &removed,
                                    const QStringList &added)
{
    write(key, [removed, added](const QVariant &before) {
        return changed<QString>(toStringList(before).value_or(QStringList()), removed, added);
    });
}

void UserDefaults::changeByteArrayList(const QString &key,
                                       const QByteArrayList &removed,
                                       const QByteArrayList &added)
{
    write(key, [removed, added](const QVariant &before) {
        return toVariant(changed<QByteArray>(
            toByteArrayList(before).value_or(QByteArrayList()), removed, added));
    });
}

QFuture<bool> UserDefaults::stored() const
{
    return m_latestWrite;
}

void UserDefaults::write(const QString &key, const Change &change)
{
    m_values.insert(key, change(m_values.value(key)));
    m_latestWrite = QtConcurrent::run(
        &m_writer, store, m_filePath, key, change, std::exchange(m_isDamaged, false));
}

} // namespace dugwise
