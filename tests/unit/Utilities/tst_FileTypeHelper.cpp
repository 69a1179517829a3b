// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/FilePath.h"
#include "Utilities/FileTypeHelper.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace dugwise;

class TstFileTypeHelper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void knowsExtensions_data()
    {
        QTest::addColumn<FileType>("type");
        QTest::addColumn<QString>("extensions");
        QTest::addColumn<QString>("look");
        const auto row = [](FileType type, const QString &look, const QString &extensions) {
            QTest::newRow(qPrintable(rawValue(type))) << type << extensions << look;
        };
        row(FileType::pdf, u"doc.richtext.fill red"_s, u"pdf"_s);
        row(FileType::text, u"doc.text.fill blue"_s, u"txt rtf log"_s);
        row(FileType::markdown, u"doc.plaintext.fill purple"_s, u"md markdown"_s);
        row(FileType::document, u"doc.fill blue"_s, u"doc docx pages"_s);
        row(FileType::image, u"photo.fill green"_s, u"jpg jpeg png gif heic tiff webp bmp svg"_s);
        row(FileType::spreadsheet, u"tablecells.fill green"_s, u"xls xlsx csv numbers"_s);
        row(FileType::presentation, u"rectangle.on.rectangle.fill orange"_s, u"ppt pptx key"_s);
        row(FileType::code,
            u"chevron.left.forwardslash.chevron.right teal"_s,
            u"swift py js ts html css json xml yaml yml rb go rs c cpp h m java kt sh zsh bash"_s);
        row(FileType::archive, u"archivebox.fill gray"_s, u"zip tar gz rar 7z dmg"_s);
        row(FileType::other, u"doc.fill gray"_s, u" exe tar.gz screenshot .pdf tif htm"_s);
    }
    void knowsExtensions()
    {
        QFETCH(const FileType, type);
        QFETCH(const QString, extensions);
        const bool isText =
            type == FileType::text || type == FileType::markdown || type == FileType::code;
        for (const QString &extension : extensions.split(u' ')) {
            const QString upper = extension.toUpper();
            QCOMPARE(FileTypeHelper::fileType(extension), type);
            QCOMPARE(FileTypeHelper::fileType(upper), type);
            QTEST(FileTypeHelper::sfSymbol(upper) + u' ' + FileTypeHelper::iconColor(upper),
                  "look");
            QCOMPARE(FileTypeHelper::isTextExtractable(extension), isText || extension == "csv"_L1);
            QVERIFY(!FileTypeHelper::isTextExtractable(upper));
        }
    }

    void takesPathsApart_data()
    {
        QTest::addColumn<QStringList>("parts");
        const auto row = [](const char *path, const QStringList &parts) {
            QTest::newRow(path) << parts;
        };
        row("/home/ada/Plan.v2.PDF", {u"/home/ada"_s, u"Plan.v2.PDF"_s, u"PDF"_s});
        row("/a.b/readme", {u"/a.b"_s, u"readme"_s, {}});
        row("/a/.bashrc", {u"/a"_s, u".bashrc"_s, {}});
        row("/a/.config.json", {u"/a"_s, u".config.json"_s, u"json"_s});
        row("/a/end.", {u"/a"_s, u"end."_s, {}});
        row("/top.txt", {u"/"_s, u"top.txt"_s, u"txt"_s});
        row("/", {u"/"_s, {}, {}});
    }
    void takesPathsApart()
    {
        using namespace FilePath;
        const QString path = QString::fromLatin1(QTest::currentDataTag());
        QTEST(QStringList({folder(path), name(path), fileExtension(path)}), "parts");
    }
};

QTEST_GUILESS_MAIN(TstFileTypeHelper)
#include "tst_FileTypeHelper.moc"
