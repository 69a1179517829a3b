// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/DesktopMailQuery.h"

#include "Platform/Linux/MailIndex.h"
#include "Platform/Linux/MailStores.h"
#include "Utilities/Formatters.h"

#include <QCoroFuture>
#include <QFileInfo>
#include <QtConcurrentRun>

#include <chrono>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

// A request waits for two seconds at most; some of that is for the search itself.
constexpr std::chrono::milliseconds kFirstPatience{1600};
constexpr std::chrono::milliseconds kPatience{50}; // looking at 100,000 messages again takes less
constexpr std::chrono::milliseconds kLongestSearch{350};

QList<MailItem> search(const QString &folder,
                       const MailPredicate &predicate,
                       int most,
                       const std::shared_future<void> &current,
                       QDeadlineTimer patience)
{
    current.wait_for(std::chrono::milliseconds(patience.remainingTime()));
    return MailIndex(folder).search(predicate, most, QDeadlineTimer(kLongestSearch));
}

} // namespace

DesktopMailQuery::DesktopMailQuery(StandardFolders folders, const QString &program)
    : m_folders(std::move(folders))
    , m_indexer(m_folders, program)
{
    m_searches.setMaxThreadCount(2);
}

void DesktopMailQuery::prepare()
{
    if (m_patience.isForever())
        m_patience.setRemainingTime(kFirstPatience);
    m_indexer.update(false);
}

QCoro::Task<QList<MailItem>> DesktopMailQuery::gather(MailPredicate predicate, int most)
{
    if (m_patience.isForever())
        m_patience.setRemainingTime(kFirstPatience);
    const std::shared_future<void> current = m_indexer.update(true);
    const QDeadlineTimer patience = std::max(m_patience, QDeadlineTimer(kPatience));
    auto searching = QtConcurrent::run(
        &m_searches, search, m_folders.cache, std::move(predicate), most, current, patience);
    QList<MailItem> items = co_await searching;
    co_return items;
}

bool DesktopMailQuery::hasStores() const
{
    return !mailStores(m_folders).isEmpty();
}

QString DesktopMailQuery::description() const
{
    QStringList programs;
    for (const MailStore &store : mailStores(m_folders))
        programs.append(store.program);
    programs.removeDuplicates();
    if (programs.isEmpty())
        return u"none found; %1 would be read"_s.arg(mailPlaces());
    const QString names = programs.join(u", "_s);
    if (!QFileInfo::exists(MailIndex::path(m_folders.cache)))
        return names + u"; not read yet"_s;
    const MailIndex::Summary summary = MailIndex(m_folders.cache).summary();
    QString text = u"%1, %2 in %3"_s.arg(
        names, counted(summary.messages, u"message"_s), counted(summary.folders, u"folder"_s));
    if (summary.percent < 100)
        text += u"; %1% of what is new has been read"_s.arg(summary.percent);
    return text;
}

} // namespace dugwise
