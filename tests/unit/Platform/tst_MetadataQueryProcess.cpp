// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/MetadataQueryProcess.h"
#include "support/SampleFiles.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

class TstMetadataQueryProcess : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;

    /// A program of these shell commands.
    [[nodiscard]] QString program(const QByteArray &commands) const
    {
        const QString path = m_folder.filePath(u"program"_s);
        writeFile(path, "#!/bin/sh\n" + commands);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return path;
    }

private Q_SLOTS:
    void givesAllThatIsPrinted_data()
    {
        QTest::addColumn<QByteArray>("commands");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("nothing") << QByteArray("exit 0") << QByteArray();
        QTest::newRow("more than a pipe holds")
            << QByteArray("head -c 1048576 /dev/zero | tr '\\0' x") << QByteArray(1048576, 'x');
        QTest::newRow("an exit code is no matter")
            << QByteArray("echo a; exit 3") << QByteArray("a\n");
        QTest::newRow("standard error") << QByteArray("echo a; echo b >&2") << QByteArray("a\n");
        QTest::newRow("standard input is empty") << QByteArray("cat; echo a") << QByteArray("a\n");
        QTest::newRow("arguments")
            << QByteArray("printf '%s|' \"$@\"") << QByteArray("-name|--|$(echo \"a'|");
    }
    void givesAllThatIsPrinted()
    {
        QFETCH(const QByteArray, commands);
        MetadataQueryProcess command(program(commands));
        const auto output = QCoro::waitFor(command.run({u"-name"_s, u"$(echo \"a'"_s}));
        QVERIFY(output);
        QTEST(*output, "expected");
    }

    void cannotBeStarted_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("not there") << QByteArray();
        QTest::newRow("no program") << QByteArray("#!/nowhere/sh\n");
    }
    void cannotBeStarted()
    {
        QFETCH(const QByteArray, content);
        QString path = m_folder.filePath(u"nothing"_s);
        if (!content.isEmpty()) {
            path = program(QByteArray());
            writeFile(path, content);
        }
        MetadataQueryProcess command(path);
        QVERIFY(!QCoro::waitFor(command.run({u"text"_s})));
        QVERIFY(!QCoro::waitFor(command.run({QString(1'000'000, u'x')})));
    }

    void runsEndWithTheirOwner()
    {
        const QString idFile = m_folder.filePath(u"id"_s);
        auto command = std::make_unique<MetadataQueryProcess>(
            program("echo $$ > " + idFile.toUtf8() + "; exec sleep 600"));
        const QCoro::Task<std::optional<QByteArray>> run = command->run({u"text"_s});
        QTRY_VERIFY(readFile(idFile).endsWith('\n'));
        const int id = readFile(idFile).toInt();
        QVERIFY(!run.isReady());
        const QCoro::Task<std::optional<QByteArray>> justBegun = command->run({u"text"_s});
        command.reset();
        QTRY_VERIFY(run.isReady() && justBegun.isReady());
        QCOMPARE(::kill(id, 0), -1);
        QCOMPARE(errno, ESRCH);
    }
};

QTEST_GUILESS_MAIN(TstMetadataQueryProcess)
#include "tst_MetadataQueryProcess.moc"
