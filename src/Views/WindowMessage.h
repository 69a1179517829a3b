// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace dugwise {

/// What a start of the program hands over to the window that is open.
struct WindowMessage
{
    QString request;         ///< empty when the window is only to come to the front
    QString activationToken; ///< of xdg-activation-v1; empty where the desktop gave none

    bool operator==(const WindowMessage &) const = default;

    /// In UTF-16 code units; the request's limit is that of the window's field.
    static constexpr qsizetype kLongestRequest = 100'000;
    static constexpr qsizetype kLongestToken = 1000;
    /// In bytes: more than the longest request and token, each character escaped.
    static constexpr qsizetype kLongestLine = qsizetype{1024} * 1024;

    /// As a line of JSON, with its line feed; what is too long is cut.
    [[nodiscard]] QByteArray toLine() const;
    /// Absent when the line is nothing that toLine() writes.
    [[nodiscard]] static std::optional<WindowMessage> fromLine(const QByteArray &line);
};

} // namespace dugwise
