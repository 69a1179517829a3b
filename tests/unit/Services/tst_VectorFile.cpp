// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/VectorFile.h"
#include "support/SampleFiles.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

namespace {

constexpr quint64 kVersion = 7;

IndexedFile
file(const QString &path, const std::optional<QByteArray> &text, const QByteArray &vectors = {})
{
    return IndexedFile(*indexedFile({.path = path, .text = text}), vectors);
}

QByteArrayList vectorsOf(const QList<IndexedFile> &files)
{
    QByteArrayList all;
    for (const IndexedFile &file : files)
        all.append(file.passageVectors());
    return all;
}

} // namespace

class TstVectorFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(u"cache/Dugwise/vectors"_s);
        VectorFile::save({file(u"/x/a.txt"_s, "text a", "AAAA"),
                          file(u"/x/b.txt"_s, "text b", "BB"),
                          file(u"/x/c"_s, std::nullopt, "C"),
                          file(u"/x/none"_s, std::nullopt)},
                         m_path,
                         kVersion);
    }

    void findsVectorsByNameAndText()
    {
        const QList<IndexedFile> found = VectorFile::attach({file(u"/moved/c"_s, std::nullopt),
                                                             file(u"/x/a.txt"_s, "text a"),
                                                             file(u"/x/a.txt"_s, "text b"),
                                                             file(u"/x/b.txt"_s, "text b"),
                                                             file(u"/x/none"_s, std::nullopt),
                                                             file(u"/x/new"_s, "text a")},
                                                            m_path,
                                                            kVersion);
        QCOMPARE(vectorsOf(found), (QByteArrayList{"C", "AAAA", {}, "BB", {}, {}}));
        QCOMPARE(found[1]->path, u"/x/a.txt"_s);
    }

    void isPrivateAndHoldsNothingElse()
    {
        VectorFile::save({file(u"/x/c"_s, std::nullopt, "C")}, m_path, kVersion);
        const QList<IndexedFile> found = VectorFile::attach(
            {file(u"/x/a.txt"_s, "text a"), file(u"/x/c"_s, std::nullopt)}, m_path, kVersion);
        QCOMPARE(vectorsOf(found), (QByteArrayList{{}, "C"}));
        constexpr auto kOthers =
            QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
        QVERIFY(!(QFile::permissions(m_path) & kOthers));
        QCOMPARE(QDir(FilePath::folder(m_path)).entryList(QDir::Files), QStringList{u"vectors"_s});
    }

    void anotherVersionCountsAsNone()
    {
        const QList<IndexedFile> found =
            VectorFile::attach({file(u"/x/c"_s, std::nullopt)}, m_path, kVersion + 1);
        QCOMPARE(vectorsOf(found), QByteArrayList{{}});
    }

    void damageCountsAsNone()
    {
        const QByteArray sound = readFile(m_path);
        const QList<IndexedFile> files{file(u"/x/c"_s, std::nullopt)};
        for (qsizetype i = 0; i < sound.size(); ++i) {
            QByteArray damaged = sound;
            damaged[i] = static_cast<char>(damaged[i] ^ 0x10);
            writeFile(m_path, damaged);
            QCOMPARE(vectorsOf(VectorFile::attach(files, m_path, kVersion)), QByteArrayList{{}});
            writeFile(m_path, sound.first(i));
            QCOMPARE(vectorsOf(VectorFile::attach(files, m_path, kVersion)), QByteArrayList{{}});
        }
        writeFile(m_path, sound + 'x');
        QCOMPARE(vectorsOf(VectorFile::attach(files, m_path, kVersion)), QByteArrayList{{}});
        QVERIFY(QFile::remove(m_path));
        QCOMPARE(vectorsOf(VectorFile::attach(files, m_path, kVersion)), QByteArrayList{{}});
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

QTEST_GUILESS_MAIN(TstVectorFile)
#include "tst_VectorFile.moc"
