// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/DateIntentParser.h"

#include "Utilities/LocalTime.h"
#include "Utilities/Text.h"

#include <QList>
#include <QSet>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace dugwise::DateIntentParser {

namespace {

using Phrases = QList<QLatin1StringView>;

bool containsAny(const QString &text, const Phrases &phrases)
{
    return std::ranges::any_of(phrases, [&](QLatin1StringView p) { return text.contains(p); });
}

/// A span that ends now and begins this far back on the calendar.
struct Span
{
    Phrases phrases;
    CalendarSpan length;
};

const QSet<QString> &fillerWords()
{
    static const auto kWords = [] {
        const QStringList words =
            u"find show me my the a an where is are with about from in on at to for of that this "
            "was were been have has had do does did will would could should can get open all any "
            "some look search give tell what which how it its i named called like something "
            "somewhat kind sort think maybe probably might pretty sure remember recall there those "
            "these thing stuff related regarding concerning just also or and but not so very "
            "really quite "
            "today yesterday last week month recently recent year past this ago back couple few "
            "while sometime time long other day days weeks months"_s.split(u' ');
        return QSet<QString>(words.begin(), words.end());
    }();
    return kWords;
}

} // namespace

std::optional<DateRange> parse(const QString &text, Instant now)
{
    const QString lowered = lowerCased(text);
    const QDate today = localTime(now).date();
    if (lowered.contains("today"_L1))
        return DateRange{startOfDay(today), now};
    if (lowered.contains("yesterday"_L1))
        return DateRange{startOfDay(today.addDays(-1)), startOfDay(today)};

    static const std::array kSpans{
        Span{.phrases = {"couple days"_L1, "couple of days"_L1, "few days"_L1},
             .length = {.days = 4}},
        Span{.phrases = {"last week"_L1, "this week"_L1, "past week"_L1}, .length = {.days = 7}},
        Span{.phrases = {"couple weeks"_L1, "couple of weeks"_L1, "week or two"_L1},
             .length = {.days = 14}},
        Span{.phrases = {"few weeks"_L1, "weeks back"_L1, "weeks ago"_L1}, .length = {.days = 21}},
        Span{.phrases = {"last month"_L1, "this month"_L1, "past month"_L1},
             .length = {.months = 1}},
        Span{.phrases = {"couple months"_L1, "couple of months"_L1, "month or two"_L1},
             .length = {.months = 2}},
        Span{.phrases = {"few months"_L1, "months back"_L1, "months ago"_L1},
             .length = {.months = 3}},
        Span{.phrases = {"while ago"_L1, "while back"_L1, "some time ago"_L1, "sometime ago"_L1},
             .length = {.months = 2}},
        Span{.phrases = {"recent"_L1, "not long ago"_L1, "other day"_L1}, .length = {.days = 14}},
        Span{.phrases = {"last year"_L1, "this year"_L1}, .length = {.years = 1}},
    };
    for (const Span &span : kSpans) {
        if (containsAny(lowered, span.phrases))
            return DateRange{calendarTimeBefore(now, span.length), now};
    }
    return std::nullopt;
}

QStringList extractKeywords(const QString &text)
{
    const QByteArray utf8 = lowerCased(text).toUtf8();
    QStringList keywords;
    for (const std::string_view word : words(view(utf8))) {
        const QString keyword = toQString(word);
        if (!fillerWords().contains(keyword))
            keywords.append(keyword);
    }
    return keywords;
}

std::optional<FileType> extractFileTypeIntent(const QString &text)
{
    struct Group
    {
        FileType type;
        Phrases phrases;
    };
    static const std::array kGroups{
        Group{FileType::pdf, {"pdf"_L1}},
        Group{FileType::screenshot, {"screenshot"_L1, "screen shot"_L1, "screen capture"_L1}},
        Group{FileType::image, {"image"_L1, "photo"_L1, "picture"_L1}},
        Group{FileType::spreadsheet, {"spreadsheet"_L1, "excel"_L1, "csv"_L1, "numbers file"_L1}},
        Group{FileType::presentation,
              {"presentation"_L1, "slide"_L1, "deck"_L1, "keynote"_L1, "powerpoint"_L1, "pptx"_L1}},
        Group{FileType::code, {"code"_L1, "script"_L1, "source file"_L1}},
        Group{FileType::markdown, {"markdown"_L1}},
        Group{FileType::text, {"text file"_L1, "txt file"_L1, ".txt"_L1}},
        Group{FileType::document, {"docx"_L1, "word doc"_L1, "word file"_L1}},
    };
    const QString lowered = lowerCased(text);
    for (const Group &group : kGroups) {
        if (containsAny(lowered, group.phrases))
            return group.type;
    }
    if (lowered.contains("doc"_L1) && !lowered.contains("document"_L1))
        return FileType::document;
    return std::nullopt;
}

} // namespace dugwise::DateIntentParser
