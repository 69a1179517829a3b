// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Reads calendars and address books of strangers for the program that started it: gets them in
// batches (AgendaProtocol), gives back what they hold. It opens nothing but the system's time
// zones, and whatever a document makes of it stays in its sandbox.
#include "Helpers/ParserSocket.h"
#include "Helpers/dugwise-agenda/Contacts.h"
#include "Helpers/dugwise-agenda/Events.h"
#include "Platform/AgendaProtocol.h"
#include "Platform/Sandbox.h"

#include <libical/ical.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <optional>

namespace {

using namespace dugwise;
using namespace dugwise::ParserProtocol;

constexpr int kNotReady = 3;
constexpr const char *kZones = "/usr/share/zoneinfo";
/// UTF-16 code units after which a page is full.
constexpr std::size_t kFullPage = kMostText / 8;

/// The items of a batch.
struct Batch
{
    AgendaProtocol::Header header;
    std::vector<Item> items;
};

void addDocument(Batch &batch, std::uint32_t number, std::string_view document)
{
    switch (batch.header.task) {
    case AgendaProtocol::Task::events:
        addEvents(number, document, batch.items);
        return;
    case AgendaProtocol::Task::occurrences:
        addOccurrences(number, document, batch.header.earliest, batch.header.latest, batch.items);
        return;
    case AgendaProtocol::Task::contacts:
        addContacts(number, document, batch.items);
        return;
    }
}

/// A part of the file from `position`, which is moved behind it; empty when it does not have it.
std::string_view take(std::string_view file, std::size_t &position, std::size_t size)
{
    if (size > file.size() - position)
        return {};
    position += size;
    return file.substr(position - size, size);
}

std::optional<Batch> readBatch(std::string_view file)
{
    Batch batch;
    std::size_t position = 0;
    const std::string_view header = take(file, position, sizeof batch.header);
    if (header.empty())
        return std::nullopt;
    std::memcpy(&batch.header, header.data(), sizeof batch.header);
    std::size_t document = position + batch.header.documents * sizeof(std::uint64_t);
    for (std::uint32_t i = 0; i < batch.header.documents; ++i) {
        std::uint64_t size = 0;
        const std::string_view bytes = take(file, position, sizeof size);
        if (bytes.empty() || document > file.size())
            return std::nullopt;
        std::memcpy(&size, bytes.data(), sizeof size);
        addDocument(batch, i, take(file, document, size));
    }
    return batch;
}

std::optional<Batch> readBatch(const FileDescriptor &file)
{
    struct stat status = {};
    if (::fstat(file.get(), &status) != 0 || status.st_size <= 0)
        return std::nullopt;
    const auto size = static_cast<std::size_t>(status.st_size);
    void *const data = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.get(), 0);
    if (data == MAP_FAILED)
        return std::nullopt;
    std::optional<Batch> batch = readBatch({static_cast<const char *>(data), size});
    ::munmap(data, size);
    return batch;
}

bool sendPage(const std::optional<Batch> &batch, std::size_t first)
{
    if (!batch || first >= batch->items.size())
        return ParserSocket::send(-1);
    Records records;
    std::size_t count = 0;
    do {
        const std::size_t end = records.written().size();
        batch->items[first + count](records);
        if (records.written().size() > kMostText) {
            // A record that is cut could be taken for another: it has a page of its own, or is not
            // told at all.
            records.cutTo(end);
            if (count > 0)
                break;
        }
        ++count;
    } while (first + count < batch->items.size() && count != batch->header.itemsAtATime
             && records.written().size() < kFullPage);
    return ParserSocket::send(static_cast<std::int32_t>(count), records.written());
}

void serve()
{
    std::optional<Batch> batch;
    bool isHeard = ParserSocket::greet("libical " ICAL_VERSION);
    while (isHeard) {
        const std::optional<ParserSocket::Received> received = ParserSocket::receive();
        if (!received)
            return;
        switch (received->request.subject) {
        case Subject::document:
            batch = readBatch(received->file);
            isHeard =
                ParserSocket::send(batch ? static_cast<std::int32_t>(batch->items.size()) : -1);
            break;
        case Subject::page:
            isHeard = sendPage(batch, received->request.number);
            break;
        case Subject::close:
            batch.reset();
            break;
        case Subject::messages:
            return; // none of this service's
        }
    }
}

/// Has libraries look up what they keep, as long as they may look: where zones are, and which one
/// this machine is in.
void warmUp()
{
    icaltimezone *const zone = ::icaltimezone_get_builtin_timezone("Europe/London");
    icaltimetype time = ::icaltime_from_string("20260102T030405");
    int isDaylight = 0;
    if (zone)
        ::icaltimezone_get_utc_offset(zone, &time, &isDaylight);
    icalrecur_iterator *const iterator =
        ::icalrecur_iterator_new(::icalrecurrencetype_from_string("FREQ=WEEKLY"), time);
    ::icalrecur_iterator_next(iterator);
    ::icalrecur_iterator_free(iterator);
}

} // namespace

int main()
{
    ::icalerror_set_errors_are_fatal(0);
    warmUp();
    if (!Sandbox::confine(kZones))
        return kNotReady;
    try {
        serve();
    } catch (...) { // out of memory, by most likelihood; the program takes the end for an answer
        ::_exit(1);
    }
    // Without the destructors of libraries, which may call what the sandbox forbids.
    ::_exit(0);
}
