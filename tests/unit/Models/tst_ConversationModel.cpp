// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/BoldText.h"
#include "Models/ConversationModel.h"
#include "Platform/Platform.h"
#include "support/SampleFiles.h"
#include "support/SampleHome.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace dugwise::test {

class TstConversationModel : public QObject
{
    Q_OBJECT

private:
    static constexpr Instant kNow{800'000'000};

    struct Conversation
    {
        SampleHome home;
        std::unique_ptr<AppState> state;
        std::unique_ptr<ConversationModel> model;
        std::unique_ptr<QAbstractItemModelTester> tester;

        Conversation()
        {
            home.platform.clock = Clock(kNow);
            state = std::make_unique<AppState>(home.platform, AppServices(home.platform));
            model = std::make_unique<ConversationModel>(*state, home.platform.clock);
            tester = std::make_unique<QAbstractItemModelTester>(
                model.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        }
        void ask(const QString &request, const QList<IndexedFile> &files)
        {
            state->submitQuery(request, files);
            QTRY_VERIFY(!state->isSearching());
            qsizetype results = 0;
            for (const ChatMessage &message : state->messages())
                results += message.results.size();
            QTRY_COMPARE(kinds().count(u'R'), results);
        }
        [[nodiscard]] QVariant data(int row, int role) const
        {
            return model->index(row).data(role);
        }
        /// The kinds of all rows, a letter each.
        [[nodiscard]] QString kinds() const
        {
            QString letters;
            for (int row = 0; row < model->rowCount(); ++row) {
                const auto kind = data(row, ConversationModel::kindRole);
                letters += u"QARXs"_s[kind.toInt()];
            }
            return letters;
        }
    };

    static QList<IndexedFile> sampleFiles()
    {
        return {indexedFile({.path = u"/d/budget <b>.pdf"_s,
                             .modified = kNow - 2 * kDay,
                             .source = u"https://files.example.org/x"_s}),
                indexedFile({.path = u"/d/budget.txt"_s, .modified = kNow - 300 * kDay})};
    }

private Q_SLOTS:
    void aRowIsABubbleOrACard()
    {
        Conversation chat;
        QVERIFY(chat.model->isEmpty());
        QSignalSpy emptied(chat.model.get(), &ConversationModel::isEmptyChanged);
        chat.state->submitQuery(u"the budget"_s, sampleFiles());
        QCOMPARE(chat.kinds(), u"Qs"_s); // the search is under way
        QTRY_COMPARE(chat.kinds(), u"QARR"_s);
        QVERIFY(!chat.model->isEmpty());
        chat.ask(u"open #1"_s, {});
        QCOMPARE(chat.kinds(), u"QARRQA"_s);
        QCOMPARE(emptied.size(), 1);

        QCOMPARE(chat.data(0, ConversationModel::textRole), u"the budget"_s);
        const QString answer = chat.data(1, ConversationModel::textRole).toString();
        QVERIFY(!answer.isEmpty() && !answer.contains(u"**"_s));
        const int pdf = chat.data(2, ConversationModel::nameRole) == u"budget <b>.pdf"_s ? 2 : 3;
        QCOMPARE(chat.data(pdf, ConversationModel::numberRole), pdf - 1);
        QCOMPARE(chat.data(pdf, ConversationModel::typeNameRole), u"PDF"_s);
        QCOMPARE(chat.data(pdf, ConversationModel::colorNameRole), u"red"_s);
        QCOMPARE(chat.data(pdf, ConversationModel::dateRole), u"2 days ago"_s);
        QCOMPARE(chat.data(pdf, ConversationModel::folderRole), u"/d"_s);
        QCOMPARE(chat.data(pdf, ConversationModel::hostRole), u"files.example.org"_s);
        QCOMPARE(chat.data(5 - pdf, ConversationModel::hostRole), QString());
        QCOMPARE(chat.data(2, ConversationModel::isFirstRole), true);
        QCOMPARE(chat.data(3, ConversationModel::isFirstRole), false);
        QCOMPARE(chat.model->nextResult(-1, 1), 2);
        QCOMPARE(chat.model->nextResult(3, 1), -1);
        QCOMPARE(chat.model->nextResult(5, -1), 3);
        QVERIFY(!chat.model->result(1) && !chat.model->result(9) && !chat.model->result(-1));

        chat.state->clearChat();
        QCOMPARE(chat.kinds(), QString());
        QVERIFY(chat.model->isEmpty());
        chat.ask(u"the budget"_s, sampleFiles());
        QCOMPARE(chat.kinds(), u"QARR"_s);
    }

