// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Indexes a folder of text files through the event loop and watches how long that is ever held.
// usage: bench_walk [FILES [TABLE]]     (with a table, vectors are made too)

#include "Measure.h"
#include "Platform/Platform.h"
#include "Platform/TableEmbedding.h"
#include "SampleFolder.h"
#include "Services/FileIndexer.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>

using namespace dugwise;
using namespace dugwise::bench;

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const int count = QCoreApplication::arguments().value(1, QStringLiteral("20000")).toInt();
    const QTemporaryDir home;
    const QString documents = home.filePath(QStringLiteral("Documents"));
    makeFiles(documents, count);
    Platform platform({.home = home.path(),
                       .documents = documents,
                       .downloads = {},
                       .desktop = {},
                       .data = home.filePath(QStringLiteral("data")),
                       .config = home.filePath(QStringLiteral("config")),
                       .cache = home.filePath(QStringLiteral("cache"))});
    if (const QString path = QCoreApplication::arguments().value(2); !path.isEmpty()) {
        std::optional<EmbeddingTable> table = EmbeddingTable::open(path);
        if (!table)
            qFatal("no table at %s", qPrintable(path));
        platform.sentenceEmbedding = std::make_unique<TableEmbedding>(std::move(*table));
    }
    double longestGap = 0;
    Stopwatch sinceTick;
    QTimer ticks;
    QObject::connect(&ticks, &QTimer::timeout, &application, [&] {
        longestGap = std::max(longestGap, sinceTick.seconds());
        sinceTick = Stopwatch();
    });
    ticks.start(0);

    const Stopwatch watch;
    double walked = 0;
    FileIndexer indexer(platform);
    QObject::connect(&indexer, &FileIndexer::isIndexingChanged, &application, [&] {
        if (!indexer.isIndexing())
            walked = watch.seconds();
    });
    QObject::connect(&indexer, &FileIndexer::settled, &application, &QCoreApplication::quit);
    QCoreApplication::exec();
    std::printf("walk: %lld files in %.3f s, %.0f files/s; saved after %.3f s; "
                "event loop held for %.1f ms at most\n",
                static_cast<long long>(indexer.totalFilesIndexed()),
                walked,
                static_cast<double>(indexer.totalFilesIndexed()) / walked,
                watch.seconds(),
                longestGap * 1000);
    return 0;
}
