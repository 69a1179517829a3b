// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/MetadataQuery.h"
#include "Services/MailSearchService.h"

#include <QCoroFuture>
#include <QCoroTask>
#include <QPromise>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace dugwise;

namespace {

/// Finds what a test puts in, at once or never.
class FakeMetadataQuery final : public MetadataQuery
{
public:
    QList<MailItem> items;
    bool isSilent = false;
    QList<MailPredicate> predicates;
    int most = 0;

    void prepare() override {}
    QCoro::Task<QList<MailItem>> gather(MailPredicate predicate, int mostItems) override
    {
        predicates.append(predicate);
        most = mostItems;
        if (isSilent) {
            m_never.start();
            const QFuture<void> never = m_never.future();
            co_await never;
        }
        co_return items;
    }
    bool hasStores() const override { return true; }
    QString description() const override { return {}; }

private:
    QPromise<void> m_never;
};

using DateRange = DateIntentParser::DateRange;

} // namespace

class TstMailSearchService : public QObject
{
    Q_OBJECT

private:
    FakeMetadataQuery m_query;
    MailSearchService m_service{&m_query, Clock(Instant{5000})};

    QList<MailSearchResult> search(const QString &query,
                                   const std::optional<QString> &sender = {},
                                   const std::optional<DateRange> &range = {})
    {
        return QCoro::waitFor(m_service.searchMail(query, sender, range));
    }

private Q_SLOTS:
    void init()
    {
        m_query.items.clear();
        m_query.predicates.clear();
    }

    void makesPredicates_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<std::optional<QString>>("text");
        const auto row = [](const QString &query, const std::optional<QString> &text) {
            QTest::newRow(qPrintable(u'"' + query + u'"')) << query << text;
        };
        row(u"budget review"_s, u"budget review"_s);
        row(u"to do it"_s, std::nullopt);
        row(u"to do  the  "_s, u"to do  the  "_s); // as it stands
        row(u"abc"_s, u"abc"_s);
        row(u"ab\tc"_s, u"ab\tc"_s); // blanks alone part pieces
        row(u""_s, std::nullopt);
        row(u"    "_s, std::nullopt);
        row(u"e\u0301e\u0301"_s, std::nullopt); // two characters of four code points
        row(u"👩🏽\u200d🚒👩🏽\u200d🚒"_s, std::nullopt);
        row(u"日本語"_s, u"日本語"_s);
        row(u"*%\"_' OR"_s, u"*%\"_' OR"_s);
    }
    void makesPredicates()
    {
        QFETCH(QString, query);
        search(query);
        QCOMPARE(m_query.predicates.size(), 1);
        QTEST(m_query.predicates[0].textOrSubject, "text");
        QVERIFY(!m_query.predicates[0].authorEmailAddress);
        QVERIFY(!m_query.predicates[0].contentCreationDate);
        QCOMPARE(m_query.most, 20);
        const DateRange range{Instant{1}, Instant{2}};
        search(query, u"sarah@acme.example"_s, range);
        QCOMPARE(m_query.predicates[1].authorEmailAddress, u"sarah@acme.example"_s);
        QCOMPARE(m_query.predicates[1].contentCreationDate, std::optional(range));
    }

    void makesRecords()
    {
        const QString character = u"👩🏽\u200d🚒"_s;
        m_query.items = {
            {.subject = u"Budget"_s,
             .authors = {u"Sarah Chen"_s, u"Idris"_s},
             .contentCreationDate = Instant{100},
             .path = u"/mail/1"_s,
             .textContent = character.repeated(300)},
            {},
        };
        const QList<MailSearchResult> results = search(u"budget"_s);
        QCOMPARE(results.size(), 2);
        // The one without a date is of now.
        QCOMPARE(results[0].subject, u"No Subject"_s);
        QCOMPARE(results[0].sender, u"Unknown Sender"_s);
        QCOMPARE(results[0].date, Instant{5000});
        QVERIFY(results[0].snippet.isEmpty() && results[0].path.isEmpty());
        MailSearchResult expected{.id = results[1].id,
                                  .subject = u"Budget"_s,
                                  .sender = u"Sarah Chen"_s,
                                  .date = Instant{100},
                                  .snippet = character.repeated(250),
                                  .path = u"/mail/1"_s};
        QCOMPARE(results[1], expected);
        QCOMPARE(qHash(results[1]), qHash(expected));
        QVERIFY(!results[0].id.isNull() && results[0].id != results[1].id);
        expected.hasAttachments = true;
        QVERIFY(results[1] != expected);
    }

    void sortsTheFirstTwenty()
    {
        for (int i = 0; i < 30; ++i)
            m_query.items.append({.subject = QString::number(i),
                                  .contentCreationDate = Instant{static_cast<double>(i / 2)}});
        const QList<MailSearchResult> results = search(u"any"_s);
        QCOMPARE(results.size(), 20);
        QStringList subjects;
        for (const MailSearchResult &result : results)
            subjects.append(result.subject);
        // Newest first; those of one date as they came.
        QCOMPARE(subjects.first(4), (QStringList{u"18"_s, u"19"_s, u"16"_s, u"17"_s}));
        QCOMPARE(subjects.last(), u"1"_s);
    }

    void doesNotWaitForEver()
    {
        m_query.isSilent = true;
        QCOMPARE(search(u"budget"_s).size(), 0); // else for ever
    }

    void livesWithoutMail()
    {
        MailSearchService none;
        auto searching = none.searchMail(u"budget"_s, {}, {});
        QCOMPARE(QCoro::waitFor(searching).size(), 0);
    }
};

QTEST_GUILESS_MAIN(TstMailSearchService)
#include "tst_MailSearchService.moc"
