// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/ChatCommands.h"
#include "support/SampleFiles.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace dugwise::test {

class TstChatCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void requestsAreCommands_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("results");
        QTest::addColumn<int>("selected");    // below 0: none
        QTest::addColumn<QString>("command"); // o 1: opens the first; i 2: tells of the second
        const auto row = [](const char *text, int results, int selected, const char *command) {
            QTest::addRow("%s (%d, %d)", text, results, selected)
                << QString::fromUtf8(text) << results << selected << QString::fromUtf8(command);
        };
        row("Open #2", 3, -1, "o 2");
        row("OPEN #2", 3, -1, "o 2");
        row("open #12", 3, -1, "o 1");
        row("open #5", 3, -1, "o 1");
        row("open #5", 3, 1, "o 2");
        row("open #5", 6, -1, "o 5");
        row("open #6", 6, -1, "o 1");
        row("launch the last one", 4, -1, "o 4");
        row("open the last result", 7, 2, "o 7");
        row("open the second one, not the first", 3, -1, "o 1");
        row("open the fifth or the 2nd", 3, -1, "o 2");
        row("open that number three", 3, -1, "o 3");
        row("open the number four", 4, -1, "o 1");
        row("open it", 3, 2, "o 3");
        row("please open that", 3, -1, "o 1");
        row("open", 3, -1, "");
        row("open my notes", 3, -1, "");
        row("tell me about #3", 2, -1, "i 1");
        row("tell me about #3", 3, 0, "i 3");
        row("what is the weather", 2, 1, "i 2");
        row("what is the weather", 0, -1, "");
        row("open #1", 0, 0, "");
        row("What's in the 4th", 5, -1, "i 4");
        row("\u0130nsights", 1, -1, ""); // a dotted capital is no plain i
        row("describe and open the first", 2, -1, "o 1");
        row("summarize", 1, -1, "i 1");
        row("budget from last week", 3, -1, "");
    }
    void requestsAreCommands()
    {
        QFETCH(QString, text);
        QFETCH(int, results);
        QFETCH(int, selected);
        QFETCH(QString, command);
        ChatCommands::Earlier earlier;
        QList<SearchResult> all;
        for (int i = 1; i <= std::max(results, selected + 1); ++i)
            all.append({QUuid::createUuid(), indexedFile({.path = u"/%1"_s.arg(i)}), 1, {}, {}});
        earlier.lastResults = all.first(results);
        if (selected >= 0)
            earlier.selectedResult = all[selected];
        const std::optional<ChatAction> action = ChatCommands::detectAction(text, earlier);
        QString found;
        if (action) {
            const bool opens = action->kind == ChatAction::Kind::openFile;
            found = (opens ? u"o "_s : u"i "_s) + action->target.file->name;
        }
        QCOMPARE(found, command);
    }

    void insightsAreWrittenInAllSections()
    {
        QCOMPARE(
            ChatCommands::insightsText(u"%1.txt"_s,
                                       {.fileName = u"other"_s,
                                        .summary = u"It binds."_s,
                                        .keyPoints = {u"one"_s, u"two"_s},
                                        .documentType = u"lease"_s,
                                        .entities = {u"Acme"_s, u"$5"_s}}),
            u"Here's what I found in **%1.txt**:\n\n**lease**\n\nIt binds.\n\n**Key Points:**\n"
            "- one\n- two\n\n**Key Entities:** Acme, $5"_s);
        QCOMPARE(ChatCommands::insightsText(u"a"_s, {}),
                 u"Here's what I found in **a**:\n\n****\n\n\n\n**Key Points:**\n\n\n"
                 "**Key Entities:** "_s);
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstChatCommands)
#include "tst_ChatCommands.moc"
