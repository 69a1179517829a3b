// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/IndexedFile.h"

#include <QList>

namespace dugwise {

/// One fact of a file as people see it, on one line.
struct PreviewFact
{
    QString icon; ///< name of the system symbol
    QString label;
    QString value;

    bool operator==(const PreviewFact &) const = default;
};

/// What is told of a file: its five facts that every file has, and those of the others that it has.
[[nodiscard]] QList<PreviewFact> previewFacts(const IndexedFile &file);

} // namespace dugwise
