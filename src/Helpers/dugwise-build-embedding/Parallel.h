// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <thread>
#include <vector>

namespace dugwise {

/// Work is cut into as many pieces as this whatever the number of threads, so that sums come out
/// the same to the last digit.
constexpr std::size_t kPieces = 32;

/// The elements from `begin` to before `end`.
struct Range
{
    std::size_t begin;
    std::size_t end;
};

/// Calls work(piece, range) for every piece of `count` elements, on several threads at once.
template <typename Work>
void inParallel(std::size_t threads, std::size_t count, Work work)
{
    const std::size_t size = (count + kPieces - 1) / kPieces;
    std::atomic<std::size_t> next = 0;
    const auto takePieces = [&] {
        for (std::size_t piece = next++; piece < kPieces; piece = next++) {
            const Range range{std::min(piece * size, count), std::min((piece + 1) * size, count)};
            work(piece, range);
        }
    };
    std::vector<std::jthread> workers;
    for (std::size_t i = 1; i < threads; ++i)
        workers.emplace_back(takePieces);
    takePieces();
}

} // namespace dugwise
