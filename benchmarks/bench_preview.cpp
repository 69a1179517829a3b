// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
// What a person waits for after selecting a card: the panel with the file's facts, then its text,
// then a picture; and how long the event loop is held while 100 cards are gone through.
// usage: bench_preview [ROUNDS]
// QT_QPA_PLATFORM says where it is drawn.

#include "DugwiseApp.h"
#include "Measure.h"
#include "Platform/SystemFacilities.h"
#include "SampleText.h"
#include "Utilities/FilePath.h"
#include "Views/Window.h"
#include "support/SamplePDF.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QImage>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace dugwise;
using namespace dugwise::bench;

namespace {

constexpr int kCards = 100;

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QFile::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot make the files");
}

QStringList makeFiles(const QString &folder)
{
    SampleText sample(5);
    const QByteArray page = sample.text(2000);
    write(folder + u"/10 MB.txt"_s, sample.text(10'000'000));
    write(folder + u"/300 pages.pdf"_s, test::samplePDF(QStringList(300, QString::fromUtf8(page))));
    write(folder + u"/only line feeds.txt"_s, QByteArray(4000, '\n'));
    write(folder + u"/marks.txt"_s, u"a"_s.append(QString(100'000, u'\u0301')).toUtf8());
    QImage picture(4000, 3000, QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            picture.setPixel(x, y, qRgb(x / 16, y / 12, (x ^ y) & 0xFF));
    }
    picture.save(folder + u"/12 megapixels.jpg"_s);
    return {u"10 MB.txt"_s,
            u"300 pages.pdf"_s,
            u"only line feeds.txt"_s,
            u"marks.txt"_s,
            u"12 megapixels.jpg"_s};
}

SearchResult resultOf(const QString &path)
{
    const IndexedFile file({
        .id = QUuid::createUuid(),
        .name = FilePath::name(path),
        .path = path,
        .fileExtension = FilePath::fileExtension(path),
        .folderPath = FilePath::folder(path),
        .lastUsedDate = Instant{},
        .downloadDate = Instant{},
        .downloadSource = u"https://files.example.org/"_s,
    });
    return {QUuid::createUuid(),
            file,
            1,
            {kAllMatchReasons.begin(), kAllMatchReasons.end()},
            u"A file."_s};
}

void waitUntil(const std::function<bool()> &isReached)
{
    QEventLoop loop;
    QTimer look;
    look.setTimerType(Qt::PreciseTimer);
    look.callOnTimeout([&] {
        if (isReached())
            loop.quit();
    });
    look.start(0);
    loop.exec();
}

struct Bench
{
    explicit Bench(const QString &home)
        : platform({.home = home,
                    .documents = {},
                    .downloads = {},
                    .desktop = {},
                    .data = home + u"/data/Dugwise"_s,
                    .config = home + u"/config/Dugwise"_s,
                    .cache = home + u"/cache/Dugwise"_s})
    {
        addSystemFacilities(platform);
        platform.languageModel.reset(); // its time is not the window's
        platform.log = [](const QString & /*line*/) {};
        app.emplace(platform);
        session.emplace(platform, app->appState(), app->fileIndexer(), app->networkMonitor());
        window.emplace(*session);
        if (!window->isOpen())
            qFatal("no window");
        QObject::connect(
            window->view(), &QQuickWindow::frameSwapped, window->view(), [this] { ++frames; });
        waitUntil([this] { return frames > 0; });
    }

    void waitForFrame()
    {
        const int before = frames;
        waitUntil([&] { return frames > before; });
    }

    /// Milliseconds until the panel is there, and its text, and its picture; the best of all
    /// rounds.
    void measure(const QString &path, int rounds)
    {
        double panel = 1e9;
        double text = 1e9;
        double picture = 1e9;
        FilePreview &preview = *session->preview();
        for (int round = 0; round < rounds; ++round) {
            app->appState().setSelectedResult(std::nullopt);
            waitForFrame();
            const Stopwatch watch;
            app->appState().setSelectedResult(resultOf(path));
            waitForFrame();
            panel = std::min(panel, watch.seconds() * 1e3);
            waitUntil([&] { return !preview.isReading(); });
            waitForFrame();
            text = std::min(text, watch.seconds() * 1e3);
            if (!path.endsWith("jpg"_L1))
                continue;
            waitUntil([&] { return !preview.thumbnail().value<QImage>().isNull(); });
            waitForFrame();
            picture = std::min(picture, watch.seconds() * 1e3);
        }
        std::printf(
            "%-22s panel %5.1f ms, text %6.1f ms", qPrintable(FilePath::name(path)), panel, text);
        if (picture < 1e9)
            std::printf(", picture %6.1f ms", picture);
        std::printf("\n");
    }

    /// Goes from one to the next as fast as frames are drawn.
    void goThrough(const QStringList &paths)
    {
        double longest = 0;
        const Stopwatch whole;
        for (int i = 0; i < kCards; ++i) {
            const Stopwatch watch;
            app->appState().setSelectedResult(resultOf(paths[i % paths.size()]));
            waitForFrame();
            longest = std::max(longest, watch.seconds() * 1e3);
        }
        const double passed = whole.seconds() * 1e3;
        waitUntil([this] { return !session->preview()->isReading(); });
        std::printf(
            "%d cards: %.0f ms, %.1f ms for a frame at most, and %.1f ms to the last text\n",
            kCards,
            passed,
            longest,
            whole.seconds() * 1e3 - passed);
    }

    Platform platform;
    std::optional<DugwiseApp> app;
    std::optional<Session> session;
    std::optional<Window> window;
    int frames = 0;
};

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    const int rounds = std::max(1, QCoreApplication::arguments().value(1, u"9"_s).toInt());
    const QTemporaryDir home;
    QStringList paths;
    for (const QString &name : makeFiles(home.path()))
        paths.append(home.filePath(name));
    Bench bench(home.path());
    for (const QString &path : paths)
        bench.measure(path, rounds);
    bench.goThrough(paths);
    return 0;
}
