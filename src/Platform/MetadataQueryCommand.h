// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QCoroTask>
#include <QStringList>

#include <optional>

namespace dugwise {

/// The command that searches the whole machine: `-name TEXT` for names, `TEXT` for content.
class MetadataQueryCommand
{
public:
    MetadataQueryCommand() = default;
    Q_DISABLE_COPY_MOVE(MetadataQueryCommand)
    virtual ~MetadataQueryCommand() = default;

    /// Its output, absolute paths one a line; absent when it cannot be started.
    [[nodiscard]] virtual QCoro::Task<std::optional<QByteArray>> run(QStringList arguments) = 0;
};

} // namespace dugwise
