// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/DirectoryListing.h"

namespace dugwise {

class UserDefaults;

/// What a walk takes in, as the person has it set.
struct IndexingOptions
{
    bool isEnabled = true; ///< otherwise nothing is walked
    bool includesHiddenFiles = false;
    bool includesScreenshots = true;
    bool includesPDFs = true;

    /// As the switches stand now.
    [[nodiscard]] static IndexingOptions stored(const UserDefaults &defaults);

    /// Whether a listed file is one of the kinds that are taken in.
    [[nodiscard]] bool includes(const ListedFile &file) const;
};

/// The files below a folder that are to be indexed, as listFolder() orders them; absent when the
/// folder cannot be listed.
[[nodiscard]] std::optional<QList<ListedFile>>
listIncluded(const QString &folder, const IndexingOptions &options, const std::stop_token &stop);

} // namespace dugwise
