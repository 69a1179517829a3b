// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AccessPrompt.h"

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QThreadPool>

#include <array>
#include <functional>
#include <optional>

namespace dugwise {

struct Platform;
class UserDefaults;

inline constexpr std::array kAllPersonalData{PersonalData::calendar, PersonalData::contacts};

/// "calendar" or "contacts".
[[nodiscard]] QString nameOf(PersonalData data);
[[nodiscard]] std::optional<PersonalData> personalDataNamed(const QString &name);

/// What the person has answered so far; absent until they have.
[[nodiscard]] std::optional<bool> accessAnswer(const UserDefaults &defaults, PersonalData data);
void setAccessAnswer(UserDefaults &defaults, PersonalData data, bool isGranted);

/// Whether a denial that is stored stands, or the person is asked in spite of it.
enum class Asking { once, again };

/// Whether one kind of personal data may be read in this run: asked for once, and remembered in
/// the user defaults. Lives on the UI thread.
class AccessRequest : public QObject
{
    Q_OBJECT

public:
    /// `platform` outlives the object.
    AccessRequest(Platform &platform, PersonalData data);
    Q_DISABLE_COPY_MOVE(AccessRequest)
    ~AccessRequest() override = default;

    /// Grants what was granted before, and asks the person when they have not answered yet. No
    /// answer is no for now, and leaves what is stored. Nobody is asked, and nothing granted, where
    /// `sources` finds nothing to read; it is called in a worker, and not at all when null.
    [[nodiscard]] QCoro::Task<void> ask(Asking asking, std::function<QStringList()> sources);
    [[nodiscard]] bool isGranted() const { return m_isGranted; }

private:
    Platform &m_platform;
    PersonalData m_data;
    bool m_isGranted = false;
    QThreadPool m_worker;
};

} // namespace dugwise
