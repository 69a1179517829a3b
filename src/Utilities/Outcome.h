// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <utility>
#include <variant>

namespace dugwise {

/// Why something was not done, in words for the log.
struct Failure
{
    QString description;
};

/// A value, or why there is none.
template <typename T>
class [[nodiscard]] Outcome
{
public:
    Outcome(T value)
        : m_state(std::move(value))
    {}
    Outcome(Failure failure)
        : m_state(std::move(failure))
    {}

    explicit operator bool() const { return std::holds_alternative<T>(m_state); }
    const T *operator->() const { return &std::get<T>(m_state); }
    const T &operator*() const { return std::get<T>(m_state); }
    [[nodiscard]] const QString &error() const { return std::get<Failure>(m_state).description; }

private:
    std::variant<T, Failure> m_state;
};

/// The value of an operation that gives none.
struct Success
{};

} // namespace dugwise
