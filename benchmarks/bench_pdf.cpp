// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the text that the index keeps of PDF documents: with the library in this process, and
// through the sandboxed parsers, one and two at a time.
// usage: bench_pdf [FOLDER]     (a few documents made up here when none is given)

#include "Helpers/dugwise-extract/Document.h"
#include "Measure.h"
#include "Platform/PDFDocument.h"
#include "Platform/SandboxedPDFReader.h"
#include "SampleText.h"
#include "Services/FileRecord.h"
#include "support/SamplePDF.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QTemporaryDir>

#include <fcntl.h>
#include <poppler-global.h>

#include <algorithm>
#include <atomic>
#include <limits>
#include <thread>
#include <vector>

using namespace dugwise;
using namespace dugwise::bench;

namespace {

constexpr std::size_t kMostCharacters = 5000;
constexpr int kRounds = 3;

/// The library without process or sandbox around it.
class LibraryReader final : public PDFDocumentReader
{
public:
    [[nodiscard]] bool read(const QString &path,
                            const std::function<void(const PDFDocument &document)> &use,
                            const std::stop_token &) const override
    {
        const Opened opened(path);
        if (opened.pageCount() >= 0)
            use(opened);
        return opened.pageCount() >= 0;
    }

private:
    class Opened final : public PDFDocument
    {
    public:
        explicit Opened(const QString &path)
            : m_document(
                FileDescriptor(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC)))
        {}
        [[nodiscard]] int pageCount() const override { return m_document.pageCount(); }
        [[nodiscard]] std::optional<QString> pageText(int page) const override
        {
            const poppler::ustring text = m_document.pageText(page);
            if (text.empty())
                return std::nullopt;
            return QString::fromUtf16(reinterpret_cast<const char16_t *>(text.data()),
                                      static_cast<qsizetype>(text.size()));
        }

    private:
        Document m_document;
    };
};

struct Round
{
    double seconds = std::numeric_limits<double>::max();
    qsizetype texts = 0;
    qsizetype bytes = 0;
};

Round readAll(const QStringList &paths, const PDFDocumentReader &reader, int threads)
{
    std::atomic<qsizetype> next = 0;
    std::atomic<qsizetype> texts = 0;
    std::atomic<qsizetype> bytes = 0;
    const Stopwatch watch;
    std::vector<std::jthread> callers;
    for (int i = 0; i < threads; ++i) {
        callers.emplace_back([&] {
            for (qsizetype at = next++; at < paths.size(); at = next++) {
                if (const auto text = extractPDFText(paths[at], kMostCharacters, reader)) {
                    ++texts;
                    bytes += text->size();
                }
            }
        });
    }
    callers.clear();
    return {.seconds = watch.seconds(), .texts = texts, .bytes = bytes};
}

void print(const char *what, const Round &round, const Round &library, qsizetype count)
{
    const auto files = static_cast<double>(count);
    std::printf("%-24s %6.2f ms/file, %6.0f files/minute, %.2f times the library's time; "
                "%lld texts, %lld bytes\n",
                what,
                round.seconds * 1000 / files,
                files * 60 / round.seconds,
                round.seconds / library.seconds,
                static_cast<long long>(round.texts),
                static_cast<long long>(round.bytes));
}

void makeDocuments(const QString &folder)
{
    SampleText sample(3);
    for (int i = 0; i < 10; ++i) {
        QFile file(folder + QStringLiteral("/%1.pdf").arg(i));
        if (!file.open(QFile::WriteOnly))
            qFatal("cannot make the documents");
        file.write(test::samplePDF(QStringList(5, QString::fromUtf8(sample.text(2000)))));
    }
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir own;
    const QString folder = QCoreApplication::arguments().value(1, own.path());
    if (folder == own.path())
        makeDocuments(folder);
    QStringList paths;
    for (QDirIterator files(folder, {QStringLiteral("*.pdf")}, QDir::Files); files.hasNext();)
        paths.append(files.next());
    paths.sort();

    poppler::set_debug_error_function([](const std::string &, void *) {}, nullptr);
    const LibraryReader library;
    const SandboxedPDFReader sandboxed(QStringLiteral(DUGWISE_EXTRACT),
                                       own.filePath(QStringLiteral("failed")));
    Round best[3];
    for (int round = 0; round < kRounds; ++round) {
        const Round rounds[] = {
            readAll(paths, library, 1), readAll(paths, sandboxed, 1), readAll(paths, sandboxed, 2)};
        for (int i = 0; i < 3; ++i) {
            if (rounds[i].seconds < best[i].seconds)
                best[i] = rounds[i];
        }
    }
    std::printf("%lld documents\n", static_cast<long long>(paths.size()));
    print("library, one thread", best[0], best[0], paths.size());
    print("sandboxed, one caller", best[1], best[0], paths.size());
    print("sandboxed, two callers", best[2], best[0], paths.size());
    return 0;
}
