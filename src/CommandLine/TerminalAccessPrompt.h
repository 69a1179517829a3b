// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AccessPrompt.h"

#include <QThreadPool>

namespace dugwise {

/// Asks on the terminal, if standard input and standard error are one; nothing goes to standard
/// output. An empty line or the end of the input is no answer.
class TerminalAccessPrompt final : public AccessPrompt
{
public:
    [[nodiscard]] QCoro::Task<std::optional<bool>> ask(PersonalData data) override;

private:
    QThreadPool m_reader;
};

} // namespace dugwise
