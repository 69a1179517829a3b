// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the desktop's records of downloads and uses, and then looks up files of which each store
// knows some.
// usage: bench_metadata [FILES [ROUNDS]]

#include "Measure.h"
#include "Platform/DesktopMetadata.h"
#include "Utilities/FilePath.h"
#include "support/SampleHome.h"
#include "support/SampleStores.h"

#include <QCoreApplication>
#include <QtEndian>

#include <sys/xattr.h>

#include <algorithm>
#include <memory>

using namespace dugwise;
using namespace dugwise::bench;
using namespace dugwise::test;

namespace {

void writeFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(FilePath::folder(path));
    QFile file(path);
    if (!file.open(QFile::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write the files");
}

QStringList makeFiles(const QString &folder, int count)
{
    QStringList paths;
    for (int i = 0; i < count; ++i) {
        static const char *const kExtensions[] = {"pdf", "txt", "odt", "tar.gz", "jpeg", "bin"};
        paths.append(folder + QStringLiteral("/file %1.").arg(i)
                     + QLatin1String(kExtensions[i % std::size(kExtensions)]));
        writeFile(paths.last(), "x");
    }
    return paths;
}

SampleDownload downloadOf(const QString &path)
{
    return {.path = path,
            .address = QStringLiteral("https://example.org/downloads") + path,
            .end = Instant{7e8},
            .page = QStringLiteral("https://example.org/")};
}

/// Every fourth file in each: attributes, Firefox, Chromium, the recently used ones.
void makeStores(const SampleHome &home, const QStringList &paths)
{
    SampleFirefox firefox(home.path(QStringLiteral(".mozilla/firefox/x.default")));
    SampleChromium chromium(home.path(QStringLiteral(".config/chromium/Default")));
    firefox.run("BEGIN");
    chromium.run("BEGIN");
    QByteArray bookmarks;
    for (qsizetype i = 0; i < paths.size(); ++i) {
        const QByteArray address = downloadOf(paths[i]).address.toUtf8();
        if (i % 4 == 0)
            ::setxattr(paths[i].toUtf8().constData(),
                       "user.xdg.origin.url",
                       address.constData(),
                       static_cast<std::size_t>(address.size()),
                       0);
        else if (i % 4 == 1)
            firefox.add(downloadOf(paths[i]));
        else if (i % 4 == 2)
            chromium.add(downloadOf(paths[i]));
        if (i % 4 == 3)
            bookmarks += bookmark(paths[i], "visited=\"2023-01-02T03:04:05Z\"");
    }
    firefox.run("COMMIT");
    chromium.run("COMMIT");
    writeFile(home.path(QStringLiteral(".local/share/recently-used.xbel")), xbel(bookmarks));
}

QByteArray bigEndian(qsizetype value)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(static_cast<quint32>(value), bytes.data());
    return bytes;
}

/// A tree of GVFS's metadata that holds an address of every file in Downloads.
QByteArray gvfsTree(const QStringList &paths)
{
    constexpr qsizetype kFiles = 108;
    const qsizetype metadata = kFiles + 4 + 16 * paths.size();
    const qsizetype strings = metadata + 12 * paths.size();
    QByteArray tree = "\xda\x1ameta" + QByteArray("\x01\x00", 2) + bigEndian(0) + bigEndian(1)
                      + bigEndian(56) + bigEndian(32) + QByteArray(8, '\0') + bigEndian(1)
                      + bigEndian(40) + QByteArray("download-uri\0\0\0", 16) + bigEndian(72)
                      + bigEndian(76) + QByteArray(8, '\0') + QByteArray("/\0\0", 4) + bigEndian(1)
                      + bigEndian(96) + bigEndian(kFiles) + QByteArray(8, '\0')
                      + QByteArray("Downloads\0\0", 12) + bigEndian(paths.size());
    QByteArray blocks;
    QByteArray texts;
    for (qsizetype i = 0; i < paths.size(); ++i) {
        tree += bigEndian(strings + texts.size()) + bigEndian(0) + bigEndian(metadata + 12 * i)
                + bigEndian(0);
        texts += FilePath::name(paths[i]).toUtf8() + '\0';
        blocks += bigEndian(1) + bigEndian(0) + bigEndian(strings + texts.size());
        texts += downloadOf(paths[i]).address.toUtf8() + '\0';
    }
    return tree + blocks + texts;
}

void measure(const char *what, const MetadataReader &reader, const QStringList &paths, int rounds)
{
    double reading = 1e9;
    double again = 1e9;
    double looking = 1e9;
    qsizetype origins = 0;
    qsizetype uses = 0;
    for (int round = 0; round < rounds; ++round) {
        const Stopwatch read;
        const auto index = reader.read(nullptr, {});
        reading = std::min(reading, read.seconds());
        const Stopwatch reread;
        if (reader.read(index, {}) != index)
            qFatal("the stores have changed meanwhile");
        again = std::min(again, reread.seconds());
        const Stopwatch look;
        origins = uses = 0;
        for (const QString &path : paths) {
            const auto item = index->item(path);
            origins += item->whereFroms.isEmpty() ? 0 : 1;
            uses += item->lastUsedDate ? 1 : 0;
        }
        looking = std::min(looking, look.seconds());
    }
    std::printf("%s: read in %.1f ms, unchanged in %.2f ms, %.2f us a file; "
                "%lld files, %lld origins, %lld uses\n",
                what,
                reading * 1e3,
                again * 1e3,
                looking * 1e6 / static_cast<double>(paths.size()),
                static_cast<long long>(paths.size()),
                static_cast<long long>(origins),
                static_cast<long long>(uses));
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const int count = QCoreApplication::arguments().value(1, QStringLiteral("20000")).toInt();
    const int rounds = QCoreApplication::arguments().value(2, QStringLiteral("5")).toInt();
    const SampleHome home;
    const QStringList paths = makeFiles(home.path(QStringLiteral("Downloads")), count);
    const auto reader = desktopMetadataReader(home.platform.folders, Clock());
    measure("no stores", *reader, paths, rounds);
    makeStores(home, paths);
    measure("attributes, browsers, recently used", *reader, paths, rounds);
    writeFile(home.path(QStringLiteral(".local/share/gvfs-metadata/home")), gvfsTree(paths));
    measure("with the metadata of GVFS", *reader, paths, rounds);
    return 0;
}
