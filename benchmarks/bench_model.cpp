// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
// What the language model costs beside the model itself: its prompts, and looking for a server
// where none listens. usage: bench_model [ROUNDS]

#include "Measure.h"
#include "Platform/Linux/LocalModelServer.h"
#include "SampleIndex.h"
#include "Services/LanguageModelPrompts.h"
#include "Services/OnDeviceLLMService.h"

#include <QCoreApplication>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::bench;

namespace {

/// Best time of a few rounds, in microseconds.
template <typename Work>
double best(int rounds, const Work &work)
{
    double least = 1e9;
    for (int round = 0; round < rounds; ++round) {
        const Stopwatch watch;
        work();
        least = std::min(least, watch.seconds() * 1e6);
    }
    return least;
}

/// What a request asks of the language model, from its text to the answer.
void request(LLMServiceProtocol &service, const QList<SearchResult> &results)
{
    QCoro::waitFor(service.parseQuery(u"the deck from last week"_s));
    QCoro::waitFor(service.rerankResults(u"the deck from last week"_s, results));
    QCoro::waitFor(service.generateResponse(u"the deck from last week"_s, results, {}));
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const int rounds = QCoreApplication::arguments().value(1, u"200"_s).toInt();
    const Instant now = Clock().now();
    QList<SearchResult> results;
    for (const IndexedFile &file : sampleIndex(20))
        results.append({QUuid::createUuid(), file, 1, {SearchResult::MatchReason::content}, {}});
    const CrossAppResult mail{.title = u"Budget"_s, .subtitle = u"Sarah"_s, .date = now};
    const QList<CrossAppResult> mails(7, mail);

    std::printf("prompt of an answer: %.0f us\n", best(rounds, [&] {
                    (void)LanguageModelPrompts::answerPrompt(u"x"_s, results, mails, now);
                }));
    std::printf("prompt of a ranking: %.0f us\n", best(rounds, [&] {
                    (void)LanguageModelPrompts::rankingPrompt(u"x"_s, results.first(10), now);
                }));

    // Discard and its neighbours: nobody listens there.
    const LocalModelServer::Settings nobody{.url = u"http://localhost:9/v1"_s};
    std::printf("looking for a server at start, none there: %.0f us\n", best(rounds, [&] {
                    LocalModelServer model(nobody);
                    QCoro::waitFor(model.firstAnswer());
                }));
    MockLLMService keywords;
    const double without = best(rounds, [&] { request(keywords, results); });
    const double with = best(rounds, [&] {
        LocalModelServer model(nobody); // its first look starts with the request
        OnDeviceLLMService service(&model, std::make_unique<MockLLMService>(), Clock());
        request(service, results);
    });
    std::printf(
        "a request that looks for a server, none there: %.0f us, without %.0f us\n", with, without);
    return 0;
}
