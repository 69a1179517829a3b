// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/AgendaParser.h"

#include <QHash>

#include <algorithm>
#include <utility>
#include <vector>

namespace dugwise {

/// A calendar's or an address book's document, in whatever store.
struct StoreDocument
{
    QString name;                                    ///< which no other has
    QByteArray state;                                ///< another when the text is another
    std::function<std::optional<QByteArray>()> text; ///< absent when it cannot be read now
};

/// A share of the time that a source has.
[[nodiscard]] inline std::chrono::milliseconds partOf(std::chrono::milliseconds time, double share)
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(time * share);
}

/// What was read of the documents of one store, kept until they change. An item is made of a
/// record by a static `Item::fromRecord`, which gives an optional one.
template <typename Item>
class StoreDocuments
{
public:
    /// Reads those that are new or have changed, until the deadline, and forgets those that are not
    /// there any more. What there is no time for is read the next time, what took long then last.
    void update(AgendaParser &parser,
                AgendaProtocol::Task task,
                const QList<StoreDocument> &documents,
                const QDeadlineTimer &deadline)
    {
        std::vector<Entry> entries(static_cast<std::size_t>(documents.size()));
        QList<qsizetype> unread;
        for (qsizetype i = 0; i < documents.size(); ++i) {
            Entry &entry = entries[static_cast<std::size_t>(i)];
            const auto known = m_places.constFind(documents[i].name);
            if (known != m_places.constEnd())
                entry = std::move(m_entries[*known]);
            if (entry.state != documents[i].state)
                entry = {.state = documents[i].state};
            if (!entry.isRead)
                unread.append(i);
        }
        m_entries = std::move(entries);
        m_places.clear();
        for (qsizetype i = 0; i < documents.size(); ++i)
            m_places.insert(documents[i].name, static_cast<std::size_t>(i));

        std::ranges::stable_sort(unread, {}, [this](qsizetype i) {
            return m_entries[static_cast<std::size_t>(i)].attempts.begun;
        });
        const auto text = [&](qsizetype i) { return documents[unread[i]].text(); };
        const QList<AgendaParser::Reading> readings =
            parser.read({.task = task, .documents = unread.size(), .text = text}, deadline);
        for (qsizetype i = 0; i < unread.size(); ++i)
            m_entries[static_cast<std::size_t>(unread[i])].take(readings[i]);
    }

    /// Calls `use` with each item, in the order of the documents.
    template <typename Use>
    void forEach(Use use)
    {
        for (Entry &entry : m_entries) {
            for (Item &item : entry.items)
                use(item);
        }
    }

private:
    struct Entry
    {
        QByteArray state{};
        bool isRead = false;
        AgendaParser::Attempts attempts{};
        std::vector<Item> items{};

        void take(const AgendaParser::Reading &reading)
        {
            attempts.count(reading.outcome);
            isRead = reading.outcome == AgendaParser::Reading::Outcome::read || attempts.areUp();
            for (const QStringList &record : reading.records) {
                if (std::optional<Item> item = Item::fromRecord(record); isRead && item)
                    items.push_back(std::move(*item));
            }
        }
    };
    std::vector<Entry> m_entries; ///< in the order of the documents
    QHash<QString, std::size_t> m_places;
};

} // namespace dugwise
