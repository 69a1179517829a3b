// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/FileAttributes.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace dugwise {

namespace {

Instant toInstant(const statx_timestamp &time)
{
    return Instant::fromUnix(time.tv_sec, static_cast<long>(time.tv_nsec));
}

} // namespace

std::optional<FileAttributes> fileAttributes(const QString &path)
{
    struct statx facts = {};
    const QByteArray name = QFile::encodeName(path);
    if (::statx(AT_FDCWD,
                name.constData(),
                AT_SYMLINK_NOFOLLOW,
                STATX_BASIC_STATS | STATX_BTIME,
                &facts)
        != 0)
        return std::nullopt;
    FileAttributes attributes{
        .isRegularFile = S_ISREG(facts.stx_mode),
        .isFolder = S_ISDIR(facts.stx_mode),
        .size = static_cast<qint64>(facts.stx_size),
        .device = makedev(facts.stx_dev_major, facts.stx_dev_minor),
        .inode = facts.stx_ino,
        .createdDate = std::nullopt,
        .modifiedDate = toInstant(facts.stx_mtime),
    };
    if ((facts.stx_mask & STATX_BTIME) != 0)
        attributes.createdDate = toInstant(facts.stx_btime);
    return attributes;
}

} // namespace dugwise
