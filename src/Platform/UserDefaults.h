// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayList>
#include <QFuture>
#include <QStringList>
#include <QThreadPool>
#include <QVariantHash>

#include <optional>

namespace dugwise {

/// The person's stored settings: an INI file, read when the object is made. A change is known here
/// at once, and written by a worker, one after another; all are on disk when the object is gone. Of
/// what another process wrote meanwhile, a change replaces the one setting that it is of. A value
/// of another type than asked for counts as absent, and so does everything in a damaged file; such
/// a file is kept aside as "<file>.damaged" when something is saved.
class UserDefaults
{
public:
    explicit UserDefaults(const QString &filePath);
    Q_DISABLE_COPY_MOVE(UserDefaults)
    ~UserDefaults() = default;

    [[nodiscard]] std::optional<QStringList> stringList(const QString &key) const;
    [[nodiscard]] std::optional<QByteArrayList> byteArrayList(const QString &key) const;
    [[nodiscard]] std::optional<bool> boolean(const QString &key) const;

    void setStringList(const QString &key, const QStringList &value);
    void setByteArrayList(const QString &key, const QByteArrayList &value);
    void setBoolean(const QString &key, bool value);
    /// Waits until the latest change is on disk; false when it could not be written.
    [[nodiscard]] bool synchronize();

private:
    void write(const QString &key, const QVariant &value);

    QString m_filePath;
    QVariantHash m_values;
    bool m_isDamaged = false;
    std::optional<QFuture<bool>> m_latestWrite;
    QThreadPool m_writer; ///< of one thread; ends when all is written
};

} // namespace dugwise
