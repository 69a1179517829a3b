// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/SearchTerms.h"

#include "Utilities/DateIntentParser.h"
#include "Utilities/Text.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

QHash<QString, QStringList> makeSynonyms()
{
    const QList<std::pair<QString, QString>> rows{
        {u"deck"_s, u"presentation pptx ppt keynote slide pitch"_s},
        {u"slides"_s, u"presentation pptx ppt keynote slide"_s},
        {u"slide"_s, u"presentation pptx ppt keynote"_s},
        {u"pic"_s, u"image photo picture jpg png"_s},
        {u"photo"_s, u"image picture jpg png heic"_s},
        {u"picture"_s, u"image photo jpg png"_s},
        {u"invoice"_s, u"invoice bill payment billing"_s},
        {u"receipt"_s, u"receipt purchase payment"_s},
        {u"resume"_s, u"resume cv curriculum"_s},
        {u"contract"_s, u"contract agreement legal terms"_s},
        {u"agreement"_s, u"agreement contract legal terms"_s},
        {u"legal"_s, u"legal agreement contract terms compliance"_s},
        {u"tax"_s, u"tax irs w2 1099 taxes"_s},
        {u"budget"_s, u"budget forecast financial expense spending"_s},
        {u"investor"_s, u"investor investment pitch funding venture"_s},
        {u"report"_s, u"report analysis summary review"_s},
        {u"notes"_s, u"notes memo minutes meeting"_s},
        {u"letter"_s, u"letter correspondence cover"_s},
    };
    QHash<QString, QStringList> synonyms;
    for (const auto &[keyword, added] : rows)
        synonyms.insert(keyword, added.split(u' '));
    return synonyms;
}

/// The phrase that begins right after a marker; empty when there is none worth keeping.
QString phraseAt(QStringView rest)
{
    constexpr std::size_t kFewestCharacters = 3;
    constexpr qsizetype kMostWords = 6;
    static constexpr QStringView kEnds = u".,;!?";
    const auto end = std::ranges::find_if(rest, [](QChar c) { return kEnds.contains(c); });
    const QByteArray utf8 = rest.first(end - rest.begin()).toUtf8();
    const std::string_view phrase = trimmedBlanks(view(utf8));
    QString text = toQString(phrase);
    if (characterCount(phrase) < kFewestCharacters
        || text.split(u' ', Qt::SkipEmptyParts).size() > kMostWords)
        return {};
    return text;
}

} // namespace

bool SearchTerms::isEmpty() const
{
    return keywords.isEmpty() && phrases.isEmpty() && !dateRange && !fileType
           && !includeScreenshots;
}

SearchTerms
effectiveTerms(const QString &query, const std::optional<ParsedSearchIntent> &intent, Instant now)
{
    SearchTerms terms;
    if (intent) {
        terms.keywords = expandKeywords(intent->keywords);
        terms.phrases = intent->phrases;
        terms.dateRange =
            intent->dateRange ? intent->dateRange : DateIntentParser::parse(query, now);
        terms.fileType = intent->fileType;
        terms.includeScreenshots = intent->includeScreenshots;
    } else {
        terms.keywords = expandKeywords(DateIntentParser::extractKeywords(query));
        terms.phrases = extractPhrases(query);
        terms.dateRange = DateIntentParser::parse(query, now);
        terms.fileType = DateIntentParser::extractFileTypeIntent(query);
        terms.includeScreenshots = lowerCased(query).contains("screenshot"_L1);
    }
    return terms;
}

QStringList expandKeywords(const QStringList &keywords)
{
    static const QHash<QString, QStringList> kSynonyms = makeSynonyms();
    QStringList expanded = keywords;
    QSet<QString> present(keywords.begin(), keywords.end());
    for (const QString &keyword : keywords) {
        for (const QString &added : kSynonyms.value(keyword)) {
            if (!present.contains(added)) {
                present.insert(added);
                expanded.append(added);
            }
        }
    }
    return expanded;
}

QStringList extractPhrases(const QString &query)
{
    static constexpr std::array kMarkers{
        "titled "_L1,
        "called "_L1,
        "named "_L1,
        "with title "_L1,
        "the title "_L1,
        "about "_L1,
        "mentioning "_L1,
        "containing "_L1,
        "says "_L1,
        "with "_L1,
    };
    const QString lowered = lowerCased(query);
    QStringList phrases;
    for (const QLatin1StringView marker : kMarkers) {
        const qsizetype at = lowered.indexOf(marker);
        if (at < 0)
            continue;
        const QString phrase = phraseAt(QStringView(lowered).sliced(at + marker.size()));
        if (!phrase.isEmpty())
            phrases.append(phrase);
    }
    return phrases;
}

QStringList stemVariants(const QString &keyword)
{
    struct Ending
    {
        QLatin1StringView text;
        std::size_t longerThan;
    };
    static constexpr std::array kEndings{
        Ending{"s"_L1, 3},
        Ending{"es"_L1, 4},
        Ending{"ing"_L1, 5},
        Ending{"ed"_L1, 4},
        Ending{"ment"_L1, 6},
    };
    const std::size_t length = characterCount(keyword);
    QStringList variants{keyword};
    for (const Ending &ending : kEndings) {
        if (length > ending.longerThan && keyword.endsWith(ending.text))
            variants.append(keyword.chopped(ending.text.size()));
    }
    if (!keyword.endsWith(u's'))
        variants.append(keyword + u's');
    return variants;
}

std::vector<std::string_view> tokenize(std::string_view name)
{
    return words(name);
}

} // namespace dugwise
