// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/MailUpdate.h"

#include "Platform/FileDescriptor.h"
#include "Platform/Linux/MboxReader.h"
#include "Utilities/Text.h"

#include <QDir>
#include <QFile>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <memory>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

// What is handed to the parser at a time, and what is written at a time.
constexpr qint64 kMostBytes = qint64{1024} * 1024;
constexpr qsizetype kMostUnparsed = 128;
constexpr qsizetype kMostParsed = 4096;
constexpr qint64 kMostParsedSize = qint64{16} * 1024 * 1024;
/// What was changed so lately may be changed again without a change of its time.
constexpr time_t kUnsure = 2; // seconds

struct CloseFolder
{
    void operator()(DIR *folder) const { ::closedir(folder); }
};

struct FileState
{
    QByteArray text; ///< empty when there is none, or not one to rely on
    qint64 size = -1;
};

FileState stateOf(const struct stat &facts)
{
    const bool isSure = facts.st_mtim.tv_sec + kUnsure < ::time(nullptr);
    const QByteArray text = QByteArray::number(facts.st_size) + ':'
                            + QByteArray::number(static_cast<quint64>(facts.st_ino)) + ':'
                            + QByteArray::number(static_cast<qint64>(facts.st_mtim.tv_sec)) + '.'
                            + QByteArray::number(static_cast<qint64>(facts.st_mtim.tv_nsec));
    return {isSure ? text : QByteArray(), facts.st_size};
}

FileState stateOf(const QString &path)
{
    struct stat facts = {};
    if (::lstat(QFile::encodeName(path).constData(), &facts) != 0)
        return {};
    return stateOf(facts);
}

/// The states of both folders that hold a Maildir's messages; Thunderbird has only one.
QByteArray maildirState(const QString &path)
{
    const FileState current = stateOf(path + "/cur"_L1);
    const FileState fresh = stateOf(path + "/new"_L1);
    if (current.text.isEmpty() || (fresh.size >= 0 && fresh.text.isEmpty()))
        return {};
    return current.text + ' ' + fresh.text;
}

