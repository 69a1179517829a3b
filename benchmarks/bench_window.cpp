// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
// What a person waits for and feels in the window: its first frame, its motion, and how long the
// event loop is held while files are indexed, requests answered and a conversation scrolled.
// usage: bench_window [RECORDS [FILES [MESSAGES [MILLISECONDS]]]]
// QT_QPA_PLATFORM says where it is drawn. Each part is a process of its own.

#include "DugwiseApp.h"
#include "Measure.h"
#include "Platform/SystemFacilities.h"
#include "SampleFolder.h"
#include "SampleIndex.h"
#include "Services/IndexFile.h"
#include "Views/Window.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QProcess>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <ctime>
#include <functional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace dugwise;
using namespace dugwise::bench;

namespace {

StandardFolders foldersOf(const QString &home)
{
    return {.home = home,
            .documents = home + u"/Documents"_s,
            .downloads = {},
            .desktop = {},
            .data = home + u"/data/Dugwise"_s,
            .config = home + u"/config/Dugwise"_s,
            .cache = home + u"/cache/Dugwise"_s};
}

/// The application and its window over a home folder.
struct Running
{
    explicit Running(const QString &home)
        : platform(foldersOf(home))
    {
        addSystemFacilities(platform);
        platform.languageModel.reset(); // its time is not the window's
        platform.metadataQueryCommand.reset();
        platform.log = [](const QString & /*line*/) {};
        app.emplace(platform);
        session.emplace(platform, app->appState(), app->fileIndexer(), app->networkMonitor());
        window.emplace(*session);
        if (!window->isOpen())
            qFatal("no window");
    }

    Platform platform;
    std::optional<DugwiseApp> app;
    std::optional<Session> session;
    std::optional<Window> window;
};

/// Longest time for which the event loop was held, and how often it was for more than a frame.
class Gaps
{
public:
    Gaps()
    {
        m_ticks.callOnTimeout([this] { note(); });
        m_ticks.setTimerType(Qt::PreciseTimer);
        m_ticks.start(0);
    }
    ~Gaps() { m_ticks.stop(); }
    Q_DISABLE_COPY_MOVE(Gaps)

    void print(const char *what) const
    {
        std::printf("%s: event loop held for %.1f ms at most, %d times for more than 16 ms\n",
                    what,
                    m_longest * 1e3,
                    m_long);
    }

private:
    void note()
    {
        const double gap = m_since.seconds();
        m_longest = std::max(m_longest, gap);
        m_long += gap > 0.016 ? 1 : 0;
        m_since = Stopwatch();
    }

