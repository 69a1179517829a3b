// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/Turnstile.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace dugwise;

namespace {

/// Somebody who goes through, writes down when, and stays until let go.
class Visitor
{
public:
    Visitor(Turnstile *turnstile, QStringList *log, const QString &name)
    {
        m_stay.start();
        visit(turnstile, log, name, m_stay.future());
    }
    void letGo() { m_stay.finish(); }

private:
    static QCoro::Task<>
    visit(Turnstile *turnstile, QStringList *log, QString name, QFuture<void> stay)
    {
        const auto pass = co_await turnstile->enter();
        log->append(u"in "_s + name);
        co_await stay;
        log->append(u"out "_s + name);
    }

    QPromise<void> m_stay;
};

} // namespace

class TstTurnstile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_turnstile = std::make_unique<Turnstile>();
        m_log.clear();
    }

    void letsThroughInOrder()
    {
        Visitor a(m_turnstile.get(), &m_log, u"a"_s);
        Visitor b(m_turnstile.get(), &m_log, u"b"_s);
        Visitor c(m_turnstile.get(), &m_log, u"c"_s);
        c.letGo();
        QCoreApplication::processEvents();
        QCOMPARE(log(), u"in a"_s);
        a.letGo();
        QTRY_COMPARE(log(), u"in a, out a, in b"_s);
        b.letGo();
        QTRY_COMPARE(log(), u"in a, out a, in b, out b, in c, out c"_s);
        QVERIFY(QCoro::waitFor(m_turnstile->enter()));
    }

    void nobodyOvertakes()
    {
        auto pass = QCoro::waitFor(m_turnstile->enter());
        auto copy = pass;
        Visitor b(m_turnstile.get(), &m_log, u"b"_s);
        pass.reset();
        QCoreApplication::processEvents();
        QCOMPARE(log(), QString());
        copy.reset();
        // The turn is b's now, who has not woken up yet.
        Visitor c(m_turnstile.get(), &m_log, u"c"_s);
        QCOMPARE(log(), QString());
        QTRY_COMPARE(log(), u"in b"_s);
        b.letGo();
        c.letGo();
        QTRY_COMPARE(log(), u"in b, out b, in c, out c"_s);
    }

    void servesThoseWhoWaitedWhenItIsGone()
    {
        Visitor a(m_turnstile.get(), &m_log, u"a"_s);
        Visitor b(m_turnstile.get(), &m_log, u"b"_s);
        Visitor c(m_turnstile.get(), &m_log, u"c"_s);
        m_turnstile.reset();
        a.letGo();
        b.letGo();
        c.letGo();
        QTRY_COMPARE(log(), u"in a, out a, in b, out b, in c, out c"_s);
    }

    void skipsThoseWhoNoLongerWait()
    {
        Visitor a(m_turnstile.get(), &m_log, u"a"_s);
        {
            const auto dropped = m_turnstile->enter();
        }
        Visitor b(m_turnstile.get(), &m_log, u"b"_s);
        a.letGo();
        b.letGo();
        QTRY_COMPARE(log(), u"in a, out a, in b, out b"_s);
    }

private:
    [[nodiscard]] QString log() const { return m_log.join(u", "); }

    std::unique_ptr<Turnstile> m_turnstile;
    QStringList m_log;
};

QTEST_GUILESS_MAIN(TstTurnstile)
#include "tst_Turnstile.moc"
