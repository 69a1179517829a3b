// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/PreviewLoader.h"

#include "Models/MarkedText.h"
#include "Platform/FileAttributes.h"
#include "Utilities/FileTypeHelper.h"
#include "Utilities/PrintableText.h"

#include <QCoroFuture>
#include <QPointer>
#include <QtConcurrentRun>

#include <tuple>
#include <utility>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

/// Marks above and below one letter that are kept; no language has as many.
constexpr int kMostMarks = 8;

QString withoutHeapsOfMarks(const QString &text)
{
    QString kept;
    kept.reserve(text.size());
    int marks = 0;
    for (const QChar c : text) {
        marks = c.isMark() ? marks + 1 : 0;
        if (marks <= kMostMarks)
            kept.append(c);
    }
    return kept;
}

/// A text as it is shown, no longer than is laid out in a moment.
QString shown(const QString &text)
{
    QString kept = withoutHeapsOfMarks(text);
    if (kept.size() > PreviewLoader::kMostUnits) {
        const bool cutsPair = kept.at(PreviewLoader::kMostUnits - 1).isHighSurrogate();
        kept.truncate(PreviewLoader::kMostUnits - (cutsPair ? 1 : 0));
        kept += u"\n\n[Truncated...]"_s;
    }
    return printableLines(kept);
}

QString firstLines(const QString &text)
{
    qsizetype end = -1;
    for (int line = 0; line < PreviewLoader::kMostLines; ++line) {
        end = text.indexOf(u'\n', end + 1);
        if (end < 0)
            return text;
    }
    return text.first(end);
}

std::optional<PreviewLoader::Text> readText(const FilePreviewService &service,
                                            const IndexedFile &file,
                                            const QStringList &words,
                                            const std::stop_token &stop)
{
    const auto attributes = fileAttributes(file->path);
    if (stop.stop_requested()) // what lies beyond this may be gone
        return std::nullopt;
    if (!attributes || !attributes->isRegularFile || attributes->size > PreviewLoader::kLargestFile)
        return std::nullopt;
    const std::optional<QString> text =
        service.extractPreviewText(file, PreviewLoader::kMostCharacters, stop);
    if (!text)
        return std::nullopt;
    const QString plain = shown(*text);
    return PreviewLoader::Text{plain, markedTextToHtml(firstLines(plain), words)};
}

} // namespace

PreviewLoader::PreviewLoader(FilePreviewService service,
                             const ThumbnailReader *thumbnails,
                             std::chrono::milliseconds patience)
    : m_service(service)
    , m_thumbnails(thumbnails)
{
    m_threads->setMaxThreadCount(1);
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    m_patience.callOnTimeout(this, &PreviewLoader::giveUp);
    m_grace.setSingleShot(true);
    m_grace.setInterval(kGrace);
    m_grace.callOnTimeout(this, &PreviewLoader::abandonWorker);
}

PreviewLoader::~PreviewLoader()
{
    m_stop.request_stop();
    const std::chrono::milliseconds grace = kGrace;
    // Threads that are still held up need their pool, should they ever go on: it is left to them.
    if (!m_threads->waitForDone(static_cast<int>(grace.count())))
        std::ignore = m_threads.release();
}

void PreviewLoader::load(const std::optional<IndexedFile> &file, const QStringList &words)
{
    stopReading();
    m_wanted.reset();
    m_text.reset();
    m_thumbnail.reset();
    m_isReading = file.has_value();
    m_patience.stop();
    if (file) {
        m_wanted = Wanted{*file, words};
        m_patience.start();
    }
    Q_EMIT changed();
    if (m_wanted && !m_isWorking)
        readWanted();
}

QCoro::Task<void> PreviewLoader::readWanted()
{
    const QPointer<PreviewLoader> self(this);
    const std::stop_token abandoned = m_abandoned.get_token();
    m_isWorking = true;
    while (m_wanted && !abandoned.stop_requested()) {
        const Wanted wanted = *std::exchange(m_wanted, std::nullopt);
        m_grace.stop();
        m_stop = {};
        const std::stop_token stop = m_stop.get_token();
        const FilePreviewService service = m_service;
        const QFuture<std::optional<Text>> reading =
            QtConcurrent::run(m_threads.get(), [service, wanted, stop] {
                return readText(service, wanted.file, wanted.words, stop);
            });
        const std::optional<Text> text = co_await reading;
        if (!self)
            co_return;
        if (stop.stop_requested())
            continue;
        publish(text);
        if (stop.stop_requested() || !m_thumbnails || !text
            || FileTypeHelper::fileType(wanted.file->fileExtension) != FileType::image)
            continue;
        const ThumbnailReader *const thumbnails = m_thumbnails;
        const QFuture<std::optional<Thumbnail>> drawing =
            QtConcurrent::run(m_threads.get(), [thumbnails, path = wanted.file->path, stop] {
                return thumbnails->thumbnail(path, stop);
            });
        const std::optional<Thumbnail> thumbnail = co_await drawing;
        if (!self)
            co_return;
        if (stop.stop_requested() || !thumbnail)
            continue;
        m_thumbnail = thumbnail;
        Q_EMIT changed();
    }
    if (abandoned.stop_requested()) {
        --m_abandonedWorkers;
        m_threads->reserveThread();
        co_return;
    }
    m_grace.stop();
    m_isWorking = false;
}

void PreviewLoader::stopReading()
{
    m_stop.request_stop();
    if (m_isWorking && !m_grace.isActive())
        m_grace.start();
}

/// The file lies where nothing answers.
void PreviewLoader::giveUp()
{
    if (!m_isReading)
        return;
    m_wanted.reset();
    stopReading();
    publish(std::nullopt);
}

/// Leaves the worker, which was told to stop and does not, to what holds it up.
void PreviewLoader::abandonWorker()
{
    if (m_abandonedWorkers == kMostAbandoned)
        return;
    ++m_abandonedWorkers;
    m_threads->releaseThread(); // so that there may be one more, until it is reserved again
    m_abandoned.request_stop();
    m_abandoned = {};
    m_isWorking = false;
    if (m_wanted)
        readWanted();
}

void PreviewLoader::publish(const std::optional<Text> &text)
{
    m_patience.stop();
    m_isReading = false;
    m_text = text;
    Q_EMIT changed();
}

} // namespace dugwise
