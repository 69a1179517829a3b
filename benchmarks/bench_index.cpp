// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Saves and loads an index file, each in a process of its own for its memory.
// usage: bench_index [save|load] [RECORDS] [FILE]

#include "Measure.h"
#include "SampleIndex.h"
#include "Services/IndexFile.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>

using namespace dugwise;
using namespace dugwise::bench;

namespace {

constexpr int kRounds = 5;

void print(const char *what, double megabytes, double seconds, double perText)
{
    std::printf("%s: %.0f MB in %.3f s, %.0f MB/s; memory at its peak %.2f times the text\n",
                what,
                megabytes,
                seconds,
                megabytes / seconds,
                perText);
}

void save(qsizetype records, const QString &path)
{
    const QList<IndexedFile> files = sampleIndex(records);
    double best = 1e9;
    forgetPeak();
    for (int round = 0; round < kRounds; ++round) {
        const Stopwatch watch;
        if (!IndexFile::save(path, files))
            qFatal("cannot save");
        best = std::min(best, watch.seconds());
    }
    print("save",
          static_cast<double>(QFileInfo(path).size()) / kMegabyte,
          best,
          memory("VmHWM") / textSize(files));
}

void load(const QString &path)
{
    double best = 1e9;
    double peak = 0;
    double resting = 0;
    for (int round = 0; round < kRounds; ++round) {
        forgetPeak();
        const Stopwatch watch;
        const auto files = IndexFile::load(path);
        best = std::min(best, watch.seconds());
        if (!files)
            qFatal("cannot load");
        // Only the first round starts from a process that holds nothing.
        if (round == 0) {
            peak = memory("VmHWM") / textSize(*files);
            resting = memory("VmRSS") / textSize(*files);
        }
    }
    print("load", static_cast<double>(QFileInfo(path).size()) / kMegabyte, best, peak);
    std::printf("records in memory: %.2f times their text\n", resting);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString path = arguments.value(3, QStringLiteral("/tmp/dugwise-bench-index.json"));
    const QString what = arguments.value(1, QStringLiteral("save"));
    if (what == QStringLiteral("save"))
        save(arguments.value(2, QStringLiteral("100000")).toLongLong(), path);
    else
        load(path);
    return 0;
}