FileDescriptor openFile(const QByteArray &path)
{
    FileDescriptor file(
        ::open(path.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat facts = {};
    if (!file || ::fstat(file.get(), &facts) != 0 || !S_ISREG(facts.st_mode))
        return {};
    return file;
}

/// Whether an mbox that was read up to `known.size` still has the same last message there.
bool hasOnlyGrown(const QByteArray &path, const MailIndexWriter::Folder &known)
{
    FileDescriptor file = openFile(path);
    const qint64 length = known.size - known.tail;
    if (!file || length <= 0 || known.tailKey == 0)
        return false;
    MboxReader reader(std::move(file), known.tail, known.size);
    const std::optional<MboxReader::Message> last = reader.next();
    return last && static_cast<qint64>(last->key) == known.tailKey;
}

/// The names of the messages in a Maildir, below its folder, by the part before the flags, which
/// stays (https://cr.yp.to/proto/maildir.html); absent when some cannot be read.
std::optional<QHash<QByteArray, QByteArray>> maildirNames(const QString &path)
{
    QHash<QByteArray, QByteArray> names;
    for (const QByteArray &sub : {QByteArray("new"), QByteArray("cur")}) {
        const std::unique_ptr<DIR, CloseFolder> folder(
            ::opendir((QFile::encodeName(path) + '/' + sub).constData()));
        if (!folder && errno == ENOENT && sub == "new") // Thunderbird has none
            continue;
        if (!folder)
            return std::nullopt;
        for (;;) {
            errno = 0;
            // NOLINTNEXTLINE(concurrency-mt-unsafe): the stream is this function's own
            const dirent *const entry = ::readdir(folder.get());
            if (!entry && errno != 0)
                return std::nullopt;
            if (!entry)
                break;
            const QByteArray name(entry->d_name);
            const qsizetype flags = name.indexOf(":2,");
            if (!name.startsWith('.') && entry->d_type != DT_DIR && entry->d_type != DT_LNK)
                names.insert(name.first(flags < 0 ? name.size() : flags), sub + '/' + name);
        }
    }
    return names;
}

QByteArray readMessage(const QByteArray &path)
{
    const FileDescriptor file = openFile(path);
    struct stat facts = {};
    if (!file || ::fstat(file.get(), &facts) != 0)
        return {};
    QByteArray bytes(std::min<qint64>(facts.st_size, MailParser::kMostMessage), Qt::Uninitialized);
    qsizetype size = 0;
    while (size < bytes.size()) {
        const ssize_t count =
            ::read(file.get(), bytes.data() + size, static_cast<std::size_t>(bytes.size() - size));
        if (count <= 0)
            break;
        size += count;
    }
    bytes.truncate(size);
    return bytes;
}

} // namespace

MailUpdate::MailUpdate(MailIndexWriter &index, MailParser &parser, std::stop_token stop)
    : m_index(index)
    , m_parser(parser)
    , m_stop(std::move(stop))
{}

void MailUpdate::run(const QList<MailFolder> &folders, const std::function<void()> &onCurrent)
{
    QList<Work> urgent = findWork(folders);
    urgent.removeIf([](const Work &work) { return !work.isUrgent; });
    for (const Work &work : std::as_const(urgent))
        m_total += work.size;
    if (m_total > 0) {
        m_index.begin();
        m_index.setProgress(0, m_total);
        m_index.commit();
    }
    for (const Work &work : std::as_const(urgent)) {
        if (!isToEnd())
            carryOut(work);
    }
    if (isToEnd())
        return;
    m_total = 0;
    m_index.begin();
    m_index.setProgress(0, 0);
    m_index.commit();
    onCurrent();
    // Also what has grown just now, if messages before that may have been deleted.
    for (const Work &work : findWork(folders)) {
        if (!isToEnd())
            carryOut(work);
    }
}

bool MailUpdate::isToEnd() const
{
    return m_isStopped || m_stop.stop_requested() || m_index.hasFailed();
}

/// What is to be done for the folders; those that are not there any more are forgotten at once.
QList<MailUpdate::Work> MailUpdate::findWork(const QList<MailFolder> &folders)
{
    QHash<QString, MailIndexWriter::Folder> known = m_index.folders();
    QList<Work> all;
    for (const MailFolder &folder : folders) {
        const auto at = known.constFind(folder.path);
        const bool isKnown = at != known.cend();
        std::optional<Work> work = workOn(folder, isKnown ? *at : MailIndexWriter::Folder());
        if (isKnown)
            known.erase(at);
        if (work && (folder.kind != MailFolder::Kind::maildir || listMaildir(*work)))
            all.append(std::move(*work));
    }
    for (const MailFolder &folder : folders) {
        const QString below = folder.path + u'/';
        if (folder.kind == MailFolder::Kind::unreadable)
            known.removeIf([&](QHash<QString, MailIndexWriter::Folder>::iterator at) {
                return at.key().startsWith(below);
            });
    }
    for (const MailIndexWriter::Folder &gone : std::as_const(known)) {
        m_index.begin();
        for (const MailIndexWriter::Key &key : m_index.allKeys(gone.id)) {
            if (isToEnd())
                return {};
            m_index.remove(gone.id, key);
        }
        m_index.removeFolder(gone.id);
        m_index.commit();
    }
    return all;
}

std::optional<MailUpdate::Work> MailUpdate::workOn(const MailFolder &folder,
                                                   const MailIndexWriter::Folder &known) const
{
    Work work{.folder = folder, .known = known};
    if (folder.kind == MailFolder::Kind::unreadable)
        return std::nullopt;
    if (folder.kind == MailFolder::Kind::maildir) {
        work.state = maildirState(folder.path);
        if (!work.state.isEmpty() && work.state == known.state)
            return std::nullopt;
        return work;
    }
    const FileState state = stateOf(folder.path);
    work.state = state.text;
    if (state.size < 0 || (!work.state.isEmpty() && work.state == known.state))
        return std::nullopt;
    const bool hasGrown =
        state.size > known.size && hasOnlyGrown(QFile::encodeName(folder.path), known);
    if (hasGrown) {
        work.from = known.tail;
        // The older part is looked through afterwards.
        if (folder.marksDeleted)
            work.state.clear();
    }
    work.isUrgent = state.size != known.size;
    work.size = state.size - work.from;
    return work;
}

void MailUpdate::carryOut(const Work &work)
{
    if (work.folder.kind == MailFolder::Kind::mbox)
        readMbox(work);
    else
        readMaildir(work);
}

void MailUpdate::readMbox(const Work &work)
{
    FileDescriptor file = openFile(QFile::encodeName(work.folder.path));
    if (!file)
        return;
    MailIndexWriter::Folder now =
        work.known.id == 0 ? m_index.folder(work.folder.path) : work.known;
    QSet<qint64> known = m_index.keys(now.id);
    QSet<qint64> gone = work.from == 0 ? known : QSet<qint64>{work.known.tailKey};
    now.tail = work.from;
    now.tailKey = 0;
    MboxReader reader(std::move(file), work.from);
    while (std::optional<MboxReader::Message> message = reader.next()) {
        const auto key = static_cast<qint64>(message->key);
        now.tail = message->start;
        now.tailKey = key;
        m_done += message->size;
        if (isToEnd() || reader.hasFailed()) // or it is cut
            break;
        if (message->isExpunged)
            continue;
        gone.remove(key);
        if (known.contains(key))
            continue;
        known.insert(key);
        add({.folder = now.id, .key = key}, std::move(message->bytes));
    }
    flush();
    if (isToEnd() || reader.hasFailed())
        return;
    now.state = work.state;
    now.size = reader.position();
    m_index.begin();
    for (const qint64 key : std::as_const(gone)) {
        if (isToEnd())
            return;
        m_index.remove(now.id, key);
    }
    m_index.save(now);
    m_index.commit();
}

/// Finds what is new in a Maildir, and has the index follow what is not; false when it cannot.
bool MailUpdate::listMaildir(Work &work)
{
    if (isToEnd())
        return false;
    const std::optional<QHash<QByteArray, QByteArray>> names = maildirNames(work.folder.path);
    if (!names)
        return false;
    if (work.known.id == 0)
        work.known = m_index.folder(work.folder.path);
    const QHash<QByteArray, QByteArray> known = m_index.names(work.known.id);
    m_index.begin();
    for (auto at = known.cbegin(); at != known.cend(); ++at) {
        if (isToEnd())
            return false;
        const auto name = names->constFind(at.key());
        if (name == names->cend())
            m_index.remove(work.known.id, at.key());
        else if (!at->isEmpty() && *at != *name)
            m_index.rename(work.known.id, at.key(), *name);
    }
    m_index.commit();
    const QByteArray folder = QFile::encodeName(work.folder.path) + '/';
    for (auto at = names->cbegin(); at != names->cend(); ++at) {
        if (isToEnd())
            return false;
        if (known.contains(at.key()))
            continue;
        struct stat facts = {};
        if (::lstat((folder + *at).constData(), &facts) == 0)
            work.size += std::min<qint64>(facts.st_size, MailParser::kMostMessage);
        work.fresh.append({at.key(), *at});
    }
    std::ranges::sort(work.fresh); // by their time, mostly
    return true;
}

void MailUpdate::readMaildir(const Work &work)
{
    for (const auto &[key, name] : work.fresh) {
        if (isToEnd())
            break;
        const QByteArray bytes = readMessage(QFile::encodeName(work.folder.path) + '/' + name);
        m_done += bytes.size();
        if (!bytes.isEmpty()) // else it went away, or is not there yet
            add({.folder = work.known.id, .key = key, .name = name}, bytes);
    }
    flush();
    if (isToEnd())
        return;
    MailIndexWriter::Folder now = work.known;
    now.state = work.state;
    m_index.begin();
    m_index.save(now);
    m_index.commit();
}

void MailUpdate::add(MailIndexWriter::NewMessage message, QByteArray bytes)
{
    m_byteCount += bytes.size();
    m_unparsed.append(std::move(message));
    m_bytes.append(std::move(bytes));
    if (m_byteCount >= kMostBytes || m_unparsed.size() >= kMostUnparsed)
        parse();
    if (m_parsed.size() >= kMostParsed || m_parsedSize >= kMostParsedSize)
        flush();
}

/// Has the parser read what has been gathered.
void MailUpdate::parse()
{
    QList<std::optional<ParsedMail>> mails = m_parser.parse(m_bytes, m_stop);
    m_isStopped = mails.size() < m_bytes.size();
    for (qsizetype i = 0; i < mails.size(); ++i) {
        MailIndexWriter::NewMessage &message = m_unparsed[i];
        message.mail = std::move(mails[i]);
        m_parsedSize += message.mail ? message.mail->text.size() : 0;
        m_parsed.append(std::move(message));
    }
    m_unparsed.clear();
    m_bytes.clear();
    m_byteCount = 0;
}

/// Writes all that has been gathered into the index.
void MailUpdate::flush()
{
    if (!m_unparsed.isEmpty())
        parse();
    if (m_parsed.isEmpty())
        return;
    m_index.begin();
    m_index.add(std::exchange(m_parsed, {}));
    if (m_total > 0)
        m_index.setProgress(std::min(m_done, m_total - 1), m_total);
    m_index.commit();
    m_parsedSize = 0;
}

} // namespace dugwise
