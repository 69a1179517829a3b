// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/AppState.h"
#include "Services/FileIndexer.h"
#include "Services/StoredSwitch.h"

#include <QObject>
#include <QThreadPool>
#include <QtQmlIntegration>

namespace dugwise {

/// What the settings page shows and does beyond the session: the stored switches, the index as
/// a whole, and access to the person's other data. Lives on the UI thread.
class SettingsModel : public QObject
{
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(bool enableLocalIndexing READ enableLocalIndexing WRITE setEnableLocalIndexing NOTIFY
                   switchesChanged)
    Q_PROPERTY(bool includeHiddenFiles READ includeHiddenFiles WRITE setIncludeHiddenFiles NOTIFY
                   switchesChanged)
    Q_PROPERTY(bool includeScreenshots READ includeScreenshots WRITE setIncludeScreenshots NOTIFY
                   switchesChanged)
    Q_PROPERTY(bool includePDFs READ includePDFs WRITE setIncludePDFs NOTIFY switchesChanged)
    Q_PROPERTY(bool cloudSyncEnabled READ cloudSyncEnabled WRITE setCloudSyncEnabled NOTIFY
                   switchesChanged)
    Q_PROPERTY(QString aiStatusLabel READ aiStatusLabel NOTIFY aiStatusLabelChanged)
    Q_PROPERTY(bool canAskForCalendar READ canAskForCalendar NOTIFY canAskChanged)
    Q_PROPERTY(bool canAskForContacts READ canAskForContacts NOTIFY canAskChanged)

public:
    /// All outlive the model.
    SettingsModel(Platform &platform,
                  AppState &appState,
                  FileIndexer &indexer,
                  QObject *parent = nullptr);

    [[nodiscard]] bool enableLocalIndexing() const { return isOn(kEnableLocalIndexing); }
    [[nodiscard]] bool includeHiddenFiles() const { return isOn(kIncludeHiddenFiles); }
    [[nodiscard]] bool includeScreenshots() const { return isOn(kIncludeScreenshots); }
    [[nodiscard]] bool includePDFs() const { return isOn(kIncludePDFs); }
    [[nodiscard]] bool cloudSyncEnabled() const { return isOn(kCloudSyncEnabled); }
    void setEnableLocalIndexing(bool isOn) { set(kEnableLocalIndexing, isOn); }
    void setIncludeHiddenFiles(bool isOn) { set(kIncludeHiddenFiles, isOn); }
    void setIncludeScreenshots(bool isOn) { set(kIncludeScreenshots, isOn); }
    void setIncludePDFs(bool isOn) { set(kIncludePDFs, isOn); }
    void setCloudSyncEnabled(bool isOn) { set(kCloudSyncEnabled, isOn); }
    [[nodiscard]] QString aiStatusLabel() const { return m_appState.aiStatusLabel(); }
    /// Whether there is a calendar that is not read yet, as of the last look, and a way to ask for
    /// it that is not in use already.
    [[nodiscard]] bool canAskForCalendar() const { return !m_isOccupied && m_sources.hasCalendar; }
    /// The same of contacts.
    [[nodiscard]] bool canAskForContacts() const { return !m_isOccupied && m_sources.hasContacts; }

    /// Has a look at what could be asked for, as soon as the questions of the start are answered.
    Q_INVOKABLE void lookForSources();

    Q_INVOKABLE void reindexAll() { m_indexer.reindexAll(); }
    Q_INVOKABLE void clearIndexedData() { m_indexer.clearIndexedData(); }
    Q_INVOKABLE void askForCalendar() { ask(PersonalData::calendar); }
    Q_INVOKABLE void askForContacts() { ask(PersonalData::contacts); }

Q_SIGNALS:
    void switchesChanged();
    void aiStatusLabelChanged();
    void canAskChanged();

private:
    struct Sources
    {
        bool hasCalendar = false;
        bool hasContacts = false;
    };

    [[nodiscard]] bool isOn(const StoredSwitch &stored) const;
    void set(const StoredSwitch &stored, bool isOn);
    QCoro::Task<void> ask(PersonalData data);
    QCoro::Task<void> look();
    void setIsOccupied(bool isOccupied);

    Platform &m_platform;
    AppState &m_appState;
    FileIndexer &m_indexer;
    bool m_isLookWanted = false;
    /// With asking or looking: a store takes one call at a time, and the searches make none of it
    /// as long as it may not be read.
    bool m_isOccupied = false;
    Sources m_sources;
    QThreadPool m_worker;
};

} // namespace dugwise
