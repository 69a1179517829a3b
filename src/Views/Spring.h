// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QtQmlIntegration>

namespace dugwise {

/// Where a damped spring is on its way from 0 (at rest, at 0 seconds) to 1.
///
/// `response` is the period of its swing without damping, in seconds; `dampingFraction` is 1 when
/// it just does not swing beyond 1, more when it crawls, less when it swings. A response of 0 or
/// less is a spring without a way: it is at 1.
[[nodiscard]] double springPosition(double response, double dampingFraction, double seconds);

/// Whether it stays within a thousandth of 1 from now on.
[[nodiscard]] bool springIsSettled(double response, double dampingFraction, double seconds);

/// The same for QML.
class Spring : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    [[nodiscard]] Q_INVOKABLE double
    position(double response, double dampingFraction, double seconds) const
    {
        return springPosition(response, dampingFraction, seconds);
    }
    [[nodiscard]] Q_INVOKABLE bool
    isSettled(double response, double dampingFraction, double seconds) const
    {
        return springIsSettled(response, dampingFraction, seconds);
    }
};

} // namespace dugwise
