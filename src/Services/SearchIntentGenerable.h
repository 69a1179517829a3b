// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Generable.h"

#include <array>

namespace dugwise {

enum class SearchFileCategory {
    pdf,
    image,
    screenshot,
    document,
    presentation,
    spreadsheet,
    code,
    text,
    any,
};

enum class SearchRecency {
    today,
    yesterday,
    lastWeek,
    coupleWeeks,
    fewWeeks,
    lastMonth,
    fewMonths,
    recently,
    anyTime,
};

enum class SearchScopeGenerable {
    filesOnly,
    emailsOnly,
    messagesOnly,
    calendarOnly,
    everything,
};

template <>
struct GeneratedChoice<SearchFileCategory>
{
    static constexpr QLatin1StringView kName{"SearchFileCategory"};
    static constexpr std::array<QLatin1StringView, 9> kValues{{
        QLatin1StringView("pdf"),
        QLatin1StringView("image"),
        QLatin1StringView("screenshot"),
        QLatin1StringView("document"),
        QLatin1StringView("presentation"),
        QLatin1StringView("spreadsheet"),
        QLatin1StringView("code"),
        QLatin1StringView("text"),
        QLatin1StringView("any"),
    }};
};

template <>
struct GeneratedChoice<SearchRecency>
{
    static constexpr QLatin1StringView kName{"SearchRecency"};
    static constexpr std::array<QLatin1StringView, 9> kValues{{
        QLatin1StringView("today"),
        QLatin1StringView("yesterday"),
        QLatin1StringView("lastWeek"),
        QLatin1StringView("coupleWeeks"),
        QLatin1StringView("fewWeeks"),
        QLatin1StringView("lastMonth"),
        QLatin1StringView("fewMonths"),
        QLatin1StringView("recently"),
        QLatin1StringView("anyTime"),
    }};
};

template <>
struct GeneratedChoice<SearchScopeGenerable>
{
    static constexpr QLatin1StringView kName{"SearchScopeGenerable"};
    static constexpr std::array<QLatin1StringView, 5> kValues{{
        QLatin1StringView("filesOnly"),
        QLatin1StringView("emailsOnly"),
        QLatin1StringView("messagesOnly"),
        QLatin1StringView("calendarOnly"),
        QLatin1StringView("everything"),
    }};
};

/// A request, as a language model reads it.
struct SearchIntentGenerable
{
    static constexpr QLatin1StringView kName{"SearchIntentGenerable"};
    static constexpr QLatin1StringView kDescription{
        "Search intent extracted from a natural language file search query"};

    QStringList keywords;
    QStringList phrases;
    SearchFileCategory fileCategory = SearchFileCategory::any;
    SearchRecency recency = SearchRecency::anyTime;
    QStringList personNames;
    SearchScopeGenerable searchScope = SearchScopeGenerable::everything;

    [[nodiscard]] static constexpr auto properties()
    {
        using Self = SearchIntentGenerable;
        using Text = QLatin1StringView;
        return std::tuple(
            GeneratedProperty<Self, QStringList>{
                Text("keywords"),
                Text("Important keywords to match in filenames and content, like proper nouns, "
                     "topics, specific terms"),
                &Self::keywords},
            GeneratedProperty<Self, QStringList>{
                Text("phrases"),
                Text("Phrases the user remembers from the file title or content"),
                &Self::phrases},
            GeneratedProperty<Self, SearchFileCategory>{Text("fileCategory"),
                                                        Text("The type of file being searched for"),
                                                        &Self::fileCategory},
            GeneratedProperty<Self, SearchRecency>{
                Text("recency"),
                Text("How recently the file was modified or downloaded"),
                &Self::recency},
            GeneratedProperty<Self, QStringList>{
                Text("personNames"),
                Text("Names of people mentioned in the query, like 'Sarah sent me' or 'from John'"),
                &Self::personNames,
                3},
            GeneratedProperty<Self, SearchScopeGenerable>{
                Text("searchScope"),
                Text("Whether the user wants to search emails, messages, calendar, or just files"),
                &Self::searchScope});
    }
};

} // namespace dugwise
