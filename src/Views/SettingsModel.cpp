// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/SettingsModel.h"

#include "Platform/Platform.h"
#include "Utilities/PrintableText.h"

#include <QPointer>

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
    connect(
        &indexer, &FileIndexer::indexedFolderURLsChanged, this, &SettingsModel::folderPathsChanged);
    connect(&appState, &AppState::aiStatusLabelChanged, this, &SettingsModel::aiStatusLabelChanged);
}

QStringList SettingsModel::folderPaths() const
{
    QStringList paths;
    for (const QUrl &folder : m_indexer.indexedFolderURLs())
        paths.append(printable(folder.toLocalFile()));
    return paths;
}

bool SettingsModel::canAskForCalendar() const
{
    return !m_isAsking && m_platform.accessPrompt && m_platform.eventStore;
}

bool SettingsModel::canAskForContacts() const
{
    return !m_isAsking && m_platform.accessPrompt && m_platform.contactStore;
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

QCoro::Task<void> SettingsModel::ask(PersonalData data)
{
    const QPointer<SettingsModel> self(this);
    if (m_isAsking)
        co_return;
    setIsAsking(true);
    co_await m_appState.requestAccessAgain(data);
    if (self)
        setIsAsking(false);
}

void SettingsModel::setIsAsking(bool isAsking)
{
    m_isAsking = isAsking;
    Q_EMIT canAskChanged();
}

} // namespace dugwise
