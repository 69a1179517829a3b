// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/Formatters.h"

#include "Utilities/LocalTime.h"

#include <QLocale>
#include <QTimeZone>
#include <QUrl>

#include <unicode/datefmt.h>
#include <unicode/numfmt.h>
#include <unicode/reldatefmt.h>

#include <cmath>
#include <memory>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

struct Amount
{
    qint64 count = 0;
    URelativeDateTimeUnit unit = UDAT_REL_UNIT_SECOND;
};

/// The largest whole unit between `now` and `then`, counted on the calendar from `now`; the count
/// carries no sign.
Amount largestUnit(const QDateTime &then, const QDateTime &now)
{
    const int direction = then < now ? -1 : 1;
    const auto reaches = [&](const QDateTime &step) {
        return direction < 0 ? step >= then : step <= then;
    };
    int months = std::abs((then.date().year() - now.date().year()) * 12
                          + (then.date().month() - now.date().month()));
    if (months > 0 && !reaches(now.addMonths(direction * months)))
        --months;
    if (months >= 12)
        return {months / 12, UDAT_REL_UNIT_YEAR};
    if (months > 0)
        return {months, UDAT_REL_UNIT_MONTH};

    qint64 days = std::abs(now.daysTo(then));
    if (days > 0 && !reaches(now.addDays(direction * days)))
        --days;
    if (days >= 7)
        return {days / 7, UDAT_REL_UNIT_WEEK};
    if (days > 0)
        return {days, UDAT_REL_UNIT_DAY};

    const qint64 seconds = std::abs(now.secsTo(then));
    if (seconds >= 3600)
        return {seconds / 3600, UDAT_REL_UNIT_HOUR};
    if (seconds >= 60)
        return {seconds / 60, UDAT_REL_UNIT_MINUTE};
    return {seconds, UDAT_REL_UNIT_SECOND};
}

} // namespace

QString relativeTime(Instant then, Instant now, UnitStyle style)
{
    // Whole seconds from now: part of one is no second yet.
    const Instant wholeNow{std::floor(now.seconds)};
    const double seconds = then.seconds - (now.seconds - wholeNow.seconds);
    const Instant wholeThen{then > now ? std::floor(seconds) : std::ceil(seconds)};
    const Amount amount = largestUnit(localTime(wholeThen), localTime(wholeNow));
    const auto count = static_cast<double>(amount.count);
    UErrorCode status = U_ZERO_ERROR;
    const icu::RelativeDateTimeFormatter formatter(icu::Locale::getDefault(),
                                                   nullptr,
                                                   style == UnitStyle::full ? UDAT_STYLE_LONG
                                                                            : UDAT_STYLE_SHORT,
                                                   UDISPCTX_CAPITALIZATION_NONE,
                                                   status);
    icu::UnicodeString text;
    if (U_SUCCESS(status)) {
        // Minus zero makes "0 seconds ago" of the present moment.
        formatter.formatNumeric(then > now ? count : -count, amount.unit, text, status);
    }
    return QString::fromUtf16(text.getBuffer(), text.length());
}

QString dateAndTime(Instant instant)
{
    const QDateTime time = localTime(instant);
    const std::unique_ptr<icu::DateFormat> format(icu::DateFormat::createDateTimeInstance(
        icu::DateFormat::kMedium, icu::DateFormat::kShort, icu::Locale::getDefault()));
    if (!format)
        return QLocale().toString(time, QLocale::ShortFormat);
    // Qt follows a change of the zone, ICU keeps the one that it began with.
    format->adoptTimeZone(icu::TimeZone::createTimeZone(
        icu::UnicodeString::fromUTF8(time.timeZone().id().toStdString())));
    icu::UnicodeString text;
    format->format(static_cast<UDate>(time.toMSecsSinceEpoch()), text);
    return QString::fromUtf16(text.getBuffer(), text.length());
}

QString counted(qint64 count, const QString &noun)
{
    return QString::number(count) + u' ' + noun + (count == 1 ? u""_s : u"s"_s);
}

QString byteCount(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

QString hostOf(const QString &address)
{
    return QUrl(address).host(QUrl::FullyEncoded);
}

QString sourceName(const QString &source)
{
    const QString host = hostOf(source);
    return host.isEmpty() ? source : host;
}

} // namespace dugwise
