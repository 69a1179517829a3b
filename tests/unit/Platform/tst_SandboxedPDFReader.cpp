// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/SandboxedPDFReader.h"
#include "support/ChildProcesses.h"
#include "support/SampleFiles.h"
#include "support/SamplePDF.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

#include <atomic>
#include <csignal>
#include <future>
#include <vector>

using namespace Qt::StringLiterals;

namespace dugwise::test {

class TstSandboxedPDFReader : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<SandboxedPDFReader> m_reader;

    [[nodiscard]] QString path(const QString &name) const { return m_folder->filePath(name); }

    /// The texts of a document's pages, where it can be opened.
    [[nodiscard]] std::optional<QStringList> read(const QString &name) const
    {
        QStringList texts;
        const auto readAll = [&](const PDFDocument &document) {
            texts.clear();
            for (int page = 0; page < document.pageCount(); ++page)
                texts.append(document.pageText(page).value_or(u"(none)"_s));
        };
        return m_reader->read(path(name), readAll, {}) ? std::optional(texts) : std::nullopt;
    }

    /// How often reading a document asks for its text, while its parser gets a signal each time.
    [[nodiscard]] int
    attempts(const QString &name, int signal, const std::stop_token &stop = {}) const
    {
        int count = 0;
        const auto disturb = [&](const PDFDocument &document) {
            ++count;
            signalChildProcesses(signal);
            if (document.pageText(0))
                count += 100;
        };
        return m_reader->read(path(name), disturb, stop) ? -count : count;
    }

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_reader = std::make_unique<SandboxedPDFReader>(QStringLiteral(DUGWISE_EXTRACT),
                                                        path(u"failed"_s));
        writeFile(path(u"hello.pdf"_s), samplePDF({u"Hello"_s}));
    }

    void readsRealDocuments()
    {
        QCOMPARE(read(u"hello.pdf"_s), QStringList{u"Hello"_s});
        QStringList forty;
        for (int i = 1; i <= 40; ++i)
            forty.append(u"Page %1 of the Übergabeprotokoll (draft)\nsecond line"_s.arg(i));
        writeFile(path(u"forty.pdf"_s), samplePDF(forty));
        QCOMPARE(read(u"forty.pdf"_s), forty);
        writeFile(path(u"scan.pdf"_s), samplePDF({u""_s, u"typed"_s}));
        QCOMPARE(read(u"scan.pdf"_s), (QStringList{u"(none)"_s, u"typed"_s}));
        QCOMPARE(read(u"hello.pdf"_s), QStringList{u"Hello"_s});
    }

    void asksForNoPassword()
    {
        for (const auto password : {""_L1, "secret"_L1}) {
            const QString name = u"locked%1.pdf"_s.arg(password);
            QCOMPARE(QProcess::execute(u"qpdf"_s,
                                       {u"--encrypt"_s,
                                        password,
                                        u"owner"_s,
                                        u"256"_s,
                                        u"--"_s,
                                        path(u"hello.pdf"_s),
                                        path(name)}),
                     0);
        }
        QCOMPARE(read(u"locked.pdf"_s), QStringList{u"Hello"_s});
        QCOMPARE(read(u"lockedsecret.pdf"_s), std::nullopt);
    }

    void librariesMayComplain()
    {
        // A picture that the JPEG library has something to say about.
        const QByteArray picture = "BI /W 1 /H 1 /BPC 8 /CS /G /F /DCT ID "
                                   + QByteArray::fromHex("ffd8000000ffd9") + "\nEI\n";
        writeFile(
            path(u"odd.pdf"_s),
            pdfOfObjects({"<< /Type /Catalog /Pages 2 0 R >>",
                          "<< /Type /Pages /Count 1 /Kids [ 4 0 R ] >>",
                          "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>",
                          "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents 5 0 "
                          "R /Resources << /Font << /F1 3 0 R >> >> >>",
                          pdfStream(picture + pdfPageContent(u"Hello"_s))}));
        QCOMPARE(read(u"odd.pdf"_s), QStringList{u"Hello"_s});
    }

    void opensOnlyDocuments_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("text") << QByteArray("Hello");
        QTest::newRow("a beginning") << QByteArray("%PDF-1.7\n");
        QTest::newRow("pages in a circle") << pdfOfObjects(
            {"<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Count 9 /Kids [ 2 0 R ] >>"});
        QTest::newRow("billions of pages")
            << pdfOfObjects({"<< /Type /Catalog /Pages 2 0 R >>",
                             "<< /Type /Pages /Count 2000000000 /Kids [ ] >>"});
    }
    void opensOnlyDocuments()
    {
        QFETCH(QByteArray, content);
        writeFile(path(u"some.pdf"_s), content);
        const auto look = [](const PDFDocument &document) {
            QCOMPARE(document.pageText(0), std::nullopt);
        };
        [[maybe_unused]] const bool isOpened = m_reader->read(path(u"some.pdf"_s), look, {});
        QCOMPARE(read(u"hello.pdf"_s), QStringList{u"Hello"_s});
    }

    void opensOnlyRegularFiles()
    {
        QVERIFY(QDir().mkpath(path(u"folder.pdf"_s)));
        QCOMPARE(::mkfifo(path(u"pipe.pdf"_s).toUtf8().constData(), 0600), 0);
        QVERIFY(QFile::link(path(u"hello.pdf"_s), path(u"link.pdf"_s)));
        for (const QString &name :
             {u"folder.pdf"_s, u"pipe.pdf"_s, u"link.pdf"_s, u"missing.pdf"_s})
            QCOMPARE(read(name), std::nullopt);
        const SandboxedPDFReader noParser(path(u"no such program"_s), path(u"failed"_s));
        QVERIFY(!noParser.read(path(u"hello.pdf"_s), [](const PDFDocument &) {}, {}));
    }

    void theParserIsConfined()
    {
        QVERIFY(m_reader->read(
            path(u"hello.pdf"_s),
            [](const PDFDocument &) {
                const QString process = u"/proc/%1/"_s.arg(childProcesses().value(0));
                const QByteArray status = readFile(process + u"status"_s);
                QVERIFY2(status.contains("NoNewPrivs:\t1") && status.contains("Seccomp:\t2"),
                         status.constData());
                // Three times the null device, and the socket; the document is mapped and closed.
                const QDir open(process + u"fd"_s);
                QCOMPARE(open.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot),
                         (QStringList{u"0"_s, u"1"_s, u"2"_s, u"3"_s}));
                QVERIFY(readFile(process + u"environ"_s).isEmpty());
            },
            {}));
    }

    void aKilledParserIsTriedOnceMore()
    {
        int calls = 0;
        const auto killOnce = [&](const PDFDocument &document) {
            if (++calls == 1)
                signalChildProcesses(SIGKILL);
            QCOMPARE(document.pageText(0).has_value(), calls == 2);
        };
        QVERIFY(m_reader->read(path(u"hello.pdf"_s), killOnce, {}));
        QCOMPARE(calls, 2);
        signalChildProcesses(SIGKILL); // while it has nothing to do
        QCOMPARE(read(u"hello.pdf"_s), QStringList{u"Hello"_s});
    }

    void whatKillsItsParserIsNotTriedAgain()
    {
        QCOMPARE(attempts(u"hello.pdf"_s, SIGKILL), 2);
        QCOMPARE(attempts(u"hello.pdf"_s, SIGKILL), 0);
        QCOMPARE(read(u"hello.pdf"_s), std::nullopt);
        writeFile(path(u"hello.pdf"_s), samplePDF({u"Hello again"_s}));
        QCOMPARE(read(u"hello.pdf"_s), QStringList{u"Hello again"_s});
        QCOMPARE(QDir(path(u"failed"_s)).entryList(QDir::Files).size(), 1);
    }

    void whatTakesTooLongIsEnded()
    {
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(attempts(u"hello.pdf"_s, SIGSTOP), 1);
        QVERIFY(std::chrono::milliseconds(timer.elapsed()) >= SandboxedPDFReader::kDeadline);
        QVERIFY(std::chrono::milliseconds(timer.elapsed()) < 2 * SandboxedPDFReader::kDeadline);
        QVERIFY(childProcesses().isEmpty());
        QCOMPARE(read(u"hello.pdf"_s), std::nullopt);
    }

    void endsWhenItIsToStop()
    {
        std::stop_source stop;
        const auto stopping = std::async(std::launch::async, [&] {
            QTest::qSleep(100);
            stop.request_stop();
        });
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(attempts(u"hello.pdf"_s, SIGSTOP, stop.get_token()), 1);
        QVERIFY(std::chrono::milliseconds(timer.elapsed()) < SandboxedPDFReader::kDeadline);
        QCOMPARE(read(u"hello.pdf"_s), QStringList{u"Hello"_s}); // nothing is held against it
    }

    void twoParsersServeManyThreads()
    {
        std::vector<std::future<bool>> reads;
        for (int i = 0; i < 8; ++i) {
            reads.push_back(std::async(std::launch::async, [this] {
                bool isRight = true;
                for (int round = 0; round < 25; ++round)
                    isRight = isRight && read(u"hello.pdf"_s) == QStringList{u"Hello"_s};
                return isRight && childProcesses().size() <= 2;
            }));
        }
        for (std::future<bool> &isRight : reads)
            QVERIFY(isRight.get());
        m_reader.reset();
        QVERIFY(childProcesses().isEmpty());
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstSandboxedPDFReader)
#include "tst_SandboxedPDFReader.moc"
