// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/FilePreviewService.h"
#include "support/Fakes.h"
#include "support/SampleFiles.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

namespace {

constexpr std::size_t kLength = 3000;
const QString kMarker = u"\n\n[Truncated...]"_s;

} // namespace

class TstFilePreviewService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsText_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<std::optional<QString>>("expected");
        const auto row = [](const char *name, const QByteArray &content, auto... expected) {
            QTest::newRow(name) << content << std::optional<QString>(expected...);
        };
        const QString accents(3000, u'ä');
        row("empty", "", u""_s);
        row("as long as may be", accents.toUtf8(), accents);
        row("longer", accents.toUtf8() + 'x', accents + kMarker);
        row("not UTF-8", "caf\xe9");
        row("not UTF-8 far behind", QByteArray(9000, 'x') + '\xff');
    }
    void readsText()
    {
        QFETCH(QByteArray, content);
        const QString path = m_folder.filePath(u"Some.TXT"_s);
        writeFile(path, content);
        QTEST(FilePreviewService(nullptr).extractPreviewText(file(path), kLength), "expected");
    }

    void readsPDFDocuments_data()
    {
        QTest::addColumn<std::optional<FakePages>>("pages");
        QTest::addColumn<std::optional<QString>>("expected");
        const auto row = [](const char *name, std::optional<FakePages> pages, auto... expected) {
            QTest::newRow(name) << pages << std::optional<QString>(expected...);
        };
        QString twenty;
        for (int page = 1; page <= 20; ++page)
            twenty += u"--- Page %1 ---\nshort\n\n"_s.arg(page);
        const QString heading = u"--- Page 1 ---\n"_s;
        const QString full(3000 - heading.size() - 2, u'ö');
        row("one page", FakePages{u"Hello"_s}, u"--- Page 1 ---\nHello\n\n"_s);
        row("forty", FakePages(40, u"short"_s), twenty);
        row("as long as may be", FakePages{full}, heading + full + u"\n\n"_s);
        row("cut behind that", FakePages{full, u"y"_s}, heading + full + u"\n\n"_s + kMarker);
        row("longer", FakePages{full + u'z'}, heading + full + u"z\n"_s + kMarker);
        row("partly scanned",
            FakePages{std::nullopt, u"a"_s, std::nullopt},
            u"--- Page 2 ---\na\n\n"_s);
        row("scanned", FakePages(3, std::nullopt), u"No extractable text in PDF."_s);
        row("without pages", FakePages(), u"No extractable text in PDF."_s);
        row("cannot be opened", std::nullopt);
    }
    void readsPDFDocuments()
    {
        QFETCH(std::optional<FakePages>, pages);
        FakePDFDocumentReader reader;
        if (pages)
            reader.documents.insert(u"/x/some.Pdf"_s, *pages);
        const IndexedFile document = file(u"/x/some.Pdf"_s);
        QTEST(FilePreviewService(&reader).extractPreviewText(document, kLength), "expected");
        QCOMPARE(FilePreviewService(nullptr).extractPreviewText(document, kLength), std::nullopt);
    }

    void describesImages()
    {
        const IndexedFile image({.name = u"shot %1.png"_s,
                                 .path = u"/home/me/F/shot %1.png"_s,
                                 .fileExtension = u"png"_s,
                                 .size = 2'100'000,
                                 .folderPath = u"/home/me/F"_s});
        QCOMPARE(FilePreviewService(nullptr).extractPreviewText(image, 10),
                 u"Image File: shot %1.png\nType: PNG\nSize: 2.1 MB\nLocation: /home/me/F"_s);
    }

    void knowsWhatHasText()
    {
        for (const QString &name : {u"a.TXT"_s, u"a.csv"_s, u"a.PDF"_s, u"a.jpeg"_s})
            QVERIFY2(FilePreviewService::canPreview(file(u"/x/"_s + name)), qPrintable(name));
        for (const QString &name : {u"a.docx"_s, u"a.mp3"_s, u"txt"_s, u"a.pdf.zip"_s}) {
            QVERIFY2(!FilePreviewService::canPreview(file(u"/x/"_s + name)), qPrintable(name));
            const QString path = m_folder.filePath(name);
            writeFile(path, "text");
            QCOMPARE(FilePreviewService(nullptr).extractPreviewText(file(path), kLength),
                     std::nullopt);
        }
    }

private:
    static IndexedFile file(const QString &path) { return indexedFile({.path = path}); }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(TstFilePreviewService)
#include "tst_FilePreviewService.moc"
