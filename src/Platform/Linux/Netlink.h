// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/FileDescriptor.h"

#include <QByteArrayView>

#include <linux/netlink.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <optional>

/// The kernel's network configuration, read over its own kind of sockets (netlink(7),
/// rtnetlink(7)). Nothing here reaches the network, and nothing waits.
namespace dugwise::Netlink {

/// Records begin at multiples of four bytes, and so does what follows their heads.
constexpr qsizetype aligned(qsizetype size)
{
    return (size + 3) / 4 * 4;
}

/// A value as the kernel takes it, which must outlive the view.
template <typename Value>
[[nodiscard]] QByteArrayView bytesOf(const Value &value)
{
    return {reinterpret_cast<const char *>(&value), sizeof(Value)};
}

/// The value at the beginning of some bytes; absent when they are too few.
template <typename Value>
[[nodiscard]] std::optional<Value> valueAt(QByteArrayView bytes)
{
    if (bytes.size() < qsizetype{sizeof(Value)})
        return std::nullopt;
    Value value = {};
    std::memcpy(&value, bytes.data(), sizeof(Value));
    return value;
}

/// What follows the value at the beginning of some bytes.
template <typename Value>
[[nodiscard]] QByteArrayView after(QByteArrayView bytes)
{
    return bytes.sliced(std::min(bytes.size(), aligned(sizeof(Value))));
}

/// Calls `use(head, body)` for one record after the other: messages, attributes, next hops. The
/// head has a field with the length of the whole. Ends at the first that is not all there.
template <typename Head, typename Length, typename Use>
void forEachRecord(QByteArrayView bytes, Length Head::*length, const Use &use)
{
    while (const std::optional<Head> head = valueAt<Head>(bytes)) {
        const auto size = static_cast<qsizetype>((*head).*length);
        if (size < aligned(sizeof(Head)) || size > bytes.size())
            return;
        use(*head, after<Head>(bytes.first(size)));
        bytes = bytes.sliced(std::min(bytes.size(), aligned(size)));
    }
}

/// Takes one message of the kernel's.
using Use = std::function<void(const nlmsghdr &head, QByteArrayView body)>;

/// A socket to the kernel that is told what changes in `groups` (RTMGRP_...).
[[nodiscard]] FileDescriptor open(quint32 groups = 0);

/// Asks the kernel over a socket of no group, and gives its answers to `use`. False when it refuses
/// or the answer breaks off; part of it may have been given by then.
[[nodiscard]] bool
ask(const FileDescriptor &socket, quint16 type, quint16 flags, QByteArrayView body, const Use &use);

/// Takes off whatever has been told, to the last or to a bound; what was dropped for lack of room
/// counts. False when it was nothing.
[[nodiscard]] bool drain(const FileDescriptor &socket);

} // namespace dugwise::Netlink
