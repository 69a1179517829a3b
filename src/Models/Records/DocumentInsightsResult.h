// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace dugwise {

/// What the language model says about one document.
struct DocumentInsightsResult
{
    QString fileName;
    QString summary;
    QStringList keyPoints;
    QString documentType; ///< in words, for example an invoice
    QStringList entities; ///< names, organisations, dates and amounts

    bool operator==(const DocumentInsightsResult &) const = default;
};

} // namespace dugwise
