// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/Records/CrossAppResult.h"

#include "Models/Records/Hash.h"

using namespace Qt::StringLiterals;

namespace dugwise {

QString rawValue(CrossAppSource source)
{
    switch (source) {
    case CrossAppSource::email:
        return u"Email"_s;
    case CrossAppSource::message:
        return u"Message"_s;
    case CrossAppSource::calendar:
        return u"Calendar"_s;
    }
    Q_UNREACHABLE();
}

std::optional<CrossAppSource> crossAppSourceFromRawValue(QStringView label)
{
    for (const CrossAppSource source : kAllCrossAppSources) {
        if (rawValue(source) == label)
            return source;
    }
    return std::nullopt;
}

QString iconName(CrossAppSource source)
{
    switch (source) {
    case CrossAppSource::email:
        return u"envelope.fill"_s;
    case CrossAppSource::message:
        return u"message.fill"_s;
    case CrossAppSource::calendar:
        return u"calendar"_s;
    }
    Q_UNREACHABLE();
}

QString tint(CrossAppSource source)
{
    switch (source) {
    case CrossAppSource::email:
        return u"blue"_s;
    case CrossAppSource::message:
        return u"green"_s;
    case CrossAppSource::calendar:
        return u"orange"_s;
    }
    Q_UNREACHABLE();
}

size_t qHash(const CrossAppResult &result, size_t seed)
{
    return qHashMulti(seed,
                      result.id,
                      hashOf(result.source),
                      result.title,
                      result.subtitle,
                      result.snippet,
                      result.date,
                      result.relevanceScore,
                      hashOf(result.actionPath));
}

} // namespace dugwise
