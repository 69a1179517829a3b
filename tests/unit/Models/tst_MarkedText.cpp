// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/MarkedText.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace dugwise::test {

class TstMarkedText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void marksAreAllTheMarkupThereIs_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<QString>("html");
        const auto row = [](const char *text, const QStringList &words, const char *html) {
            QTest::newRow(text) << QString::fromUtf8(text) << words << QString::fromUtf8(html);
        };
        row("nothing", {}, "nothing");
        row("the budget", {u"budget"_s}, "the <b>budget</b>");
        row("Budgets of 2026_budget", {u"budget"_s}, "<b>Budget</b>s of 2026_<b>budget</b>");
        row("start art artist", {u"art"_s}, "start <b>art</b> <b>art</b>ist");
        row("budgets", {u"bud"_s, u"budget"_s, u"b"_s}, "<b>budget</b>s");
        row("lease lease\nlease", {u"lease"_s}, "<b>lease</b> <b>lease</b><br><b>lease</b>");
        row("<b>lease</b> & <img src=x>",
            {u"lease"_s, u"img"_s, u"b"_s},
            "&lt;<b>b</b>&gt;<b>lease</b>&lt;/<b>b</b>&gt; &amp; &lt;<b>img</b> src=x&gt;");
        row("a&lt;b lt", {u"lt"_s}, "a&amp;<b>lt</b>;b <b>lt</b>");
        row("Über die übergabe", {u"über"_s}, "<b>Über</b> die <b>über</b>gabe");
        row("e\u0301tude tude", {u"tude"_s}, "e\u0301tude <b>tude</b>");
        row("\U0001D400art art", {u"art"_s}, "\U0001D400art <b>art</b>");
        row("art", {u"artist"_s, QString()}, "art");
    }
    void marksAreAllTheMarkupThereIs()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, words);
        QFETCH(QString, html);
        QCOMPARE(markedTextToHtml(text, words),
                 u"<span style=\"white-space: pre-wrap\">"_s + html + u"</span>"_s);
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstMarkedText)
#include "tst_MarkedText.moc"