    QTimer m_ticks;
    Stopwatch m_since;
    double m_longest = 0;
    int m_long = 0;
};

void waitUntil(const std::function<bool()> &isReached)
{
    QEventLoop loop;
    QTimer look;
    look.callOnTimeout([&] {
        if (isReached())
            loop.quit();
    });
    look.start(1ms);
    loop.exec();
}

void wait(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

double processorSeconds()
{
    timespec used = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) + 1e-9 * static_cast<double>(used.tv_nsec);
}

/// In a process of its own: tells when its first frame was drawn after `started`, a time of the
/// monotonic clock in nanoseconds.
int firstFrame(const QString &home, qint64 started)
{
    Running running(home);
    QEventLoop loop;
    QObject::connect(running.window->view(), &QQuickWindow::frameSwapped, &loop, &QEventLoop::quit);
    loop.exec();
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    std::printf("%.1f\n",
                static_cast<double>(qint64{1'000'000'000} * now.tv_sec + now.tv_nsec - started)
                    / 1e6);
    std::fflush(stdout);
    _exit(0); // the index is still being read
}

void benchFirstFrame(int records)
{
    const QTemporaryDir home;
    const StandardFolders folders = foldersOf(home.path());
    makePrivateFolder(folders.data);
    if (!IndexFile::save(folders.data + u"/file_index.json"_s, sampleIndex(records)))
        qFatal("cannot save");
    QList<double> times;
    for (int round = 0; round < 9; ++round) {
        timespec now = {};
        clock_gettime(CLOCK_MONOTONIC, &now);
        QProcess child;
        child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        child.start(QCoreApplication::applicationFilePath(),
                    {u"first-frame"_s,
                     home.path(),
                     QString::number(qint64{1'000'000'000} * now.tv_sec + now.tv_nsec)});
        child.waitForFinished(-1);
        times.append(child.readAllStandardOutput().toDouble());
    }
    std::ranges::sort(times);
    std::printf("first frame with an index of %d records: %.0f ms after the start of the process "
                "(median of %lld; %.0f to %.0f)\n",
                records,
                times[times.size() / 2],
                static_cast<long long>(times.size()),
                times.first(),
                times.last());
}

int benchWelcome(std::chrono::milliseconds time)
{
    const QTemporaryDir home;
    Running running(home.path());
    wait(2s);
    int frames = 0;
    const QObject counter;
    QObject::connect(
        running.window->view(), &QQuickWindow::frameSwapped, &counter, [&] { ++frames; });
    const double before = processorSeconds();
    const Stopwatch watch;
    wait(time);
    const double seconds = watch.seconds();
    std::printf("welcome: %.1f frames a second, %.0f %% of a core\n",
                frames / seconds,
                100 * (processorSeconds() - before) / seconds);
    return 0;
}

int benchIndexing(int files)
{
    const QTemporaryDir home;
    makeFiles(home.filePath(u"Documents"_s), files);
    Running running(home.path());
    waitUntil([&] { return running.app->fileIndexer().isIndexing(); });
    {
        const Gaps gaps;
        const FileIndexer &indexer = running.app->fileIndexer();
        wait(500ms);
        running.session->submit(u"notes from last week"_s);
        waitUntil([&] { return !indexer.isBusy() && !running.session->isSearching(); });
        gaps.print("indexing, and a request answered");
    }
    {
        const Gaps gaps;
        running.session->submit(u"notes from last month"_s);
        waitUntil([&] { return !running.session->isSearching(); });
        wait(2s);
        gaps.print("a request over what was indexed, and its cards");
    }
    return 0;
}

int benchConversation(int messages)
{
    const QTemporaryDir home;
    makeFiles(home.filePath(u"Documents"_s), 60);
    Running running(home.path());
    waitUntil([&] { return !running.app->fileIndexer().isBusy(); });
    const double before = memory("VmRSS");
    while (running.app->appState().messages().size() < messages) {
        running.session->submit(u"a note"_s);
        waitUntil([&] { return !running.session->isSearching(); });
    }
    wait(2s);
    auto *const list = running.window->view()->findChild<QQuickItem *>(u"conversation"_s);
    std::printf("conversation: %lld messages, %d rows, %.0f MB above the start\n",
                static_cast<long long>(running.app->appState().messages().size()),
                list->property("count").toInt(),
                (memory("VmRSS") - before) / kMegabyte);
    QMetaObject::invokeMethod(list, "stay"); // as any scrolling by the person has it
    {
        const Gaps gaps;
        int frames = 0;
        QTimer scrolling;
        QObject::connect(
            running.window->view(), &QQuickWindow::frameSwapped, &scrolling, [&] { ++frames; });
        QEventLoop loop;
        int steps = 600;
        scrolling.setTimerType(Qt::PreciseTimer);
        scrolling.callOnTimeout([&] {
            list->setProperty("contentY", list->property("contentY").toDouble() - 60);
            if (--steps == 0)
                loop.quit();
        });
        scrolling.start(16ms);
        loop.exec();
        std::printf("%d frames; ", frames);
        gaps.print("scrolling by 60 pixels 600 times");
    }
    {
        const Gaps gaps;
        list->setProperty("contentY", 0);
        wait(1s);
        running.session->submit(u"a note"_s);
        waitUntil([&] { return !running.session->isSearching(); });
        wait(2s);
        gaps.print("to the first message, and a request there");
    }
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString part = arguments.value(1);
    if (part == "first-frame"_L1)
        return firstFrame(arguments.value(2), arguments.value(3).toLongLong());
    const int count = arguments.value(2).toInt();
    if (part == "welcome"_L1)
        return benchWelcome(std::chrono::milliseconds(count));
    if (part == "indexing"_L1)
        return benchIndexing(count);
    if (part == "conversation"_L1)
        return benchConversation(count);
    benchFirstFrame(arguments.value(1, u"100000"_s).toInt());
    const QString files = arguments.value(2, u"20000"_s);
    const QString messages = arguments.value(3, u"1000"_s);
    const QString milliseconds = arguments.value(4, u"10000"_s);
    const QString self = QCoreApplication::applicationFilePath();
    return QProcess::execute(self, {u"welcome"_s, milliseconds})
           + QProcess::execute(self, {u"indexing"_s, files})
           + QProcess::execute(self, {u"conversation"_s, messages});
}
