// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/Turnstile.h"

#include <QTest>

#include <map>

using namespace Qt::StringLiterals;
using namespace dugwise;

class TstTurnstile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_turnstile = std::make_unique<Turnstile>();
        m_stays.clear();
        m_log.clear();
    }

    void letsThroughInOrder()
    {
        send(u"abc"_s);
        letGo(u"c"_s);
        QCoreApplication::processEvents();
        QCOMPARE(m_log, u"+a"_s);
        letGo(u"a"_s);
        QTRY_COMPARE(m_log, u"+a-a+b"_s);
        letGo(u"b"_s);
        QTRY_COMPARE(m_log, u"+a-a+b-b+c-c"_s);
        QVERIFY(QCoro::waitFor(m_turnstile->enter()));
    }

    void nobodyOvertakes()
    {
        auto pass = QCoro::waitFor(m_turnstile->enter());
        auto copy = pass;
        send(u"b"_s);
        pass.reset();
        QCoreApplication::processEvents();
        QCOMPARE(m_log, QString());
        copy.reset();
        // The turn is b's now, who has not woken up yet.
        send(u"c"_s);
        QCOMPARE(m_log, QString());
        QTRY_COMPARE(m_log, u"+b"_s);
        letGo(u"bc"_s);
        QTRY_COMPARE(m_log, u"+b-b+c-c"_s);
    }

    void servesThoseWhoStillWaitWhenItIsGone()
    {
        send(u"a"_s);
        (void)m_turnstile->enter();
        send(u"bc"_s);
        m_turnstile.reset();
        letGo(u"abc"_s);
        QTRY_COMPARE(m_log, u"+a-a+b-b+c-c"_s);
    }

private:
    /// Everybody goes through, writes down when, and stays until let go.
    void send(const QString &names)
    {
        for (const QChar name : names)
            visit(name);
    }
    void letGo(const QString &names)
    {
        for (const QChar name : names)
            m_stays[name].finish();
    }
    QCoro::Task<> visit(QChar name)
    {
        m_stays[name].start();
        const auto pass = co_await m_turnstile->enter();
        m_log.append(u'+').append(name);
        const QFuture<void> stay = m_stays[name].future();
        co_await stay;
        m_log.append(u'-').append(name);
    }

    std::unique_ptr<Turnstile> m_turnstile;
    std::map<QChar, QPromise<void>> m_stays;
    QString m_log;
};

QTEST_GUILESS_MAIN(TstTurnstile)
#include "tst_Turnstile.moc"
