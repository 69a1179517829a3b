// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QtQmlIntegration>

namespace dugwise {

/// What this program was built with and for.
class BuildFacts : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString text READ text CONSTANT)

public:
    /// Processor, compiler, and the Qt that it runs with.
    [[nodiscard]] static QString text();
};

} // namespace dugwise
