// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/GvfsMetadata.h"

#include "Utilities/Text.h"

#include <QtEndian>

#include <deque>
#include <map>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr qint64 kLargestFile = qint64{64} * 1024 * 1024;
constexpr int kAttempts = 3;
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
    /// Up to its NUL.
    [[nodiscard]] QByteArray string(qint64 at) const
    {
        const qsizetype end = at >= 0 && at < m_bytes.size() ? m_bytes.indexOf('\0', at) : -1;
        return end < 0 ? QByteArray() : m_bytes.sliced(at, end - at).toByteArray();
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
            return tree.string(tree.number(metadata + 8 + 8 * i));
    }
    return {};
}

/// The number that stands for the key in this tree; that of no key where it is not used.
quint32 keyNumber(const Block &tree)
{
    const qint64 keywords = tree.number(kKeywords);
    for (qint64 i = 0; i < tree.count(keywords, 4); ++i) {
        if (tree.string(tree.number(keywords + 4 + 4 * i)) == kKey)
            return static_cast<quint32>(i);
    }
    return kIsList;
}

Addresses readTree(const Block &tree)
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
    while (!waiting.empty() && entries < most) {
        const Folder folder = waiting.front();
        waiting.pop_front();
        const qint64 count = folder.children > 0 ? tree.count(folder.children, 16) : 0;
        for (qint64 i = 0; i < count && entries < most; ++i, ++entries) {
            const qint64 entry = folder.children + 4 + 16 * i;
            const QByteArray path = folder.path + '/' + tree.string(tree.number(entry));
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
    for (auto at = addresses.lower_bound(path);
         at != addresses.end() && at->first.startsWith(path);) {
        const QByteArray rest = at->first.sliced(path.size());
        if (rest.isEmpty() || rest.startsWith('/')) {
            taken.emplace(rest, at->second);
            at = addresses.erase(at);
        } else {
            ++at;
        }
    }
    return taken;
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

/// Does to the addresses what one entry of the journal says.
void apply(const Block &journal, qint64 entry, Addresses &addresses)
{
    enum Operation { set = 0, setList = 1, unset = 2, copy = 3, remove = 4 };
    const qint64 kPath = entry + 17;
    const int operation = static_cast<int>(journal.number(entry + 16) >> 24);
    const QByteArray path = journal.string(kPath);
    const qint64 next = kPath + path.size() + 1;
    const QByteArray second = journal.string(next); // a key, or where a copy is from
    switch (operation) {
    case set:
        if (second == kKey)
            addresses.insert_or_assign(path, journal.string(next + second.size() + 1));
        break;
    case setList:
    case unset:
        if (second == kKey)
            addresses.erase(path);
        break;
    case copy: {
        const Addresses source = takeBelow(addresses, second);
        takeBelow(addresses, path);
        for (const auto &[rest, value] : source) {
            addresses.insert_or_assign(second + rest, value);
            addresses.insert_or_assign(path + rest, value);
        }
        break;
    }
    case remove:
        takeBelow(addresses, path);
        break;
    default:
        break;
    }
}

/// Follows the journal up to its first entry that is not whole.
void replay(const Block &journal, quint32 tag, Addresses &addresses)
{
    constexpr qint64 kSmallestEntry = 24;
    if (!journal.startsWith("\xda\x1ajour\x01") || journal.number(8) != tag)
        return;
    qint64 entry = 20;
    for (quint32 left = journal.number(16); left > 0; --left) {
        const qint64 size = journal.number(entry);
        if (size < kSmallestEntry || size > journal.size() - entry
            || journal.number(entry + size - 4) != size
            || journal.number(entry + 4) != crc32(journal.sliced(entry + 8, size - 8)))
            return;
        apply(journal, entry, addresses);
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

StoreFacts readGvfsMetadata(const QString &tree, const QString &root)
{
    StoreFacts facts;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const QList<StoreFileState> before = gvfsTreeState(tree);
        const auto bytes = readStoreFile(tree, kLargestFile);
        const auto journal = readStoreFile(before[1].path, kLargestFile);
        if (gvfsTreeState(tree).first() != before.first())
            continue; // it was written anew, and the journal began anew
        if (!bytes || !bytes->startsWith("\xda\x1ameta\x01"))
            break;
        const Block block(*bytes);
        Addresses addresses = readTree(block);
        if (journal)
            replay(Block(*journal), block.number(kTag), addresses);
        for (const auto &[path, value] : addresses) {
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
