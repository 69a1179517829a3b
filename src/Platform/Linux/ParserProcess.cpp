// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/ParserProcess.h"

#include <QFile>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <ctime>

namespace dugwise {

namespace {

/// How often a wait looks whether reading is to stop.
constexpr std::chrono::milliseconds kGlance{50};
/// Processor time for one document: more than the deadline, which ends it first, unless the
/// program is stopped itself.
constexpr rlim_t kProcessorSeconds = 10;
/// Bytes of a message's texts together, with some more: each is cut behind a whole character.
constexpr qsizetype kLargestMessageReply =
    ParserProtocol::kMostBody
    + ParserProtocol::kMessageTexts * (ParserProtocol::kMostMessageText + 16);

/// Starts `program` in a process group of its own, with nothing but `socket` open.
std::optional<pid_t> spawn(const QByteArray &program, QByteArray argument, int socket)
{
    posix_spawn_file_actions_t files;
    posix_spawnattr_t attributes;
    ::posix_spawn_file_actions_init(&files);
    ::posix_spawnattr_init(&attributes);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        ::posix_spawn_file_actions_addopen(&files, standard, "/dev/null", O_RDWR, 0);
    ::posix_spawn_file_actions_adddup2(&files, socket, ParserProtocol::kSocket);
    ::posix_spawn_file_actions_addclosefrom_np(&files, ParserProtocol::kSocket + 1);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    ::posix_spawnattr_setpgroup(&attributes, 0);
    QByteArray name = program;
    const std::array<char *, 3> arguments{
        name.data(), argument.isEmpty() ? nullptr : argument.data(), nullptr};
    std::array<char *, 1> environment{nullptr};
    pid_t process = -1;
    const int failure = ::posix_spawn(
        &process, program.constData(), &files, &attributes, arguments.data(), environment.data());
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&files);
    return failure == 0 ? std::optional(process) : std::nullopt;
}

/// Gives a process some seconds of processor time from now on.
void grantProcessorTime(pid_t process)
{
    clockid_t clock = 0;
    timespec used = {};
    if (::clock_getcpuclockid(process, &clock) != 0 || ::clock_gettime(clock, &used) != 0)
        return;
    rlimit limit = {};
    ::prlimit(process, RLIMIT_CPU, nullptr, &limit);
    limit.rlim_cur = std::min(limit.rlim_max, static_cast<rlim_t>(used.tv_sec) + kProcessorSeconds);
    ::prlimit(process, RLIMIT_CPU, &limit, nullptr);
}

} // namespace

ParserProcess::ParserProcess(const QString &program,
                             Service service,
                             const std::stop_token &stop,
                             QDeadlineTimer greetingDeadline)
    : m_deadline(greetingDeadline)
    , m_stop(stop)
{
    if (!start(program, service))
        return;
    m_state = State::running;
    if (const std::optional<Answer> greeting = receive())
        m_version = greeting->text;
}

ParserProcess::~ParserProcess()
{
    end(State::died);
}

std::optional<ParserProcess::Answer> ParserProcess::open(const FileDescriptor &file,
                                                         QDeadlineTimer deadline,
                                                         const std::stop_token &stop)
{
    m_deadline = deadline;
    m_stop = stop;
    if (m_state != State::running)
        return std::nullopt;
    grantProcessorTime(m_process);
    if (!send({.subject = ParserProtocol::Subject::document}, file.get()))
        return std::nullopt;
    return receive();
}

std::optional<ParserProcess::Answer> ParserProcess::page(int page)
{
    const ParserProtocol::Request request{
        .subject = ParserProtocol::Subject::page,
        .number = static_cast<std::uint32_t>(page),
    };
    if (m_state != State::running || !send(request))
        return std::nullopt;
    return receive();
}

void ParserProcess::close()
{
    if (m_state == State::running) [[maybe_unused]]
        const bool isSent = send({.subject = ParserProtocol::Subject::close});
}

bool ParserProcess::openMessages(const FileDescriptor &file,
                                 std::uint32_t count,
                                 QDeadlineTimer deadline,
                                 const std::stop_token &stop)
{
    m_deadline = deadline;
    m_stop = stop;
    if (m_state != State::running)
        return false;
    grantProcessorTime(m_process);
    return send({.subject = ParserProtocol::Subject::messages, .number = count}, file.get());
}

