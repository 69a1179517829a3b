// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/FolderBookmark.h"
#include "support/SampleFiles.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

class TstFolderBookmark : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        qputenv("HOME", m_folder->path().toLocal8Bit()); // nothing above it is searched
    }

    void findsTheFolder_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::newRow("where it was") << u"a/Work"_s << u"a/Work"_s;
        QTest::newRow("renamed") << u"a/Work"_s << u"a/Old work"_s;
        QTest::newRow("moved to a sibling") << u"a/Work"_s << u"b/c/Work"_s;
        QTest::newRow("moved up") << u"a/b/c/Work"_s << u"Work"_s;
        QTest::newRow("unusual names") << u"a/50% \"x\"\\\n"_s << u"é/#?שלום"_s;
        QTest::newRow("colons") << u"a/:Work"_s << u"b:/:c"_s;
    }
    void findsTheFolder()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QVERIFY(QDir().mkpath(path(from)));
        const auto bookmark = FolderBookmark::create(path(from));
        QVERIFY(bookmark);
        QVERIFY(QDir().mkpath(FilePath::folder(path(to))));
        QVERIFY(from == to || QFile::rename(path(from), path(to)));
        QCOMPARE(found(*bookmark), path(to));
        // And below a renamed folder.
        QVERIFY(QFile::rename(m_folder->filePath(u"home"_s), m_folder->filePath(u"new home"_s)));
        QCOMPARE(found(*bookmark), m_folder->path() + u"/new home/"_s + to);
    }

    void prefersTheRenamedFolderToItsReplacement()
    {
        QVERIFY(QDir().mkpath(path(u"Work"_s)));
        const auto bookmark = FolderBookmark::create(path(u"Work"_s));
        QVERIFY(QFile::rename(path(u"Work"_s), path(u"Old work"_s)));
        QVERIFY(QDir().mkpath(path(u"Work"_s)));
        QCOMPARE(found(*bookmark), path(u"Old work"_s));
        // With the old one gone, the one in its place will do.
        QVERIFY(QDir().rmdir(path(u"Old work"_s)));
        QCOMPARE(found(*bookmark), path(u"Work"_s));
    }

    void tellsThatItIsGone()
    {
        QVERIFY(QDir().mkpath(path(u"Work"_s)));
        const auto bookmark = FolderBookmark::create(path(u"Work"_s));
        QVERIFY(QDir().mkpath(path(u".Trash"_s)));
        QVERIFY(QFile::rename(path(u"Work"_s), path(u".Trash/Work"_s)));
        QVERIFY(FolderBookmark::resolve(*bookmark).error().contains(path(u"Work"_s)));
        writeFile(path(u"Work"_s), "a file in its place");
        QVERIFY(FolderBookmark::resolve(*bookmark).error().contains(path(u"Work"_s)));
    }

    void keepsALinkAsItIs()
    {
        QVERIFY(QDir().mkpath(path(u"real"_s)));
        QVERIFY(QFile::link(path(u"real"_s), path(u"link"_s)));
        QCOMPARE(found(*FolderBookmark::create(path(u"link"_s))), path(u"link"_s));
    }

    void makesNoneOfWhatIsNoFolder()
    {
        writeFile(path(u"file.txt"_s), "x");
        for (const QString &name : {u"file.txt"_s, u"nothing"_s})
            QVERIFY(FolderBookmark::create(path(name)).error().contains(path(name)));
    }

    void refusesOtherBytes()
    {
        const QByteArrayList garbage{"",
                                     "/home",
                                     QByteArray("\x00\xff\x01{", 4),
                                     "{}",
                                     "[\"/\"]",
                                     R"({"path":"tmp","inode":"1"})",
                                     R"({"path":["/"],"inode":"1"})",
                                     FolderBookmark::create(u"/"_s)->chopped(1),
                                     QByteArray(1'000'000, '[')};
        for (const QByteArray &bytes : garbage) {
            const auto folder = FolderBookmark::resolve(bytes);
            QVERIFY2(!folder, bytes.first(std::min<qsizetype>(bytes.size(), 80)));
            QVERIFY(!folder.error().isEmpty());
        }
    }

private:
    [[nodiscard]] QString path(const QString &name) const
    {
        return m_folder->path() + u"/home/"_s + name;
    }
    static QString found(const QByteArray &bookmark)
    {
        const auto folder = FolderBookmark::resolve(bookmark);
        return folder ? *folder : folder.error();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(TstFolderBookmark)
#include "tst_FolderBookmark.moc"
