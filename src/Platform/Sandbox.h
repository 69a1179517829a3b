// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Keeps a process that reads files of strangers away from everything else. Free of Qt, for small
/// programs.
namespace dugwise::Sandbox {

/// Whether this system can do it: Linux with Landlock (since 5.13, where it is switched on) and
/// seccomp filters.
[[nodiscard]] bool isAvailable();

/// Confines this process, for good: it can read what it has open, write to its sockets and to
/// standard error, have up to a gigabyte of memory, and read below `readableFolder` if there is
/// such a folder. It cannot open anything else, write a file, run a program, start a process, or
/// make a socket; trying most of that kills it, and it dies with the thread that started it. False
/// when any part of that is not to be had here.
[[nodiscard]] bool confine(const char *readableFolder);

} // namespace dugwise::Sandbox
