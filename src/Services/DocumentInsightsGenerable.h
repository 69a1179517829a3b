// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Generable.h"

namespace dugwise {

/// What a language model says about one document.
struct DocumentInsightsGenerable
{
    static constexpr QLatin1StringView kName{"DocumentInsightsGenerable"};
    static constexpr QLatin1StringView kDescription{"Insights extracted from a document"};

    QString summary;
    QStringList keyPoints;
    QString documentType;
    QStringList entities;

    [[nodiscard]] static constexpr auto properties()
    {
        using Self = DocumentInsightsGenerable;
        using Text = QLatin1StringView;
        return std::tuple(
            GeneratedProperty<Self, QString>{
                Text("summary"),
                Text("A 2-3 sentence summary of the document's content and purpose"),
                &Self::summary},
            GeneratedProperty<Self, QStringList>{Text("keyPoints"),
                                                 Text("Key points or takeaways from the document"),
                                                 &Self::keyPoints,
                                                 5},
            GeneratedProperty<Self, QString>{
                Text("documentType"),
                Text("The type of document such as contract, invoice, letter, report, notes, "
                     "resume"),
                &Self::documentType},
            GeneratedProperty<Self, QStringList>{
                Text("entities"),
                Text("Important entities mentioned like people, companies, dates, dollar amounts"),
                &Self::entities,
                8});
    }
};

} // namespace dugwise
