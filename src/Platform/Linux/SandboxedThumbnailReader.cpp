// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/SandboxedThumbnailReader.h"

#include "Platform/FileAttributes.h"
#include "Platform/ParserProcess.h"
#include "Platform/ThumbnailProtocol.h"

#include <QFile>

#include <fcntl.h>

#include <future>

namespace dugwise {

namespace {

/// A process may have died of something else, while it had nothing to do.
constexpr int kAttempts = 2;

/// The image of an answer; absent when it is none.
std::optional<Thumbnail> decoded(const ParserProcess::Answer &answer)
{
    const QSize size(ThumbnailProtocol::width(answer.result),
                     ThumbnailProtocol::height(answer.result));
    const bool isFitting = answer.result > 0 && !size.isEmpty()
                           && size.width() <= ThumbnailProtocol::kMostSide
                           && size.height() <= ThumbnailProtocol::kMostSide;
    // Each pixel is two code units.
    if (!isFitting || answer.text.size() != qsizetype{2} * size.width() * size.height())
        return std::nullopt;
    return Thumbnail{size,
                     QByteArray(reinterpret_cast<const char *>(answer.text.constData()),
                                answer.text.size() * qsizetype{sizeof(QChar)})};
}

} // namespace

SandboxedThumbnailReader::SandboxedThumbnailReader(QString program)
    : m_program(std::move(program))
{
    m_thread.setMaxThreadCount(1);
}

SandboxedThumbnailReader::~SandboxedThumbnailReader()
{
    m_thread.waitForDone(); // before the process of its thread is let go
}

std::optional<Thumbnail> SandboxedThumbnailReader::thumbnail(const QString &path,
                                                             const std::stop_token &stop) const
{
    // Shared, because the task still touches itself when its result is there already.
    const auto making = std::make_shared<std::packaged_task<std::optional<Thumbnail>()>>(
        [&] { return makeInThisThread(path, stop); });
    std::future<std::optional<Thumbnail>> thumbnail = making->get_future();
    m_thread.start([making] { (*making)(); });
    return thumbnail.get();
}

std::optional<Thumbnail>
SandboxedThumbnailReader::makeInThisThread(const QString &path, const std::stop_token &stop) const
{
    const auto attributes = fileAttributes(path);
    if (!attributes || !attributes->isRegularFile)
        return std::nullopt;
    const FileDescriptor file(::open(QFile::encodeName(path).constData(),
                                     O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    for (int attempt = 0; file && attempt < kAttempts && !stop.stop_requested(); ++attempt) {
        std::shared_ptr<ParserProcess> &process = m_process.localData();
        if (!process || process->state() != ParserProcess::State::running)
            process =
                std::make_shared<ParserProcess>(m_program, ParserProcess::Service::documents, stop);
        if (const auto answer = process->open(file, QDeadlineTimer(kDeadline), stop))
            return decoded(*answer);
        if (process->state() == ParserProcess::State::timedOut)
            break;
    }
    return std::nullopt;
}

} // namespace dugwise