    void aLongMessageIsSeveralRows()
    {
        Conversation chat;
        QString request;
        while (request.size() < 20'000)
            request += u"a line **of** words\n"_s.repeated(40) + u"\U0001F5C2"_s.repeated(2'000);
        chat.ask(request, {});
        QString together;
        int row = 0;
        for (; chat.data(row, ConversationModel::kindRole)
               == chat.data(0, ConversationModel::kindRole);
             ++row) {
            const QString part = chat.data(row, ConversationModel::textRole).toString();
            QVERIFY(!part.isEmpty() && part.size() <= 3000);
            QVERIFY(!part.front().isLowSurrogate() && !part.back().isHighSurrogate());
            QCOMPARE(chat.data(row, ConversationModel::isFirstRole), row == 0);
            together += part;
        }
        QVERIFY(row > 7);
        QCOMPARE(chat.data(row - 1, ConversationModel::isLastRole), true);
        QCOMPARE(chat.data(row - 2, ConversationModel::isLastRole), false);
        QCOMPARE(together.remove(u'\n'), request.trimmed().remove(u'\n'));
    }

    void theRowsOfTheLatestMessageComeAFewAFrame()
    {
        QList<IndexedFile> files;
        for (int i = 0; i < 15; ++i)
            files.append(indexedFile({.path = u"/d/budget%1.pdf"_s.arg(i), .modified = kNow}));
        Conversation chat;
        qsizetype most = 0;
        connect(chat.model.get(),
                &QAbstractItemModel::rowsInserted,
                [&](const QModelIndex & /*parent*/, int first, int last) {
                    most = std::max<qsizetype>(most, last - first + 1);
                });
        chat.ask(u"the budget"_s, files);
        QCOMPARE(chat.kinds(), u"QA"_s + u"R"_s.repeated(15));
        QVERIFY2(most <= 3, QByteArray::number(most));

        chat.state->submitQuery(u"the budget"_s, files);
        QTRY_COMPARE(chat.kinds().mid(17, 3), u"QAR"_s);
        chat.state->submitQuery(u"open #1"_s, {});
        QVERIFY(chat.kinds().startsWith(u"QA"_s + u"R"_s.repeated(15) + u"QA"_s
                                        + u"R"_s.repeated(15) + u"Q"_s));

        chat.state->clearChat();
        chat.state->submitQuery(u"the budget"_s, files);
        QTRY_COMPARE(chat.state->messages().size(), 2);
        chat.state->clearChat();
        QTest::qWait(50);
        QCOMPARE(chat.kinds().remove(u's'), QString());
    }

    void whatTurnsTextAroundIsShown()
    {
        Conversation chat;
        chat.ask(u"a\u202Efdp.txt\tb"_s, {});
        QCOMPARE(chat.data(0, ConversationModel::textRole), u"a\uFFFDfdp.txt    b"_s);
    }

    void clearingWhileASearchRuns()
    {
        Conversation chat;
        chat.state->submitQuery(u"the budget"_s, sampleFiles());
        chat.state->clearChat();
        QCOMPARE(chat.kinds(), u"s"_s);
        QTRY_COMPARE(chat.kinds(), u"ARR"_s);
    }

    void aSelectionMarksItsCardsAlone()
    {
        Conversation chat;
        chat.ask(u"the budget"_s, sampleFiles());
        QSignalSpy changed(chat.model.get(), &QAbstractItemModel::dataChanged);
        chat.state->setSelectedResult(chat.model->result(3));
        QCOMPARE(changed.size(), 1);
        QCOMPARE(chat.data(3, ConversationModel::isSelectedRole), true);
        QCOMPARE(chat.data(2, ConversationModel::isSelectedRole), false);
        chat.state->setSelectedResult(chat.model->result(2));
        QCOMPARE(changed.size(), 3);
        QCOMPARE(chat.data(3, ConversationModel::isSelectedRole), false);
    }

    void boldTypeIsAllTheMarkupThereIs_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("html");
        const auto row = [](const char *text, const char *html) {
            QTest::newRow(text) << QString::fromUtf8(text) << QString::fromUtf8(html);
        };
        row("plain", "plain");
        row("a **b** c **d**", "a <b>b</b> c <b>d</b>");
        row("**a\nb**\n- c", "<b>a<br>b</b><br>- c");
        row("a ** b", "a ** b");
        row("**a** b **c", "<b>a</b> b **c");
        row("****", "****");
        row("<img src=x> & **<b>**", "&lt;img src=x&gt; &amp; <b>&lt;b&gt;</b>");
        row("# a\n1. b *c* `d` [e](f)", "# a<br>1. b *c* `d` [e](f)");
    }
    void boldTypeIsAllTheMarkupThereIs()
    {
        QFETCH(QString, text);
        QFETCH(QString, html);
        QCOMPARE(boldTextToHtml(text),
                 u"<span style=\"white-space: pre-wrap\">"_s + html + u"</span>"_s);
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstConversationModel)
#include "tst_ConversationModel.moc"
