// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/PreviewFacts.h"
#include "Utilities/Formatters.h"
#include "support/SampleFiles.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace dugwise::test {

class TstPreviewFacts : public QObject
{
    Q_OBJECT

private:
    static constexpr Instant kNow{800'000'000};

    static QStringList labels(const FileFacts &file)
    {
        QStringList labels;
        for (const PreviewFact &fact : previewFacts(indexedFile(file)))
            labels.append(fact.label);
        return labels;
    }

private Q_SLOTS:
    void everyFileHasFive()
    {
        const IndexedFile file({.name = u"lease.Pdf"_s,
                                .path = u"/home/me/a\nb/lease.Pdf"_s,
                                .fileExtension = u"Pdf"_s,
                                .size = 2'100'000,
                                .createdDate = kNow - kDay,
                                .modifiedDate = kNow,
                                .folderPath = u"/home/me/a\nb"_s});
        const QList<PreviewFact> expected{
            {u"folder"_s, u"Path"_s, u"/home/me/a\uFFFDb"_s},
            {u"doc"_s, u"Extension"_s, u"PDF"_s},
            {u"internaldrive"_s, u"Size"_s, u"2.1 MB"_s},
            {u"calendar"_s, u"Modified"_s, dateAndTime(kNow)},
            {u"calendar.badge.plus"_s, u"Created"_s, dateAndTime(kNow - kDay)},
        };
        QCOMPARE(previewFacts(file), expected);
        QVERIFY(dateAndTime(kNow) != dateAndTime(kNow - kDay));
    }

    void othersAreToldWhereThereAreAny()
    {
        const IndexedFile file = indexedFile({.path = u"/d/lease.pdf"_s,
                                              .lastUsed = kNow,
                                              .downloaded = kNow - kDay,
                                              .source = u"https://files.example.org/x?y"_s});
        const QList<PreviewFact> expected{
            {u"clock.arrow.circlepath"_s, u"Last Used"_s, dateAndTime(kNow)},
            {u"arrow.down.circle"_s, u"Downloaded"_s, dateAndTime(kNow - kDay)},
            {u"globe"_s, u"Source"_s, u"files.example.org"_s},
        };
        QCOMPARE(previewFacts(file).sliced(5), expected);

        QCOMPARE(labels({.path = u"/d/a"_s}).size(), 5);
        QCOMPARE(labels({.path = u"/d/a"_s, .downloaded = kNow}).last(), u"Downloaded"_s);
        for (const QString &source :
             {u"a friend"_s, u"file:///tmp/x"_s, u"mailto:a@b.org"_s, u""_s})
            QCOMPARE(labels({.path = u"/d/a"_s, .source = source}).size(), 5);
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstPreviewFacts)
#include "tst_PreviewFacts.moc"
