// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/GvfsMetadata.h"

#include "Utilities/Text.h"

#include <QtEndian>

#include <climits>
#include <deque>
#include <map>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr qint64 kLargestFile = qint64{64} * 1024 * 1024;
constexpr int kAttempts = 3;
constexpr qsizetype kLongestPath = PATH_MAX - 1; // bytes
constexpr qsizetype kLongestAddress = 16'384;    // as of webAddress()
/// Bytes of paths that the copies of one journal may make: each copy can double what there is.
constexpr qint64 kMostCopied = qint64{16} * 1024 * 1024;
constexpr auto kKey = "download-uri";

/// Addresses by paths in the tree, such as "/Downloads/a.pdf"; in order, so that what is below a
/// folder stands together.
using Addresses = std::map<QByteArray, QByteArray>;

/// Numbers and strings at places in a file; 0 and empty beyond its end.
class Block
{
public:
    explicit Block(QByteArrayView bytes)
        : m_bytes(bytes)
    {}
    [[nodiscard]] quint32 number(qint64 at) const
    {
        const bool isInside = at >= 0 && at + 4 <= m_bytes.size();
        return isInside ? qFromBigEndian<quint32>(m_bytes.data() + at) : 0;
    }
    /// Up to its NUL; empty too where that is not within `most` bytes.
    [[nodiscard]] QByteArray string(qint64 at, qsizetype most) const
    {
        if (at < 0 || at >= m_bytes.size())
            return {};
        const QByteArrayView bytes =
            m_bytes.sliced(at).first(std::min<qint64>(most + 1, size() - at));
        return bytes.first(std::max<qsizetype>(0, bytes.indexOf('\0'))).toByteArray();
    }
    /// How many entries of `size` bytes an array with its length before it has room for.
    [[nodiscard]] qint64 count(qint64 at, qint64 size) const
    {
        return std::clamp<qint64>((m_bytes.size() - at - 4) / size, 0, number(at));
    }
    [[nodiscard]] bool startsWith(const char *magic) const { return m_bytes.startsWith(magic); }
    [[nodiscard]] QByteArrayView sliced(qint64 at, qint64 size) const
    {
        return m_bytes.sliced(at, size);
    }
    [[nodiscard]] qint64 size() const { return m_bytes.size(); }

private:
    QByteArrayView m_bytes;
};

// Places in the header of a tree.
constexpr int kTag = 12;
constexpr int kRoot = 16;
constexpr int kKeywords = 20;
constexpr quint32 kIsList = 0x8000'0000;

constexpr qint64 kMostKeysOfAFile = 100;

/// The value of the key with this number in a block of metadata.
QByteArray valueIn(const Block &tree, qint64 metadata, quint32 key)
{
    const qint64 count = std::min(tree.count(metadata, 8), kMostKeysOfAFile);
    for (qint64 i = 0; i < count; ++i) {
        if (tree.number(metadata + 4 + 8 * i) == key) // a list has a bit more
            return tree.string(tree.number(metadata + 8 + 8 * i), kLongestAddress);
    }
    return {};
}

/// The number that stands for the key in this tree; that of no key where it is not used.
quint32 keyNumber(const Block &tree)
{
    const qint64 keywords = tree.number(kKeywords);
    for (qint64 i = 0; i < tree.count(keywords, 4); ++i) {
        if (tree.string(tree.number(keywords + 4 + 4 * i), kLongestPath) == kKey)
            return static_cast<quint32>(i);
    }
    return kIsList;
}

Addresses readTree(const Block &tree, const std::stop_token &stop)
{
    struct Folder
    {
        QByteArray path;
        qint64 children = 0;
    };
    Addresses addresses;
    const quint32 key = keyNumber(tree);
    if (key == kIsList)
        return addresses;
    std::deque<Folder> waiting{{"", tree.number(tree.number(kRoot) + 4)}};
    // A broken file may lead to one place by many ways: no more than it has room for.
    const qint64 most = std::min<qint64>(kMostStoreRecords, tree.size() / 16);
    qint64 entries = 0;
    while (!waiting.empty() && entries < most && !stop.stop_requested()) {
        const Folder folder = waiting.front();
        waiting.pop_front();
        const qint64 count = folder.children > 0 ? tree.count(folder.children, 16) : 0;
        for (qint64 i = 0; i < count && entries < most; ++i, ++entries) {
            const qint64 entry = folder.children + 4 + 16 * i;
            const QByteArray path =
                folder.path + '/' + tree.string(tree.number(entry), kLongestPath);
            if (path.size() > kLongestPath)
                continue;
            const qint64 below = tree.number(entry + 4);
            const qint64 metadata = tree.number(entry + 8);
            if (below > folder.children) // broad before deep, or the file is broken
                waiting.push_back({path, below});
            const QByteArray value = metadata > 0 ? valueIn(tree, metadata, key) : QByteArray();
            if (!value.isEmpty())
                addresses.insert_or_assign(path, value);
        }
    }
    return addresses;
}

