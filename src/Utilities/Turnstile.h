// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoroFuture>
#include <QCoroTask>
#include <QFuture>
#include <QPromise>

#include <deque>
#include <memory>

namespace dugwise {

/// Lets the coroutines of one thread through one at a time, in the order in which they came.
class Turnstile
{
    struct Line;

public:
    /// Held while inside; the next one enters when it is destroyed.
    class Pass
    {
    public:
        explicit Pass(std::shared_ptr<Line> line)
            : m_line(std::move(line))
        {}
        Pass(Pass &&) noexcept = default;
        Pass &operator=(Pass &&) = delete;
        Pass(const Pass &) = delete;
        Pass &operator=(const Pass &) = delete;
        ~Pass()
        {
            if (m_line)
                m_line->leave();
        }

    private:
        // Shared with the turnstile and all who wait: any of them may be the last to go.
        std::shared_ptr<Line> m_line;
    };

    Turnstile()
        : m_line(std::make_shared<Line>())
    {}

    [[nodiscard]] QCoro::Task<std::shared_ptr<Pass>> enter() { return enter(m_line); }

private:
    struct Line
    {
        bool isOccupied = false;
        std::deque<std::shared_ptr<QPromise<void>>> waiting;

        void leave()
        {
            if (waiting.empty()) {
                isOccupied = false;
                return;
            }
            const auto next = waiting.front();
            waiting.pop_front();
            next->finish();
        }
    };

    static QCoro::Task<std::shared_ptr<Pass>> enter(std::shared_ptr<Line> line)
    {
        if (line->isOccupied) {
            const auto turn = std::make_shared<QPromise<void>>();
            turn->start();
            line->waiting.push_back(turn);
            const QFuture<void> myTurn = turn->future();
            co_await myTurn;
        }
        line->isOccupied = true;
        const auto pass = std::make_shared<Pass>(line);
        co_return pass;
    }

    std::shared_ptr<Line> m_line;
};

} // namespace dugwise
