// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

namespace dugwise {

/// One of the desktop search services that dugwise-mdfind can ask.
struct MetadataSearchService
{
    enum class State : quint8 {
        absent,     ///< not installed
        notIndexed, ///< installed, but it has made no index yet, or is switched off
        present,
    };

    QString name;
    State state = State::absent;
    QString package; ///< the Debian package that brings it

    bool operator==(const MetadataSearchService &) const = default;
};

/// Tracker, Baloo and plocate, as this user sees them now. Looks at files only: no service is
/// started or asked.
[[nodiscard]] QList<MetadataSearchService> metadataSearchServices();

/// The folder of the index that GNOME's service keeps for this user; empty when it has none.
[[nodiscard]] QString trackerIndexFolder();

/// Whether KDE's service keeps an index for this user.
[[nodiscard]] bool hasBalooIndex();

/// The program of that name on PATH; empty when there is none.
[[nodiscard]] QString balooSearchProgram();
[[nodiscard]] QString plocateProgram();

/// Whether the machine has the name database that plocate reads unless told otherwise.
[[nodiscard]] bool hasPlocateDatabase();

} // namespace dugwise
