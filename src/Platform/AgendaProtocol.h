// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

/// What goes through ParserProtocol to and from dugwise-agenda, which reads calendars and address
/// books. A request for a document brings a batch of them in one file: a header, the size of each
/// in bytes (64 bits), then the documents one after the other. The reply tells how many items they
/// hold. A page is the records of the items from its number on; the reply's result is the number of
/// items told.
///
/// A record begins with the number of its document in the batch. Its fields are separated by
/// `kField`, the elements of a list by `kElement`; each record ends with `kRecord`. No text in them
/// has a control character but line breaks and tabs.
namespace dugwise::AgendaProtocol {

enum class Task : std::uint32_t {
    /// The events of calendars (iCalendar). Fields: UID; whether its times are "floating", or
    /// empty; start; length in seconds, or empty; title; notes; location; what it takes to find its
    /// occurrences, or empty where it has just one. Times in a zone that is not known count as
    /// floating ones.
    events,
    /// The occurrences of each event, a document each, as records of `events` give them. Fields:
    /// "more" where there may be others, or empty; the starts that lie between `earliest` and
    /// `latest`, in order.
    occurrences,
    /// The entries of address books (vCard). Fields: given name, family name, nickname, full name,
    /// list of addresses, list of phone numbers.
    contacts,
};

/// Times are seconds since 1970-01-01 00:00:00 UTC; floating ones, which mean the local time of
/// whoever reads them, count as if they were UTC.
struct Header
{
    Task task = Task::events;
    std::uint32_t documents = 0;
    std::int64_t earliest = 0;
    std::int64_t latest = 0;
    std::uint32_t itemsAtATime = 0; ///< in a page; 0: as many as seem good
    std::uint32_t reserved = 0;
};

constexpr char16_t kElement = 0x1d;
constexpr char16_t kRecord = 0x1e;
constexpr char16_t kField = 0x1f;

} // namespace dugwise::AgendaProtocol
