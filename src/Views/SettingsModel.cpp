// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/SettingsModel.h"

#include "Platform/Platform.h"

#include <QCoroFuture>
#include <QPointer>
#include <QtConcurrentRun>

namespace dugwise {

SettingsModel::SettingsModel(Platform &platform,
                             AppState &appState,
                             FileIndexer &indexer,
                             QObject *parent)
    : QObject(parent)
    , m_platform(platform)
    , m_appState(appState)
    , m_indexer(indexer)
{
    connect(&appState, &AppState::aiStatusLabelChanged, this, &SettingsModel::aiStatusLabelChanged);
    connect(&appState, &AppState::started, this, [this] {
        if (m_isLookWanted)
            look();
    });
}

bool SettingsModel::isOn(const StoredSwitch &stored) const
{
    return stored.isOn(m_platform.userDefaults);
}

void SettingsModel::set(const StoredSwitch &stored, bool isOn)
{
    if (isOn == stored.isOn(m_platform.userDefaults))
        return;
    stored.set(m_platform.userDefaults, isOn);
    Q_EMIT switchesChanged();
}

void SettingsModel::lookForSources()
{
    m_isLookWanted = true;
    if (m_appState.isStarted() && !m_isOccupied)
        look();
}

QCoro::Task<void> SettingsModel::look()
{
    const QPointer<SettingsModel> self(this);
    const bool canAsk = m_platform.accessPrompt != nullptr;
    const EventStore *const events =
        canAsk && !m_appState.calendarEnabled() ? m_platform.eventStore.get() : nullptr;
    const ContactStore *const contacts =
        canAsk && !m_appState.contactsEnabled() ? m_platform.contactStore.get() : nullptr;
    m_isLookWanted = false;
    setIsOccupied(true);
    const auto lookAtBoth = [events, contacts] {
        return Sources{.hasCalendar = events && !events->sources().isEmpty(),
                       .hasContacts = contacts && !contacts->sources().isEmpty()};
    };
    const QFuture<Sources> looking = QtConcurrent::run(&m_worker, lookAtBoth);
    const Sources sources = co_await looking;
    if (!self)
        co_return;
    m_sources = sources;
    setIsOccupied(false);
}

QCoro::Task<void> SettingsModel::ask(PersonalData data)
{
    const QPointer<SettingsModel> self(this);
    if (m_isOccupied)
        co_return;
    setIsOccupied(true);
    co_await m_appState.requestAccessAgain(data);
    if (self)
        setIsOccupied(false);
}

void SettingsModel::setIsOccupied(bool isOccupied)
{
    m_isOccupied = isOccupied;
    Q_EMIT canAskChanged();
    if (!isOccupied && m_isLookWanted)
        look();
}

} // namespace dugwise
