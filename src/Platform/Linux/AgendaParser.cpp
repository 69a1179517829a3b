// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/AgendaParser.h"

#include <QStringTokenizer>

#include <sys/mman.h>

#include <algorithm>
#include <chrono>

namespace dugwise {

namespace {

/// Of one batch; together some tens of milliseconds to read.
constexpr qsizetype kMostDocuments = 256;
constexpr qsizetype kMostBytes = qsizetype{1024} * 1024;

constexpr int kMostAttempts = 3;
constexpr int kMostFailures = 3;                 // over one document
constexpr qsizetype kBytesInAMillisecond = 4096; // at the slowest

/// A file in memory that holds the batch.
FileDescriptor fileOf(const AgendaProtocol::Header &header, const QList<QByteArray> &texts)
{
    QByteArray head(reinterpret_cast<const char *>(&header), sizeof header);
    for (const QByteArray &text : texts) {
        const auto size = static_cast<std::uint64_t>(text.size());
        head.append(reinterpret_cast<const char *>(&size), sizeof size);
    }
    FileDescriptor file(::memfd_create("agenda", MFD_CLOEXEC));
    const auto write = [&file](const QByteArray &bytes) {
        qsizetype written = 0;
        while (written < bytes.size()) {
            const ssize_t size = ::write(file.get(),
                                         bytes.constData() + written,
                                         static_cast<std::size_t>(bytes.size() - written));
            if (size <= 0)
                return false;
            written += size;
        }
        return true;
    };
    return file && write(head) && std::ranges::all_of(texts, write) ? std::move(file)
                                                                    : FileDescriptor();
}

/// Adds records to those of their documents.
void take(const QString &text, QList<AgendaParser::Reading> &readings)
{
    for (const QStringView record :
         qTokenize(text, QChar(AgendaProtocol::kRecord), Qt::SkipEmptyParts)) {
        QStringList fields;
        for (const QStringView field : qTokenize(record, QChar(AgendaProtocol::kField)))
            fields.append(field.toString());
        bool isNumber = false;
        const qsizetype document = fields.takeFirst().toInt(&isNumber);
        if (isNumber && document >= 0 && document < readings.size())
            readings[document].records.append(fields);
    }
}

} // namespace

void AgendaParser::Attempts::count(Reading::Outcome outcome)
{
    using Outcome = Reading::Outcome;
    begun += outcome == Outcome::interrupted || outcome == Outcome::late ? 1 : 0;
    late += outcome == Outcome::late ? 1 : 0;
}

bool AgendaParser::Attempts::areUp() const
{
    return late >= kMostAttempts;
}

QList<AgendaParser::Reading> AgendaParser::read(const Request &request,
                                                const QDeadlineTimer &deadline)
{
    QList<Reading> readings;
    while (readings.size() < request.documents && isRunning(deadline)) {
        QList<QByteArray> texts;
        QList<qsizetype> missing;
        qsizetype bytes = 0;
        while (readings.size() + texts.size() < request.documents && texts.size() < kMostDocuments
               && bytes < kMostBytes && !deadline.hasExpired()) {
            const qsizetype document = readings.size() + texts.size();
            const auto text = request.text(document);
            if (!text)
                missing.append(document);
            texts.append(text.value_or(QByteArray()));
            bytes += texts.constLast().size();
        }
        readings += readTogether(request, texts, deadline, readings.isEmpty());
        for (const qsizetype document : missing)
            readings[document].outcome = Reading::Outcome::unread;
    }
    readings.resize(request.documents);
    return readings;
}

std::chrono::milliseconds AgendaParser::timeFor(const QList<QByteArray> &texts) const
{
    qsizetype bytes = 0;
    for (const QByteArray &text : texts)
        bytes += text.size();
    const std::chrono::milliseconds forSize(bytes / kBytesInAMillisecond);
    return m_patience + std::min(forSize, m_patience);
}

bool AgendaParser::isRunning(const QDeadlineTimer &deadline)
{
    if (deadline.hasExpired())
        return false;
    if (!m_process || m_process->state() != ParserProcess::State::running)
        m_process = std::make_unique<ParserProcess>(
            m_program, ParserProcess::Service::documents, std::stop_token(), deadline);
    return m_process->state() == ParserProcess::State::running;
}

std::optional<int> AgendaParser::open(const Request &request,
                                      const QList<QByteArray> &texts,
                                      quint32 itemsAtATime,
                                      const QDeadlineTimer &deadline)
{
    if (!isRunning(deadline))
        return std::nullopt;
    const FileDescriptor file = fileOf({.task = request.task,
                                        .documents = static_cast<quint32>(texts.size()),
                                        .earliest = request.earliest,
                                        .latest = request.latest,
                                        .itemsAtATime = itemsAtATime},
                                       texts);
    const QDeadlineTimer ownDeadline = std::min(deadline, QDeadlineTimer(timeFor(texts)));
    const auto opened = m_process->open(file, ownDeadline, {});
    return opened && opened->result >= 0 ? std::optional(opened->result) : std::nullopt;
}

/// `isFirst`: the request had no others before, and could give it no more time.
QList<AgendaParser::Reading> AgendaParser::readTogether(const Request &request,
                                                        const QList<QByteArray> &texts,
                                                        const QDeadlineTimer &deadline,
                                                        bool isFirst)
{
    QList<Reading> readings(texts.size());
    if (!isRunning(deadline))
        return readings;
    const auto left = deadline.remainingTimeAsDuration();
    const bool hasTime = left >= timeFor(texts) || (isFirst && left >= m_patience);
    const std::optional<int> count = open(request, texts, 0, deadline);
    int next = 0;
    while (count && next < *count) {
        const auto page = m_process->page(next);
        if (!page || page->result <= 0)
            break;
        take(page->text, readings);
        next += std::min(page->result, *count - next);
    }
    if (count && next == *count) {
        for (Reading &reading : readings)
            reading.outcome = Reading::Outcome::read;
        return readings;
    }
    readings = QList<Reading>(texts.size());
    if (texts.size() > 1) {
        for (qsizetype i = 0; i < texts.size(); ++i)
            readings[i] = readTogether(request, {texts[i]}, deadline, isFirst && i == 0).first();
        return readings;
    }
    const bool isDead = m_process->state() == ParserProcess::State::died;
    const bool isOver = m_process->state() == ParserProcess::State::timedOut;
    if (count.value_or(0) > 1 && (isDead || (isOver && hasTime)))
        readings.first() = readItemwise(request, texts.first(), deadline);
    else if (isOver)
        readings.first().outcome = hasTime ? Reading::Outcome::late : Reading::Outcome::interrupted;
    else if (isDead)
        readings.first().outcome = Reading::Outcome::read;
    return readings;
}

AgendaParser::Reading AgendaParser::readItemwise(const Request &request,
                                                 const QByteArray &text,
                                                 const QDeadlineTimer &deadline)
{
    QList<Reading> readings(1);
    Reading &reading = readings.first();
    int next = 0;
    for (int failures = 0; failures < kMostFailures; ++failures) {
        const std::optional<int> count = open(request, {text}, 1, deadline);
        if (!count) {
            reading.outcome =
                deadline.hasExpired() ? Reading::Outcome::late : Reading::Outcome::unread;
            return std::move(reading);
        }
        while (next < *count) {
            const auto page = m_process->page(next++);
            if (!page)
                break;
            take(page->text, readings);
        }
        if (m_process->state() == ParserProcess::State::running)
            break;
    }
    reading.outcome = deadline.hasExpired() ? Reading::Outcome::late : Reading::Outcome::read;
    return std::move(reading);
}

} // namespace dugwise
