// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayList>
#include <QSettings>
#include <QStringList>

#include <optional>

namespace dugwise {

/// The person's stored settings: an INI file, written through at every change. A value of another
/// type than asked for counts as absent, and so does everything in a damaged file; such a file is
/// kept aside as "<file>.damaged" when something is saved.
class UserDefaults
{
public:
    explicit UserDefaults(const QString &filePath);

    [[nodiscard]] std::optional<QStringList> stringList(const QString &key) const;
    [[nodiscard]] std::optional<QByteArrayList> byteArrayList(const QString &key) const;

    void setStringList(const QString &key, const QStringList &value);
    void setByteArrayList(const QString &key, const QByteArrayList &value);

private:
    [[nodiscard]] QVariant read(const QString &key) const;
    void write(const QString &key, const QVariant &value);

    QSettings m_settings;
    bool m_isDamaged = false;
};

} // namespace dugwise
