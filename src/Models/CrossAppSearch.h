// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/CrossAppResult.h"
#include "Models/Records/DateRange.h"
#include "Models/Records/ParsedSearchIntent.h"
#include "Utilities/Clock.h"

#include <QCoroTask>
#include <QFuture>
#include <QObject>
#include <QThreadPool>

#include <optional>
#include <stop_token>

namespace dugwise {

struct AppServices;

/// Searches what the person's other programs keep: mail, messages, calendar and address book. Lives
/// on the UI thread; each source is read in a worker of its own, which asks it one thing at a time.
class CrossAppSearch : public QObject
{
    Q_OBJECT

public:
    /// Which sources may be read.
    struct Access
    {
        bool calendar = false;
        bool contacts = false;
        bool messages = false;
    };

    /// `services` outlive the object.
    CrossAppSearch(const AppServices &services, Clock clock);
    Q_DISABLE_COPY_MOVE(CrossAppSearch)
    ~CrossAppSearch() override;

    /// The addresses of all contacts of those names, in order, repeats kept.
    [[nodiscard]] QFuture<QStringList> emailsOf(const QStringList &personNames, Access access);
    /// The days around the event that the name matches best.
    [[nodiscard]] QFuture<std::optional<DateIntentParser::DateRange>>
    findDateAnchor(const QString &personName, Access access);
    /// The first few mails, messages and events that match, in this order; none where the intent
    /// wants files alone. `emails` are those of the people whom the intent names.
    [[nodiscard]] QCoro::Task<QList<CrossAppResult>>
    performCrossAppSearch(QString query,
                          std::optional<ParsedSearchIntent> intent,
                          QFuture<QStringList> emails,
                          Access access);

private:
    const AppServices &m_services;
    Clock m_clock;
    std::stop_source m_stop; ///< of what the workers read
    QThreadPool m_calendarWorker;
    QThreadPool m_contactsWorker;
    QThreadPool m_messagesWorker;
};

} // namespace dugwise
