// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/ChatCommands.h"

#include "Utilities/Text.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace dugwise::ChatCommands {

namespace {

constexpr std::array kOpenPhrases{
    "open it"_L1, "open that"_L1, "open the"_L1, "open file"_L1, "open #"_L1, "launch"_L1};

constexpr std::array kInsightPhrases{
    "tell me about"_L1,
    "what's in"_L1,
    "summarize"_L1,
    "summary of"_L1,
    "what does it say"_L1,
    "insights"_L1,
    "describe"_L1,
    "what is"_L1,
    "read me"_L1,
    "give me details"_L1,
    "analyze"_L1,
    "break down"_L1,
};

struct Reference
{
    QLatin1StringView phrase;
    qsizetype position = 0; ///< counted from 0
};

constexpr qsizetype kLast = -1;

constexpr std::array kReferences{
    Reference{"first"_L1, 0},
    Reference{"1st"_L1, 0},
    Reference{"#1"_L1, 0},
    Reference{"number 1"_L1, 0},
    Reference{"number one"_L1, 0},
    Reference{"second"_L1, 1},
    Reference{"2nd"_L1, 1},
    Reference{"#2"_L1, 1},
    Reference{"number 2"_L1, 1},
    Reference{"number two"_L1, 1},
    Reference{"third"_L1, 2},
    Reference{"3rd"_L1, 2},
    Reference{"#3"_L1, 2},
    Reference{"number 3"_L1, 2},
    Reference{"number three"_L1, 2},
    Reference{"fourth"_L1, 3},
    Reference{"4th"_L1, 3},
    Reference{"#4"_L1, 3},
    Reference{"number 4"_L1, 3},
    Reference{"fifth"_L1, 4},
    Reference{"5th"_L1, 4},
    Reference{"#5"_L1, 4},
    Reference{"number 5"_L1, 4},
    Reference{"last one"_L1, kLast},
    Reference{"last result"_L1, kLast},
};

template <std::size_t N>
bool containsAny(const QString &text, const std::array<QLatin1StringView, N> &phrases)
{
    return std::ranges::any_of(phrases, [&](QLatin1StringView p) { return text.contains(p); });
}

} // namespace

std::optional<ChatAction> detectAction(const QString &text, const Earlier &earlier)
{
    const QString lowered = lowerCased(text);
    const std::optional<SearchResult> target = resolveTarget(lowered, earlier);
    if (!target)
        return std::nullopt;
    if (containsAny(lowered, kOpenPhrases))
        return ChatAction{ChatAction::Kind::openFile, *target};
    if (containsAny(lowered, kInsightPhrases))
        return ChatAction{ChatAction::Kind::getInsights, *target};
    return std::nullopt;
}

std::optional<SearchResult> resolveTarget(const QString &lowered, const Earlier &earlier)
{
    const QList<SearchResult> &results = earlier.lastResults;
    if (results.isEmpty())
        return std::nullopt;
    for (const Reference &reference : kReferences) {
        const qsizetype position =
            reference.position == kLast ? results.size() - 1 : reference.position;
        if (position < results.size() && lowered.contains(reference.phrase))
            return results[position];
    }
    return earlier.selectedResult ? *earlier.selectedResult : results.first();
}

QString openingText(const QString &fileName)
{
    return u"Opening **"_s + fileName + u"** for you."_s;
}

QString insightsText(const QString &fileName, const DocumentInsightsResult &insights)
{
    QStringList points;
    for (const QString &point : insights.keyPoints)
        points.append(u"- "_s + point);
    return u"Here's what I found in **"_s + fileName + u"**:\n\n**"_s + insights.documentType
           + u"**\n\n"_s + insights.summary + u"\n\n**Key Points:**\n"_s + points.join(u'\n')
           + u"\n\n**Key Entities:** "_s + insights.entities.join(u", "_s);
}

QString noInsightsText(const QString &fileName)
{
    return u"I couldn't extract insights from **"_s + fileName
           + u"**. The file might not contain readable text, or the AI model isn't available "
             "right now."_s;
}

} // namespace dugwise::ChatCommands
