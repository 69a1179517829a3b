// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Sandbox.h"

#include "Platform/FileDescriptor.h"

#include <fcntl.h>
#include <linux/landlock.h>
#include <seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <memory>

namespace dugwise::Sandbox {

namespace {

constexpr rlim_t kMostMemory = rlim_t{1} << 30U; // bytes of address space
constexpr rlim_t kMostOpenFiles = 64;

#ifdef __SANITIZE_ADDRESS__
constexpr bool kIsSanitized = true; // reserves terabytes of addresses, and asks after itself
#else
constexpr bool kIsSanitized = false;
#endif

/// The version of Landlock that the kernel speaks; less than 1 when it has none (landlock(7)).
long landlockVersion()
{
    return ::syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
}

/// All rights over files that a version knows, so that all of them can be taken away.
std::uint64_t fileRights(long version)
{
    constexpr std::array<unsigned, 5> kCounts{13, 14, 15, 15, 16}; // of versions 1 to 5
    const auto last = static_cast<long>(kCounts.size());
    const unsigned count = kCounts.at(static_cast<std::size_t>(std::clamp(version, 1L, last) - 1));
    return (std::uint64_t{1} << count) - 1;
}

bool limit(__rlimit_resource resource, rlim_t most)
{
    rlimit value = {};
    if (::getrlimit(resource, &value) != 0)
        return false;
    value.rlim_max = std::min(value.rlim_max, most); // it may be lower already
    value.rlim_cur = value.rlim_max;
    return ::setrlimit(resource, &value) == 0;
}

bool limitResources()
{
    return (kIsSanitized || limit(RLIMIT_AS, kMostMemory)) && limit(RLIMIT_NOFILE, kMostOpenFiles)
           && limit(RLIMIT_FSIZE, 0) && limit(RLIMIT_CORE, 0);
}

bool confineFiles(const char *readableFolder)
{
    const long version = landlockVersion();
    if (version < 1)
        return false;
    landlock_ruleset_attr rules = {};
    rules.handled_access_fs = fileRights(version);
    // Older kernels take a longer structure as long as its end is zero.
    const FileDescriptor ruleset(static_cast<int>(
        ::syscall(SYS_landlock_create_ruleset, &rules, sizeof rules.handled_access_fs, 0)));
    if (!ruleset)
        return false;
    const FileDescriptor folder(::open(readableFolder, O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (folder) { // one that is not there need not be opened
        landlock_path_beneath_attr below = {};
        below.allowed_access = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR;
        below.parent_fd = folder.get();
        if (::syscall(SYS_landlock_add_rule, ruleset.get(), LANDLOCK_RULE_PATH_BENEATH, &below, 0)
            != 0)
            return false;
    }
    return ::syscall(SYS_landlock_restrict_self, ruleset.get(), 0) == 0;
}

/// The system calls of a program that only computes, and reads and writes what it has open.
bool allowCalls(scmp_filter_ctx filter)
{
    // sysinfo: the C library asks for the size of memory before it sorts.
    constexpr std::array kAllowed{
        SCMP_SYS(read),    SCMP_SYS(pread64),      SCMP_SYS(lseek),          SCMP_SYS(close),
        SCMP_SYS(fstat),   SCMP_SYS(newfstatat),   SCMP_SYS(statx),          SCMP_SYS(getdents64),
        SCMP_SYS(recvmsg), SCMP_SYS(recvfrom),     SCMP_SYS(sendmsg),        SCMP_SYS(sendto),
        SCMP_SYS(munmap),  SCMP_SYS(brk),          SCMP_SYS(madvise),        SCMP_SYS(mremap),
        SCMP_SYS(futex),   SCMP_SYS(getrandom),    SCMP_SYS(clock_gettime),  SCMP_SYS(gettimeofday),
        SCMP_SYS(sysinfo), SCMP_SYS(rt_sigreturn), SCMP_SYS(rt_sigprocmask), SCMP_SYS(exit_group),
    };
    constexpr std::array kAllowedSanitized{
        SCMP_SYS(getpid),
        SCMP_SYS(gettid),
        SCMP_SYS(sched_yield),
        SCMP_SYS(readlink),
        SCMP_SYS(sigaltstack),
    };
    const auto allow = [&](int call) {
        return ::seccomp_rule_add(filter, SCMP_ACT_ALLOW, call, 0) == 0;
    };
    return std::ranges::all_of(kAllowed, allow)
           && (!kIsSanitized || std::ranges::all_of(kAllowedSanitized, allow));
}

/// Libraries complain on standard error, of which nobody reads a word.
bool allowComplaining(scmp_filter_ctx filter)
{
    const std::array toStandardError{SCMP_A0(SCMP_CMP_EQ, STDERR_FILENO)};
    return std::ranges::all_of(std::array{SCMP_SYS(write), SCMP_SYS(writev)}, [&](int call) {
        return ::seccomp_rule_add_array(
                   filter, SCMP_ACT_ALLOW, call, toStandardError.size(), toStandardError.data())
               == 0;
    });
}

/// Files are opened for reading only.
bool allowOpeningForReading(scmp_filter_ctx filter)
{
    constexpr unsigned kChanges = O_ACCMODE | O_CREAT | O_TRUNC | O_APPEND;
    const std::array reading{SCMP_A2(SCMP_CMP_MASKED_EQ, kChanges, O_RDONLY)};
    return ::seccomp_rule_add_array(
               filter, SCMP_ACT_ALLOW, SCMP_SYS(openat), reading.size(), reading.data())
           == 0;
}

/// Memory may be mapped and changed, but no new code made of it.
bool allowMemoryWithoutCode(scmp_filter_ctx filter)
{
    const std::array noCode{SCMP_A2(SCMP_CMP_MASKED_EQ, PROT_EXEC, 0)};
    return std::ranges::all_of(std::array{SCMP_SYS(mmap), SCMP_SYS(mprotect)}, [&](int call) {
        return ::seccomp_rule_add_array(filter, SCMP_ACT_ALLOW, call, noCode.size(), noCode.data())
               == 0;
    });
}

bool confineCalls()
{
    const std::unique_ptr<void, decltype(&::seccomp_release)> filter(
        ::seccomp_init(SCMP_ACT_KILL_PROCESS), ::seccomp_release);
    return filter && allowCalls(filter.get()) && allowComplaining(filter.get())
           && allowOpeningForReading(filter.get()) && allowMemoryWithoutCode(filter.get())
           && ::seccomp_load(filter.get()) == 0;
}

} // namespace

bool isAvailable()
{
    // Version 3 of the library's interface knows the action that kills the whole process.
    return landlockVersion() >= 1 && ::seccomp_api_get() >= 3;
}

bool confine(const char *readableFolder)
{
    return ::prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 && ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0
           && limitResources() && confineFiles(readableFolder) && confineCalls();
}

} // namespace dugwise::Sandbox
