// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/MetadataQueryProcess.h"

#include "Platform/ProgramOutput.h"

using namespace Qt::StringLiterals;

namespace dugwise {

MetadataQueryProcess::MetadataQueryProcess(QString program)
    : m_program(std::move(program))
{}

MetadataQueryProcess::~MetadataQueryProcess()
{
    m_stop.request_stop();
}

QCoro::Task<std::optional<QByteArray>> MetadataQueryProcess::run(QStringList arguments)
{
    if (!arguments.isEmpty())
        arguments.insert(arguments.size() - 1, u"--"_s); // the text may begin with a dash
    return programOutput(m_program, arguments, m_stop.get_token());
}

} // namespace dugwise
