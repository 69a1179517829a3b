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
    void knowsExtensions()
    {
        using namespace FileTypeHelper;
        // Kind, symbol and colour; the extensions; and a mark where they hold plain text.
        const QString table = uR"(
pdf doc.richtext.fill red|pdf
text doc.text.fill blue|txt rtf log|text
markdown doc.plaintext.fill purple|md markdown|text
document doc.fill blue|doc docx pages
image photo.fill green|jpg jpeg png gif heic tiff webp bmp svg
spreadsheet tablecells.fill green|xls xlsx numbers
spreadsheet tablecells.fill green|csv|text
presentation rectangle.on.rectangle.fill orange|ppt pptx key
code chevron.left.forwardslash.chevron.right teal|swift py js ts html css json xml yaml yml rb|text
code chevron.left.forwardslash.chevron.right teal|go rs c cpp h m java kt sh zsh bash|text
archive archivebox.fill gray|zip tar gz rar 7z dmg
other doc.fill gray| exe tar.gz screenshot .pdf tif htm
)"_s;
        for (const QString &line : table.split(u'\n', Qt::SkipEmptyParts)) {
            const QStringList cells = line.split(u'|');
            for (const QString &lower : cells[1].split(u' ')) {
                const QString upper = lower.toUpper();
                const QString look = sfSymbol(upper) + u' ' + iconColor(upper);
                QCOMPARE(rawValue(fileType(lower)) + u' ' + look, cells[0]);
                QVERIFY2(isTextExtractable(lower) == (cells.size() == 3), qPrintable(lower));
                QVERIFY2(!isTextExtractable(upper), qPrintable(upper));
            }
        }
    }

    void takesPathsApart()
    {
        using namespace FilePath;
        const QString table = u"/home/ada/Plan.v2.PDF|/home/ada|Plan.v2.PDF|PDF\n"
                              "/a.b/readme|/a.b|readme|\n/a/.bashrc|/a|.bashrc|\n"
                              "/a/.config.json|/a|.config.json|json\n/a/end.|/a|end.|\n"
                              "/top.txt|/|top.txt|txt\n/|/||"_s;
        for (const QString &line : table.split(u'\n')) {
            const QString path = line.section(u'|', 0, 0);
            QCOMPARE(QStringList({path, folder(path), name(path), fileExtension(path)}).join(u'|'),
                     line);
        }
    }
};

QTEST_GUILESS_MAIN(TstFileTypeHelper)
#include "tst_FileTypeHelper.moc"
