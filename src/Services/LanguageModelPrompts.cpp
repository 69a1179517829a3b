// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/LanguageModelPrompts.h"

#include "Utilities/FileTypeHelper.h"
#include "Utilities/Formatters.h"
#include "Utilities/Text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise::LanguageModelPrompts {

namespace {

constexpr qsizetype kMostResults = 6;
constexpr qsizetype kMostCrossAppResults = 5;
constexpr std::size_t kMostCharacters = 3000;

QString typeName(const IndexedFile &file)
{
    return displayName(FileTypeHelper::fileType(file->fileExtension));
}

QString resultLine(qsizetype number, const SearchResult &result, Instant now)
{
    const IndexedFile &file = result.file;
    QStringList reasons;
    for (const SearchResult::MatchReason reason : result.matchReasons)
        reasons.append(rawValue(reason));
    return u"%1. %2 — %3, %4, %5 — %6\n"_s.arg(QString::number(number),
                                               file->name,
                                               typeName(file),
                                               byteCount(file->size),
                                               relativeTime(file->modifiedDate, now),
                                               reasons.join(u", "_s));
}

QString crossAppLine(const CrossAppResult &result, Instant now)
{
    return u"- [%1] %2 — %3 (%4)\n"_s.arg(rawValue(result.source),
                                          result.title,
                                          result.subtitle,
                                          relativeTime(result.date, now, UnitStyle::abbreviated));
}

QString candidateLine(qsizetype index, const SearchResult &result, Instant now)
{
    const IndexedFile &file = result.file;
    QString line = u"%1. %2 [%3] — %4, modified %5"_s.arg(QString::number(index),
                                                          file->name,
                                                          typeName(file),
                                                          byteCount(file->size),
                                                          relativeTime(file->modifiedDate, now));
    if (file->downloadSource)
        line += u", downloaded from "_s + sourceName(*file->downloadSource);
    return line + u'\n';
}

} // namespace

QString queryParserInstructions()
{
    return u"You are a file search query parser for a desktop file search app. Users speak "
           "naturally, like asking a secretary to find something. Extract the search intent "
           "from their query. For keywords: extract meaningful terms like names, topics, "
           "specific words (e.g. \"investor\", \"pricing\", \"insurance\", \"Sundays\", "
           "\"legal\"). For phrases: extract title fragments or content phrases the user "
           "remembers (e.g. \"legal agreement\", \"quarterly report\", \"budget forecast\"). "
           "For file type: identify if they mention a specific format. \"deck\" or \"slides\" "
           "means presentation. \"doc\" or \"word file\" means document. For recency: \"a few "
           "weeks back\" means fewWeeks, \"couple days\" means recently, \"last week\" means "
           "lastWeek, \"a while ago\" means fewMonths. For person names: extract names if the "
           "user says \"from Sarah\" or \"John sent me\" or \"that thing Mike shared\". For "
           "search scope: if they mention \"email\", \"sent me\", \"inbox\" search emails. If "
           "they mention \"text\", \"message\", \"iMessage\", \"texted\" search messages. If "
           "they mention \"meeting\", \"calendar\", \"event\" search calendar. Otherwise search "
           "everything."_s;
}

QString answerWriterInstructions()
{
    return u"You are Dugwise, a smart local file search assistant. You talk like a helpful "
           "executive assistant. Be friendly, concise, and specific. Summarize what you found "
           "in 1-2 sentences. If you found results, briefly describe the most relevant ones. If "
           "nothing was found, say so briefly without giving search tips or technical advice. "
           "Never suggest file extensions, folder paths, or search syntax. You can search "
           "files, emails, messages, and calendar events on the user's Mac. Mention they can "
           "say \"open #1\" or \"tell me about #2\" for file results."_s;
}

QString documentAnalystInstructions()
{
    return u"You are a document analyst. Given the contents of a file, extract key insights. "
           "Provide a clear summary, important key points, classify the document type, and "
           "extract key entities (people, companies, dates, amounts, locations)."_s;
}

QString resultRankerInstructions()
{
    return u"You are a search result ranker. Given a user's natural language query and a list of "
           "file search results, reorder them by relevance. Consider the query's intent, not "
           "just keyword overlap. Think about which file the user is most likely looking for "
           "based on name, type, recency, and context."_s;
}

QString answerPrompt(const QString &query,
                     const QList<SearchResult> &results,
                     const QList<CrossAppResult> &crossAppResults,
                     Instant now)
{
    QString prompt = u"The user asked: \""_s + query + u'"';
    if (results.isEmpty() && crossAppResults.isEmpty()) {
        return prompt
               + u"\nNo matching files were found on this Mac. Respond with a brief, friendly "
                 u"message "
                 "acknowledging what they asked for and that nothing was found. Do NOT suggest "
                 "search "
                 "tips, keywords, file extensions, or folder paths. Just say you looked but "
                 "couldn't "
                 "find a match, and invite them to try describing the file differently."_s;
    }
    prompt += u'\n';
    if (!results.isEmpty())
        prompt += u"I found %1 files:\n"_s.arg(results.size());
    for (qsizetype i = 0; i < std::min(results.size(), kMostResults); ++i)
        prompt += resultLine(i + 1, results[i], now);
    if (!crossAppResults.isEmpty())
        prompt += u"\nI also found %1 cross-app results:\n"_s.arg(crossAppResults.size());
    for (qsizetype i = 0; i < std::min(crossAppResults.size(), kMostCrossAppResults); ++i)
        prompt += crossAppLine(crossAppResults[i], now);
    prompt += u"\nBriefly describe these results."_s;
    if (!results.isEmpty())
        prompt += u" Mention they can say \"open #1\" or \"tell me about #2\"."_s;
    return prompt;
}

QString insightsPrompt(const QString &text, const QString &fileName)
{
    const QByteArray utf8 = text.toUtf8();
    const std::string_view start = view(utf8).substr(0, prefixLength(view(utf8), kMostCharacters));
    return u"File: "_s + fileName + u"\n\nContent:\n"_s + toQString(start)
           + u"\n\nExtract insights from this document."_s;
}

QString rankingPrompt(const QString &query, const QList<SearchResult> &candidates, Instant now)
{
    QString prompt = u"Query: \""_s + query + u"\"\n\nResults:\n"_s;
    for (qsizetype i = 0; i < candidates.size(); ++i)
        prompt += candidateLine(i, candidates[i], now);
    return prompt + u"\nReturn indices reordered by relevance, most relevant first."_s;
}

} // namespace dugwise::LanguageModelPrompts
