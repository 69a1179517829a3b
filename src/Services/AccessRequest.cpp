// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/AccessRequest.h"

#include "Platform/Platform.h"

#include <QCoroFuture>
#include <QPointer>
#include <QtConcurrentRun>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr QLatin1StringView kGranted{"granted"};
constexpr QLatin1StringView kDenied{"denied"};

QString keyOf(PersonalData data)
{
    return data == PersonalData::calendar ? u"CalendarAccess"_s : u"ContactsAccess"_s;
}

} // namespace

QString nameOf(PersonalData data)
{
    return data == PersonalData::calendar ? u"calendar"_s : u"contacts"_s;
}

std::optional<PersonalData> personalDataNamed(const QString &name)
{
    for (const PersonalData data : kAllPersonalData) {
        if (nameOf(data) == name)
            return data;
    }
    return std::nullopt;
}

std::optional<bool> accessAnswer(const UserDefaults &defaults, PersonalData data)
{
    const QStringList stored = defaults.stringList(keyOf(data)).value_or(QStringList());
    if (stored == QStringList{kGranted})
        return true;
    if (stored == QStringList{kDenied})
        return false;
    return std::nullopt;
}

void setAccessAnswer(UserDefaults &defaults, PersonalData data, bool isGranted)
{
    defaults.setStringList(keyOf(data), {isGranted ? kGranted : kDenied});
}

AccessRequest::AccessRequest(Platform &platform, PersonalData data)
    : m_platform(platform)
    , m_data(data)
{}

QCoro::Task<void> AccessRequest::ask(Asking asking, std::function<QStringList()> sources)
{
    const QPointer<AccessRequest> self(this);
    if (!sources)
        co_return;
    const QFuture<QStringList> looking = QtConcurrent::run(&m_worker, sources);
    const QStringList found = co_await looking;
    if (!self || found.isEmpty())
        co_return;
    std::optional<bool> answer = accessAnswer(m_platform.userDefaults, m_data);
    AccessPrompt *const prompt = m_platform.accessPrompt.get();
    const bool isOpen = !answer || (asking == Asking::again && !*answer);
    if (isOpen && prompt) {
        const std::optional<bool> given = co_await prompt->ask(m_data);
        if (!self)
            co_return;
        if (given)
            setAccessAnswer(m_platform.userDefaults, m_data, *given);
        answer = given;
    }
    m_isGranted = answer.value_or(false);
}

} // namespace dugwise
