// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/SampleFiles.h"

#include <QByteArray>
#include <QDateTime>
#include <QFile>
#include <QLocale>

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <ctime>

/// Mail as programs store it.
namespace dugwise::test {

struct SampleMessage
{
    QByteArray subject;
    QByteArray text;
    QByteArray from = "Sarah Chen <sarah@acme.example>";
    qint64 date = 1'767'268'800; ///< seconds since 1970
    QByteArray headers{};        ///< further ones, with their line ends
};

inline QByteArray bytesOf(const SampleMessage &message)
{
    const QString date = QLocale::c().toString(QDateTime::fromSecsSinceEpoch(message.date, Qt::UTC),
                                               QStringLiteral("ddd, d MMM yyyy HH:mm:ss"));
    return message.headers + "From: " + message.from + "\nDate: " + date.toLatin1()
           + " +0000\nSubject: " + message.subject + "\n\n" + message.text + '\n';
}

inline QByteArray inMbox(const SampleMessage &message)
{
    return "From - Thu Jan  1 12:00:00 2026\n" + bytesOf(message) + '\n';
}

inline void appendFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY2(file.open(QFile::Append), qPrintable(path));
    QCOMPARE(file.write(content), content.size());
}

/// Has a file or folder look as if nobody had changed it for an hour, or `minutes`.
inline void age(const QString &path, int minutes = 60)
{
    const timespec then{.tv_sec = ::time(nullptr) - 60L * minutes, .tv_nsec = 0};
    const std::array times{then, then};
    QCOMPARE(::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times.data(), 0), 0);
}

} // namespace dugwise::test
