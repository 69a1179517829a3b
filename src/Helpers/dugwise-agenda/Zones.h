// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <libical/ical.h>

#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>

namespace dugwise {

/// The time zones that a document's times are in: what it defines itself, else what the system
/// knows by the name, also with something before it ("/example.org/1/Europe/Rome").
class Zones
{
public:
    /// A VTIMEZONE, as content lines.
    void define(std::string_view name, std::string definition);
    /// Null for one that is not known. Lives as long as this.
    [[nodiscard]] icaltimezone *find(std::string_view name) const;
    /// Its definition in the document; empty when there is none.
    [[nodiscard]] std::string_view definition(std::string_view name) const;

private:
    std::map<std::string, std::string, std::less<>> m_definitions;
    mutable std::set<std::shared_ptr<icaltimezone>> m_found; ///< of those defined here
};

} // namespace dugwise