/// Takes out what is at and below a path, by its path from there.
Addresses takeBelow(Addresses &addresses, const QByteArray &path)
{
    Addresses taken;
    if (const auto at = addresses.extract(path))
        taken.emplace(QByteArray(), at.mapped());
    const QByteArray folder = path + '/';
    for (auto at = addresses.lower_bound(folder);
         at != addresses.end() && at->first.startsWith(folder);
         at = addresses.erase(at))
        taken.emplace(at->first.sliced(path.size()), at->second);
    return taken;
}

/// Puts what is at and below one path to another too. Gives the bytes of paths that it moved, at
/// most about `most`: what is beyond is left out.
qint64 copyBelow(Addresses &addresses, const QByteArray &from, const QByteArray &to, qint64 most)
{
    qint64 moved = 0;
    const Addresses source = takeBelow(addresses, from);
    for (const auto &[rest, value] : source)
        addresses.insert_or_assign(from + rest, value);
    takeBelow(addresses, to);
    for (auto at = source.begin(); at != source.end() && moved <= most; ++at) {
        const QByteArray path = to + at->first;
        moved += path.size();
        if (path.size() <= kLongestPath)
            addresses.insert_or_assign(path, at->second);
    }
    return moved;
}

quint32 crc32(QByteArrayView bytes)
{
    quint32 sum = 0xFFFF'FFFF;
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xEDB8'8320 : 0);
    }
    return ~sum;
}

/// Does to the addresses what one entry of the journal says. Gives the bytes of paths that it
/// copied, at most about `most`.
qint64 apply(const Block &journal, qint64 entry, Addresses &addresses, qint64 most)
{
    enum Operation { set = 0, setList = 1, unset = 2, copy = 3, remove = 4 };
    const qint64 kPath = entry + 17;
    const int operation = static_cast<int>(journal.number(entry + 16) >> 24);
    const QByteArray path = journal.string(kPath, kLongestPath);
    if (path.isEmpty())
        return 0;
    const qint64 next = kPath + path.size() + 1;
    const QByteArray second = journal.string(next, kLongestPath); // a key, or a copy's original
    switch (operation) {
    case set:
        if (second == kKey)
            addresses.insert_or_assign(path,
                                       journal.string(next + second.size() + 1, kLongestAddress));
        break;
    case setList:
    case unset:
        if (second == kKey)
            addresses.erase(path);
        break;
    case copy:
        return second.isEmpty() ? 0 : copyBelow(addresses, second, path, most);
    case remove:
        takeBelow(addresses, path);
        break;
    default:
        break;
    }
    return 0;
}

/// Follows the journal up to its first entry that is not whole, or up to where there is too much.
void replay(const Block &journal, quint32 tag, Addresses &addresses, const std::stop_token &stop)
{
    constexpr qint64 kSmallestEntry = 24;
    if (!journal.startsWith("\xda\x1ajour\x01") || journal.number(8) != tag)
        return;
    qint64 entry = 20;
    qint64 room = kMostCopied;
    for (quint32 left = journal.number(16); left > 0; --left) {
        const bool isTooMuch = room < 0 || addresses.size() > kMostStoreRecords;
        const qint64 size = journal.number(entry);
        if (isTooMuch || stop.stop_requested() || size < kSmallestEntry
            || size > journal.size() - entry || journal.number(entry + size - 4) != size
            || journal.number(entry + 4) != crc32(journal.sliced(entry + 8, size - 8)))
            return;
        room -= apply(journal, entry, addresses, room);
        entry += size;
    }
}

} // namespace

QList<StoreFileState> gvfsTreeState(const QString &tree)
{
    const StoreFileState state = storeFileState(tree);
    const quint32 tag = Block(state.head).number(kTag);
    const QString journal =
        tree + u'-' + QString::number(tag, 16).rightJustified(8, u'0') + ".log"_L1;
    return {state, storeFileState(journal)};
}

StoreFacts readGvfsMetadata(const QString &tree, const QString &root, const std::stop_token &stop)
{
    StoreFacts facts;
    for (int attempt = 0; attempt < kAttempts && !stop.stop_requested(); ++attempt) {
        const QList<StoreFileState> before = gvfsTreeState(tree);
        const auto bytes = readStoreFile(tree, kLargestFile);
        const auto journal = readStoreFile(before[1].path, kLargestFile);
        if (gvfsTreeState(tree).first() != before.first())
            continue; // it was written anew, and the journal began anew
        if (!bytes || !bytes->startsWith("\xda\x1ameta\x01"))
            break;
        const Block block(*bytes);
        Addresses addresses = readTree(block, stop);
        if (journal)
            replay(Block(*journal), block.number(kTag), addresses, stop);
        for (const auto &[path, value] : addresses) {
            if (stop.stop_requested())
                break;
            const auto source =
                value.isValidUtf8() ? webAddress(toQString(view(value))) : std::nullopt;
            if (source && path.isValidUtf8())
                facts.downloads.insert(root + toQString(view(path)), {{.source = *source}});
        }
        break;
    }
    return facts;
}

} // namespace dugwise
