// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/SandboxedPDFReader.h"

#include "Platform/FailedFiles.h"
#include "Platform/FileAttributes.h"
#include "Platform/ParserProcess.h"

#include <QFile>

#include <fcntl.h>

#include <future>

namespace dugwise {

namespace {

constexpr int kMostParsers = 2;
/// A file that killed its parser may have been in it by accident only once.
constexpr int kAttempts = 2;
/// Bytes of the largest file that is tried: the parser maps it, and needs memory beside.
constexpr qint64 kLargestFile = qint64{512} * 1024 * 1024;

class OpenDocument final : public PDFDocument
{
public:
    OpenDocument(ParserProcess &parser, int pageCount)
        : m_parser(parser)
        , m_pageCount(pageCount)
    {}
    [[nodiscard]] int pageCount() const override { return m_pageCount; }
    [[nodiscard]] std::optional<QString> pageText(int page) const override
    {
        std::optional<ParserProcess::Answer> answer = m_parser.page(page);
        if (!answer || answer->result < 0)
            return std::nullopt;
        return std::move(answer->text);
    }

private:
    ParserProcess &m_parser;
    int m_pageCount;
};

} // namespace

SandboxedPDFReader::SandboxedPDFReader(QString program, QString failedFilesFolder)
    : m_program(std::move(program))
    , m_failedFilesFolder(std::move(failedFilesFolder))
{
    m_threads.setMaxThreadCount(kMostParsers);
}

SandboxedPDFReader::~SandboxedPDFReader()
{
    m_threads.waitForDone(); // before the parsers of its threads are let go
}

bool SandboxedPDFReader::read(const QString &path,
                              const std::function<void(const PDFDocument &document)> &use,
                              const std::stop_token &stop) const
{
    // Shared, because the task still touches itself when its result is there already.
    const auto reading = std::make_shared<std::packaged_task<bool()>>(
        [&] { return readInThisThread(path, use, stop); });
    std::future<bool> isRead = reading->get_future();
    m_threads.start([reading] { (*reading)(); });
    return isRead.get();
}

void SandboxedPDFReader::forgetFailures() const
{
    FailedFiles(m_failedFilesFolder, QString()).clear();
}

bool SandboxedPDFReader::readInThisThread(const QString &path,
                                          const Use &use,
                                          const std::stop_token &stop) const
{
    const auto attributes = fileAttributes(path);
    if (!attributes || !attributes->isRegularFile || attributes->size > kLargestFile)
        return false;
    const FileDescriptor file(::open(QFile::encodeName(path).constData(),
                                     O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    for (int attempt = 0; file && attempt < kAttempts && !stop.stop_requested(); ++attempt) {
        ParserProcess &parser = parserOfThisThread(stop);
        if (parser.version().isEmpty())
            continue;
        const FailedFiles failed(m_failedFilesFolder, parser.version());
        if (failed.contains(path, *attributes))
            return false;
        if (const auto opened = parser.open(file, QDeadlineTimer(kDeadline), stop)) {
            if (opened->result < 0)
                return false;
            use(OpenDocument(parser, opened->result));
        }
        if (parser.state() == ParserProcess::State::running) {
            parser.close();
            return true;
        }
        const bool isLastAttempt =
            parser.state() == ParserProcess::State::timedOut || attempt + 1 == kAttempts;
        if (isLastAttempt && !stop.stop_requested()) {
            failed.insert(path, *attributes);
            return false;
        }
    }
    return false;
}

ParserProcess &SandboxedPDFReader::parserOfThisThread(const std::stop_token &stop) const
{
    std::shared_ptr<ParserProcess> &parser = m_parsers.localData();
    if (!parser || parser->state() != ParserProcess::State::running)
        parser =
            std::make_shared<ParserProcess>(m_program, ParserProcess::Service::documents, stop);
    return *parser;
}

} // namespace dugwise
