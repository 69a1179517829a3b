// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayList>
#include <QFuture>
#include <QStringList>
#include <QThreadPool>
#include <QVariantHash>

#include <functional>
#include <optional>

namespace dugwise {

/// The person's stored settings: an INI file, read when the object is made. A change is known here
/// at once, and written by a worker, one after another; all are on disk when the object is gone. Of
/// what another process wrote meanwhile, a change replaces the one setting that it is of, or the
/// entries of a list. A value
/// of another type than asked for counts as absent, and so does everything in a damaged file; such
/// a file is kept aside as "<file>.damaged" when something is saved.
class UserDefaults
{
public:
    explicit UserDefaults(const QString &filePath);
    Q_DISABLE_COPY_MOVE(UserDefaults)
    ~UserDefaults() = default;

    [[nodiscard]] QString filePath() const { return m_filePath; }
    [[nodiscard]] std::optional<QStringList> stringList(const QString &key) const;
    [[nodiscard]] std::optional<QByteArrayList> byteArrayList(const QString &key) const;
    [[nodiscard]] std::optional<bool> boolean(const QString &key) const;

    void setStringList(const QString &key, const QStringList &value);
    void setByteArrayList(const QString &key, const QByteArrayList &value);
    void setBoolean(const QString &key, bool value);
    /// Takes these entries out of a list and then appends those that it lacks. What other processes
    /// have changed in the list stays.
    void changeStringList(const QString &key, const QStringList &removed, const QStringList &added);
    void changeByteArrayList(const QString &key,
                             const QByteArrayList &removed,
                             const QByteArrayList &added);

    /// Tells when the latest change is on disk; false when it could not be written.
    [[nodiscard]] QFuture<bool> stored() const;

private:
    /// Makes the value of a setting from the value before.
    using Change = std::function<QVariant(const QVariant &)>;

    void write(const QString &key, const Change &change);

    QString m_filePath;
    QVariantHash m_values;
    bool m_isDamaged = false;
    QFuture<bool> m_latestWrite = QtFuture::makeReadyFuture(true);
    QThreadPool m_writer; ///< of one thread; ends when all is written
};

} // namespace dugwise
