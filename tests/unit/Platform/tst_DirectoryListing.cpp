// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/DirectoryListing.h"
#include "support/OrdinaryUser.h"
#include "support/SampleFiles.h"

#include <QTemporaryDir>
#include <QTest>

#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

class TstDirectoryListing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
    }

    void ordersByTheBytesOfNames()
    {
        // In UTF-16 the emoji would come before the full-width letter.
        const QStringList expected =
            u"B.txt a/10.txt a/2.txt a/b/c.txt a-b.txt a.txt é.txt Ａ.txt 😀.txt"_s.split(u' ');
        for (auto name = expected.crbegin(); name != expected.crend(); ++name)
            writeFile(path(*name), "x");
        QCOMPARE(listed(), expected);
        const auto files = listFolder(path(u"a/b"_s));
        QCOMPARE(files->size(), 1);
        QCOMPARE(files->first().folderPath, path(u"a/b"_s));
        QCOMPARE(files->first().name, u"c.txt"_s);
        QCOMPARE(listFolder(path(u"a/b/"_s))->first().path(), path(u"a/b/c.txt"_s));
    }

    void leavesOutWhatIsNoVisibleFile()
    {
        writeFile(path(u"kept.pages"_s), "a file is no package");
        writeFile(path(u".hidden.txt"_s), "x");
        writeFile(path(u".folder/inside.txt"_s), "x");
        writeFile(path(u"Some.app/Contents/inside.txt"_s), "x");
        writeFile(path(u"Pictures.PhotosLibrary/inside.txt"_s), "x");
        QVERIFY(QFile::link(path(u"kept.pages"_s), path(u"link.txt"_s)));
        QVERIFY(QFile::link(path(u"."_s), path(u"loop"_s)));
        QVERIFY(QFile::link(path(u"nothing"_s), path(u"broken.txt"_s)));
        QCOMPARE(::mkfifo(bytes(u"pipe.txt"_s), 0600), 0);
        const int server = ::socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
        qstrncpy(address.sun_path, bytes(u"socket.txt"_s), sizeof address.sun_path);
        QCOMPARE(::bind(server, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
        ::close(server);
        QCOMPARE(listed(), QStringList{u"kept.pages"_s});
        QCOMPARE(listed(HiddenNames::listed),
                 (QStringList{u".folder/inside.txt"_s, u".hidden.txt"_s, u"kept.pages"_s}));
    }

    void knowsPackages()
    {
        for (const char *name : {"Some.app", "SOME.APP", "x.wdgt", "x.scptd", "a.b.bundle"})
            QVERIFY2(isPackageName(QLatin1StringView(name)), name);
        for (const char *name : {"app", ".app", "a.app.old", "a.apps", "a.", "", "a.app appex"})
            QVERIFY2(!isPackageName(QLatin1StringView(name)), name);
    }

    void keepsUnusualNames()
    {
        const QString list = u"line\nfeed.txt| blanks .txt|50%41#?.txt|back\\slash\".txt|-rf.txt|"
                             "caf\u00e9.txt|cafe\u0301.txt|\u202eleft.txt"_s;
        const QStringList names = list.split(u'|') + QStringList{QString(255, u'x')};
        for (const QString &name : names)
            writeFile(path(name), name.toUtf8());
        const auto files = listFolder(m_folder->path());
        QCOMPARE(files->size(), names.size());
        for (const ListedFile &file : *files)
            QCOMPARE(readFile(file.path()), file.name.toUtf8());
    }

    void leavesOutNamesThatAreNotUtf8()
    {
        writeFile(path(u"kept.txt"_s), "x");
        const QByteArrayList files{
            "latin-\xe9.txt", "cut-\xe2\x82", "surrogate-\xed\xa0\x80.txt", "folder-\xff/a.txt"};
        QCOMPARE(::mkdir(raw("folder-\xff"), 0700), 0);
        for (const QByteArray &name : files)
            QCOMPARE(::mknod(raw(name), S_IFREG | 0600, 0), 0);
        const QStringList names = listed();
        for (const QByteArray &name : files) // which Qt cannot remove
            QCOMPARE(::unlink(raw(name)), 0);
        QCOMPARE(::rmdir(raw("folder-\xff")), 0);
        QCOMPARE(names, QStringList{u"kept.txt"_s});
    }

    void passesOverUnreadableFolders()
    {
        writeFile(path(u"a/1.txt"_s), "x");
        writeFile(path(u"b/2.txt"_s), "x");
        writeFile(path(u"c/3.txt"_s), "x");
        QCOMPARE(::chmod(m_folder->path().toLocal8Bit(), 0755), 0);
        QCOMPARE(::chmod(bytes(u"b"_s), 0), 0);
        {
            const OrdinaryUser user;
            QCOMPARE(listed(), (QStringList{u"a/1.txt"_s, u"c/3.txt"_s}));
            QVERIFY(!listFolder(path(u"b"_s)));
        }
        QCOMPARE(::chmod(bytes(u"b"_s), 0700), 0);
    }

    void isAbsentWhereNothingCanBeListed()
    {
        writeFile(path(u"real/a.txt"_s), "x");
        for (const QString &name : {u"nothing"_s, u"real/a.txt"_s})
            QVERIFY(!listFolder(path(name)));
        QVERIFY(!listFolder(QString()));
        QVERIFY(QDir().mkdir(path(u"empty"_s)));
        const auto files = listFolder(path(u"empty"_s));
        QVERIFY(files && files->isEmpty());
        // The folder itself may be a link.
        QVERIFY(QFile::link(path(u"real"_s), path(u"link"_s)));
        QCOMPARE(listFolder(path(u"link"_s))->first().path(), path(u"link/a.txt"_s));
    }

    void walksADeepTreeWithFewOpenFiles()
    {
        const QString below = u"d/"_s.repeated(300);
        for (QString at = below; !at.isEmpty(); at.chop(2))
            writeFile(path(at + u"f.txt"_s), "x");
        rlimit before{};
        QCOMPARE(::getrlimit(RLIMIT_NOFILE, &before), 0);
        const rlimit few{.rlim_cur = 64, .rlim_max = before.rlim_max};
        QCOMPARE(::setrlimit(RLIMIT_NOFILE, &few), 0);
        const QStringList files = listed();
        QCOMPARE(::setrlimit(RLIMIT_NOFILE, &before), 0);
        QCOMPARE(files.size(), 300);
        QCOMPARE(files.first(), below + u"f.txt"_s);
    }

    void listsManyFiles()
    {
        for (int i = 0; i < 3000; ++i)
            QCOMPARE(::mknod(raw(QByteArray::number(i)), S_IFREG | 0600, 0), 0);
        const QStringList files = listed();
        QCOMPARE(files.size(), 3000);
        QVERIFY(std::ranges::is_sorted(files));
        std::stop_source stop;
        stop.request_stop();
        QVERIFY(listFolder(m_folder->path(), stop.get_token())->isEmpty());
    }

private:
    [[nodiscard]] QString path(const QString &name) const { return m_folder->filePath(name); }
    /// Paths as the system takes them; valid until the next call.
    const char *raw(const char *name)
    {
        m_bytes = m_folder->path().toUtf8() + '/' + name;
        return m_bytes.constData();
    }
    const char *bytes(const QString &name) { return raw(name.toUtf8()); }
    [[nodiscard]] QStringList listed(HiddenNames hidden = HiddenNames::skipped) const
    {
        QStringList names;
        const auto files = listFolder(m_folder->path(), {}, hidden);
        for (const ListedFile &file : files.value_or(QList<ListedFile>()))
            names.append(QDir(m_folder->path()).relativeFilePath(file.path()));
        return names;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QByteArray m_bytes;
};

QTEST_GUILESS_MAIN(TstDirectoryListing)
#include "tst_DirectoryListing.moc"