std::optional<ParserProcess::Message> ParserProcess::nextMessage()
{
    ParserProtocol::MessageReply reply;
    if (m_state != State::running || !receiveAll(&reply, sizeof reply))
        return std::nullopt;
    qsizetype size = 0;
    for (const std::uint32_t part : reply.sizes)
        size += part;
    if (size > kLargestMessageReply) { // no parser of ours any more
        end(State::died);
        return std::nullopt;
    }
    QByteArray texts(size, Qt::Uninitialized);
    if (!receiveAll(texts.data(), static_cast<std::size_t>(size)))
        return std::nullopt;
    Message message{.date = reply.date};
    qsizetype at = 0;
    for (std::size_t i = 0; i < ParserProtocol::kMessageTexts; ++i) {
        message.texts.at(i) = texts.sliced(at, reply.sizes.at(i));
        at += reply.sizes.at(i);
    }
    return message;
}

bool ParserProcess::start(const QString &program, Service service)
{
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return false;
    m_socket = FileDescriptor(ends[0]);
    const FileDescriptor theirs(ends[1]);
    const QByteArray argument = service == Service::mail ? "mail" : "";
    const std::optional<pid_t> process = spawn(QFile::encodeName(program), argument, theirs.get());
    m_process = process.value_or(-1);
    return process.has_value();
}

bool ParserProcess::send(const ParserProtocol::Request &request, int file)
{
    ParserProtocol::Request bytes = request;
    iovec part{&bytes, sizeof bytes};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof file)> control{};
    msghdr message = {};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    if (file >= 0) {
        message.msg_control = control.data();
        message.msg_controllen = control.size();
        cmsghdr *const header = CMSG_FIRSTHDR(&message);
        header->cmsg_level = SOL_SOCKET;
        header->cmsg_type = SCM_RIGHTS;
        header->cmsg_len = CMSG_LEN(sizeof file);
        std::memcpy(CMSG_DATA(header), &file, sizeof file);
    }
    if (::sendmsg(m_socket.get(), &message, MSG_NOSIGNAL | MSG_DONTWAIT)
        == static_cast<ssize_t>(sizeof bytes))
        return true;
    end(State::died);
    return false;
}

std::optional<ParserProcess::Answer> ParserProcess::receive()
{
    ParserProtocol::Reply reply;
    if (!receiveAll(&reply, sizeof reply))
        return std::nullopt;
    if (reply.length > ParserProtocol::kMostText) { // no parser of ours any more
        end(State::died);
        return std::nullopt;
    }
    Answer answer{.result = reply.result, .text = QString(reply.length, Qt::Uninitialized)};
    if (!receiveAll(answer.text.data(), reply.length * sizeof(QChar)))
        return std::nullopt;
    return answer;
}

/// False when the process has ended, or was ended for taking too long.
bool ParserProcess::receiveAll(void *data, std::size_t size)
{
    char *to = static_cast<char *>(data);
    while (size > 0) {
        // What has arrived in time counts, also when this process slept over the deadline.
        const qint64 left = m_stop.stop_requested() ? 0 : m_deadline.remainingTime();
        pollfd waiting{.fd = m_socket.get(), .events = POLLIN};
        const auto glance = static_cast<int>(std::min<qint64>(left, kGlance.count()));
        if (::poll(&waiting, 1, glance) <= 0) {
            if (left > 0)
                continue;
            end(State::timedOut);
            return false;
        }
        const ssize_t received = ::recv(m_socket.get(), to, size, MSG_DONTWAIT);
        if (received < 0 && (errno == EAGAIN || errno == EINTR))
            continue;
        if (received <= 0) {
            end(State::died);
            return false;
        }
        to += received;
        size -= static_cast<std::size_t>(received);
    }
    return true;
}

void ParserProcess::end(State state)
{
    if (m_process <= 0)
        return;
    m_state = state;
    ::kill(-m_process, SIGKILL);
    while (::waitpid(m_process, nullptr, 0) < 0 && errno == EINTR) {
    }
    m_process = -1;
    m_socket = {};
}

} // namespace dugwise
