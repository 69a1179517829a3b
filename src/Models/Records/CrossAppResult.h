// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/Instant.h"

#include <QString>
#include <QUuid>

#include <array>
#include <optional>

namespace dugwise {

/// Which application a cross-app hit comes from.
enum class CrossAppSource {
    email,
    message,
    calendar,
};

/// Every source, in declaration order.
inline constexpr std::array kAllCrossAppSources{
    CrossAppSource::email, CrossAppSource::message, CrossAppSource::calendar};

/// The label that people see, which is also how the source is written.
[[nodiscard]] QString rawValue(CrossAppSource source);
/// The source with that label, matched exactly; none for any other text.
[[nodiscard]] std::optional<CrossAppSource> crossAppSourceFromRawValue(QStringView label);
/// Name of the system symbol that stands for the source.
[[nodiscard]] QString iconName(CrossAppSource source);
/// Name of the colour in which its icon is drawn.
[[nodiscard]] QString tint(CrossAppSource source);

/// One hit from mail, messages or calendar.
struct CrossAppResult
{
    QUuid id; ///< random, given when the result is made
    CrossAppSource source = CrossAppSource::email;
    QString title;                     ///< subject, correspondent or event title
    QString subtitle;                  ///< sender, relative date or location
    QString snippet;                   ///< short text
    Instant date;                      ///< received, sent or start of the event
    double relevanceScore = 0;         ///< 1 for mail and messages, the event's own for events
    std::optional<QString> actionPath; ///< the item to open

    bool operator==(const CrossAppResult &) const = default;
};

[[nodiscard]] size_t qHash(const CrossAppResult &result, size_t seed = 0);

} // namespace dugwise
