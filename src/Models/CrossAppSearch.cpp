// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/CrossAppSearch.h"

#include "Models/AppServices.h"
#include "Models/CrossAppResults.h"
#include "Utilities/DateIntentParser.h"

#include <QCoroFuture>
#include <QPointer>
#include <QPromise>
#include <QtConcurrentRun>

namespace dugwise {

namespace {

using DateIntentParser::DateRange;

constexpr int kMessagesAskedFor = 10;

/// The future of something that is known.
template <typename T>
QFuture<T> ready(const T &value)
{
    QPromise<T> promise; // Qt's own function takes a list for many results
    promise.start();
    promise.addResult(value);
    promise.finish();
    return promise.future();
}

} // namespace

CrossAppSearch::CrossAppSearch(const AppServices &services, Clock clock)
    : m_services(services)
    , m_clock(clock)
{
    for (QThreadPool *const worker : {&m_calendarWorker, &m_contactsWorker, &m_messagesWorker})
        worker->setMaxThreadCount(1);
}

CrossAppSearch::~CrossAppSearch()
{
    m_stop.request_stop();
}

QFuture<QStringList> CrossAppSearch::emailsOf(const QStringList &personNames, Access access)
{
    if (!access.contacts || personNames.isEmpty())
        return ready(QStringList());
    const ContactsService *const service = m_services.contacts.get();
    const std::stop_token stop = m_stop.get_token();
    return QtConcurrent::run(&m_contactsWorker, [service, personNames, stop] {
        QStringList emails;
        for (const QString &name : personNames) {
            if (stop.stop_requested())
                break;
            for (const ResolvedContact &contact : service->findContacts(name))
                emails.append(contact.emails);
        }
        return emails;
    });
}

QFuture<std::optional<DateRange>> CrossAppSearch::findDateAnchor(const QString &personName,
                                                                 Access access)
{
    if (!access.calendar)
        return ready(std::optional<DateRange>());
    const CalendarService *const service = m_services.calendar.get();
    const std::stop_token stop = m_stop.get_token();
    return QtConcurrent::run(&m_calendarWorker, [service, personName, stop] {
        return stop.stop_requested() ? std::nullopt : service->findDateAnchor(personName);
    });
}

QCoro::Task<QList<CrossAppResult>>
CrossAppSearch::performCrossAppSearch(QString query,
                                      std::optional<ParsedSearchIntent> intent,
                                      QFuture<QStringList> emails,
                                      Access access)
{
    const QPointer<CrossAppSearch> self(this);
    const std::stop_token stop = m_stop.get_token();
    QList<CrossAppResult> results;
    if (intent && !intent->wantsCrossApp)
        co_return results;
    std::optional<DateRange> dateRange;
    std::optional<QString> person;
    if (intent) {
        dateRange = intent->dateRange;
        if (!intent->personNames.isEmpty())
            person = intent->personNames.first();
    }
    const QStringList addresses = co_await emails;
    if (!self)
        co_return results;
    std::optional<QString> sender;
    if (!addresses.isEmpty())
        sender = addresses.first();

    const QList<MailSearchResult> mails =
        co_await m_services.mail->searchMail(query, sender, dateRange);
    if (!self)
        co_return results;
    results = crossAppResults(mails);
    if (access.messages) {
        const MessagesService *const service = m_services.messages.get();
        const QString words = DateIntentParser::extractKeywords(query).join(u' ');
        const std::optional<QString> contact = sender ? sender : person;
        const QFuture<QList<MessageSearchResult>> searching =
            QtConcurrent::run(&m_messagesWorker, [service, words, contact, stop] {
                return stop.stop_requested()
                           ? QList<MessageSearchResult>()
                           : service->searchMessages(words, contact, kMessagesAskedFor);
            });
        const QList<MessageSearchResult> messages = co_await searching;
        if (!self)
            co_return results;
        results.append(crossAppResults(messages, m_clock.now()));
    }
    if (access.calendar) {
        const CalendarService *const service = m_services.calendar.get();
        const QFuture<QList<CalendarSearchResult>> searching =
            QtConcurrent::run(&m_calendarWorker, [service, query, dateRange, stop] {
                return stop.stop_requested() ? QList<CalendarSearchResult>()
                                             : service->searchEvents(query, dateRange);
            });
        const QList<CalendarSearchResult> events = co_await searching;
        results.append(crossAppResults(events));
    }
    co_return results;
}

} // namespace dugwise
