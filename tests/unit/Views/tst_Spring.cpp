// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Spring.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <numbers>

using namespace dugwise;

class TstSpring : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// Against the equation itself, integrated in small steps.
    void followsTheEquation_data()
    {
        QTest::addColumn<double>("response");
        QTest::addColumn<double>("dampingFraction");
        QTest::newRow("cards") << 0.5 << 0.7;
        QTest::newRow("bubbles") << 0.4 << 0.8;
        QTest::newRow("logo") << 0.8 << 0.6;
        QTest::newRow("undamped") << 1.0 << 0.0;
        QTest::newRow("critical") << 0.5 << 1.0;
        QTest::newRow("just below critical") << 0.5 << 1 - 1e-13;
        QTest::newRow("just above critical") << 0.5 << 1 + 1e-13;
        QTest::newRow("overdamped") << 0.5 << 3.0;
        QTest::newRow("far overdamped") << 0.5 << 40.0;
    }
    void followsTheEquation()
    {
        QFETCH(const double, response);
        QFETCH(const double, dampingFraction);
        const double frequency = 2 * std::numbers::pi / response;
        constexpr double interval = 1e-5;
        double position = 0;
        double velocity = 0;
        const auto force = [&](double at, double speed) {
            return frequency * frequency * (1 - at) - 2 * dampingFraction * frequency * speed;
        };
        double worst = 0;
        QCOMPARE(springPosition(response, dampingFraction, 0), 0.0);
        for (int i = 1; i <= 200'000; ++i) {
            const double halfway = velocity + interval / 2 * force(position, velocity);
            const double middle = position + interval / 2 * velocity;
            position += interval * halfway;
            velocity += interval * force(middle, halfway);
            const double exact = springPosition(response, dampingFraction, i * interval);
            worst = std::max(worst, std::abs(exact - position));
        }
        QVERIFY2(worst < 1e-6, qPrintable(QString::number(worst)));
    }

    void settlesOnce()
    {
        for (const double damping : {0.3, 0.6, 1.0, 3.0}) {
            bool isSettled = false;
            for (int i = 0; i < 1000; ++i) {
                const bool isNow = springIsSettled(0.5, damping, i * 0.01);
                QVERIFY(isNow || !isSettled);
                isSettled = isNow;
                if (isSettled)
                    QVERIFY(std::abs(springPosition(0.5, damping, i * 0.01) - 1) < 0.001);
            }
            QVERIFY(isSettled);
        }
        QVERIFY(!springIsSettled(0.8, 0.6, 0.5));
    }

    void oddValues()
    {
        QCOMPARE(springPosition(0, 0.6, 0), 1.0);
        QVERIFY(springIsSettled(0, 0.6, 0));
        QCOMPARE(springPosition(0.8, 0.6, -1), 0.0); // a delay that is not over
        QVERIFY(!springIsSettled(0.8, 0.6, -1));
        QCOMPARE(springPosition(0.5, 3, 1e6), 1.0);
    }
};

QTEST_GUILESS_MAIN(TstSpring)
#include "tst_Spring.moc"
