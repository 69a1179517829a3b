// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/ContactStore.h"

#include <optional>

namespace dugwise {

/// An entry that an address book's document holds. One without a given and a family name has its
/// full name, else its nickname, for the given one.
struct ContactItem
{
    StoredContact contact{};
    QStringList names{}; ///< the words of all names, folded

    /// Of a record of contacts; absent when it is another's.
    [[nodiscard]] static std::optional<ContactItem> fromRecord(const QStringList &fields);

    /// Whether each of these folded words begins a word of its names.
    [[nodiscard]] bool isNamed(const QStringList &words) const;
};

/// The words of a name, without accents and in lower case.
[[nodiscard]] QStringList foldedWords(const QString &name);

} // namespace dugwise
