// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>
#include <QStringList>
#include <QVariant>

namespace dugwise {

/// The UIDs, in order, of those of Evolution Data Server's sources that have a group, such as
/// "Calendar", in their key files, and are switched on together with all that they belong to.
/// Directories in the network are left out. `managedObjects` is what GetManagedObjects returned.
[[nodiscard]] QStringList enabledSources(const QVariant &managedObjects, QByteArrayView group);

} // namespace dugwise
