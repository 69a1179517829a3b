// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/MetadataQueryCommand.h"

#include <stop_token>

namespace dugwise {

/// Runs a program, the helper dugwise-mdfind, for each query. Runs that are still under way when
/// this object goes are killed, and give nothing.
class MetadataQueryProcess final : public MetadataQueryCommand
{
public:
    explicit MetadataQueryProcess(QString program);
    ~MetadataQueryProcess() override;

    [[nodiscard]] QCoro::Task<std::optional<QByteArray>> run(QStringList arguments) override;

private:
    QString m_program;
    std::stop_source m_stop;
};

} // namespace dugwise
