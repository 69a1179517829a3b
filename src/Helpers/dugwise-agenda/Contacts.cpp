// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-agenda/Contacts.h"

#include "Helpers/dugwise-agenda/ContentLines.h"

#include <algorithm>
#include <memory>
#include <optional>

namespace dugwise {

namespace {

struct Contact
{
    std::string givenName;
    std::string familyName;
    std::string nickname;
    std::string fullName;
    std::vector<std::string> addresses;
    std::vector<std::string> phoneNumbers;
    bool isGroup = false;
};

/// Several values in one place, as one text.
std::string joined(std::string_view values)
{
    std::string all;
    for (const std::string_view value : split(values, ',')) {
        const std::string text = unescaped(value);
        const std::string_view plain = trimmed(text);
        if (!plain.empty())
            all.append(all.empty() ? "" : " ").append(plain);
    }
    return all;
}

/// Without the scheme of a URI.
void addValue(const ContentLine &line, std::string_view scheme, std::vector<std::string> &values)
{
    const std::string text = unescaped(line.decoded());
    std::string_view value = trimmed(text);
    if (isSameName(value.substr(0, scheme.size()), scheme))
        value.remove_prefix(scheme.size());
    if (!value.empty())
        values.emplace_back(value);
}

void takeProperty(Contact &contact, const ContentLine &line)
{
    if (line.isNamed("N")) {
        const std::string name = line.decoded();
        const std::vector<std::string_view> parts = split(name, ';');
        contact.familyName = joined(parts.front());
        contact.givenName = parts.size() > 1 ? joined(parts[1]) : std::string();
    } else if (line.isNamed("FN") && contact.fullName.empty()) {
        contact.fullName = trimmed(unescaped(line.decoded()));
    } else if (line.isNamed("NICKNAME") && contact.nickname.empty()) {
        contact.nickname = joined(line.decoded());
    } else if (line.isNamed("EMAIL")) {
        addValue(line, "mailto:", contact.addresses);
    } else if (line.isNamed("TEL")) {
        addValue(line, "tel:", contact.phoneNumbers);
    } else if (line.isNamed("KIND") || line.isNamed("X-ADDRESSBOOKSERVER-KIND")) {
        contact.isGroup = contact.isGroup || line.isValue("group");
    } else if (line.isNamed("X-EVOLUTION-LIST")) { // of Evolution's address book
        contact.isGroup = contact.isGroup || line.isValue("TRUE");
    }
}

void tell(const Contact &contact, std::uint32_t number, Records &records)
{
    records.begin(number);
    records.text(contact.givenName);
    records.text(contact.familyName);
    records.text(contact.nickname);
    records.text(contact.fullName);
    records.list(contact.addresses);
    records.list(contact.phoneNumbers);
    records.end();
}

} // namespace

void addContacts(std::uint32_t number, std::string_view document, std::vector<Item> &items)
{
    std::optional<Contact> contact;
    int depth = 0; // of cards within the card
    bool isAgentNext = false;
    std::size_t count = 0;
    ContentLines lines(document);
    while (const auto line = lines.next()) {
        const bool isBegin = line->isNamed("BEGIN") && line->isValue("VCARD");
        const bool isEnd = line->isNamed("END") && line->isValue("VCARD");
        // A card lies within another as the value of AGENT alone (RFC 2426, 3.5.4); else the one
        // before it was left unfinished.
        if (isBegin && contact && isAgentNext)
            ++depth;
        else if (isBegin) {
            contact.emplace();
            depth = 0;
        } else if (isEnd && depth > 0)
            --depth;
        else if (isEnd && contact) {
            if (!contact->isGroup && ++count <= kMostItems) {
                items.emplace_back([contact = std::make_shared<Contact>(std::move(*contact)),
                                    number](Records &records) { tell(*contact, number, records); });
            }
            contact.reset();
        } else if (contact && depth == 0) {
            takeProperty(*contact, *line);
        }
        isAgentNext = line->isNamed("AGENT") && trimmed(line->value).empty();
    }
}

} // namespace dugwise
