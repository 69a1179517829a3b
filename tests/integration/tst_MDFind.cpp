// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/MetadataSearchServices.h"
#include "support/SearchServices.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

namespace {

constexpr auto kTrackerName = "org.freedesktop.Tracker3.Miner.Files"_L1;
constexpr int kTextFiles = 6;

enum Service : quint8 {
    tracker = 1,
    baloo = 2,
    plocate = 4,
    all = tracker | baloo | plocate,
};

} // namespace

/// The built helper over the real services, which have indexed one small home.
class TstMDFind : public QObject
{
    Q_OBJECT

private:
    SearchServices m_services;
    QTemporaryDir m_scratch;
    const QByteArray m_latin = path(u"files/docs/"_s).toUtf8() + "latin\xfc budget";

    [[nodiscard]] QString path(const QString &relative) const { return m_services.path(relative); }

    /// Such that the helper sees these services only.
    [[nodiscard]] QProcessEnvironment environment(int services) const
    {
        QProcessEnvironment environment = m_services.environment();
        if (!(services & tracker)) {
            environment.insert(u"XDG_CACHE_HOME"_s, u"/nonexistent"_s);
            environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nonexistent"_s);
        }
        if (!(services & baloo))
            environment.insert(u"XDG_DATA_HOME"_s, u"/nonexistent"_s);
        if (!(services & plocate))
            environment.remove(u"LOCATE_PATH"_s);
        return environment;
    }

    [[nodiscard]] static std::optional<QByteArray> output(const QString &program,
                                                          const QStringList &arguments,
                                                          const QProcessEnvironment &environment)
    {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(program, arguments);
        if (!process.waitForFinished(SearchServices::kPatience)
            || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
            return std::nullopt;
        return process.readAllStandardOutput();
    }

    /// What the helper prints, of the sample folders, relative to their parent.
    [[nodiscard]] QStringList find(const QStringList &arguments,
                                   const QProcessEnvironment &environment) const
    {
        const auto text = output(QStringLiteral(DUGWISE_MDFIND), arguments, environment);
        if (!text)
            return {u"failed"_s};
        QStringList found;
        for (const QString &line : QString::fromUtf8(*text).split(u'\n', Qt::SkipEmptyParts)) {
            if (line.startsWith(path(u"files/"_s)))
                found.append(line.mid(path(u"files/"_s).size()));
            else if (!line.startsWith(u'/'))
                found.append("no path: "_L1 + line);
        }
        return found;
    }
    [[nodiscard]] QStringList find(const QStringList &arguments, int services) const
    {
        return find(arguments, environment(services));
    }

    [[nodiscard]] bool isTrackerRunning() const
    {
        const auto bus = QDBusConnection::connectToBus(m_services.busAddress(), u"test"_s);
        return bus.interface()->isServiceRegistered(kTrackerName);
    }

    void makeFiles() const
    {
        const auto write = [this](const QString &name, const QByteArray &content) {
            writeFile(path("files/docs/"_L1 + name), content);
        };
        write(u"budget.txt"_s, "sample: budget, budget plan for the kitchen\n");
        write(u"Annual Report 2026.md"_s,
              "sample " + QByteArray("and so on ").repeated(99) + "budget\n");
        write(u"Grüne Mappe 100%/Übersicht Miete.txt"_s, "sample: landlord and tenant, Straße\n");
        write(u"operators.txt"_s, "sample: AND OR NOT NEAR filename type\n");
        write(u"star*[q]?\\.txt"_s, "sample: it's a foo_bar, C++, 3.14, e-mail\n");
        write(u"-l 'x'.txt"_s, "sample: dashed\n");
        write(u"line\nfeed budget"_s, "");
        writeFile(path(u"files/gnome/solo.txt"_s), "");
        writeFile(path(u"files/kde/solo.txt"_s), "");
        writeFile(path(u"files/machine/solo.txt"_s), "");
        const int descriptor = ::creat(m_latin.constData(), 0600);
        QVERIFY(descriptor >= 0);
        ::close(descriptor);
    }

private Q_SLOTS:
    void initTestCase()
    {
        makeFiles();
        const QString docs = path(u"files/docs"_s);
        m_services.startBus();
        m_services.startTracker({docs, path(u"files/gnome"_s)});
        m_services.startBaloo({docs, path(u"files/kde"_s)});
        m_services.updatePlocate(path(u"files"_s));
        for (const Service service : {tracker, baloo}) {
            QTRY_COMPARE_WITH_TIMEOUT(
                find({u"-name"_s, u"solo"_s}, service).size(), 1, SearchServices::kPatience);
            QTRY_COMPARE_WITH_TIMEOUT(
                find({u"sample"_s}, service).size(), kTextFiles, SearchServices::kPatience);
        }
    }

    void findsByName_data()
    {
        QTest::addColumn<int>("services");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("expected");
        const QString report = u"docs/Annual Report 2026.md"_s;
        const QString folder = u"docs/Grüne Mappe 100%"_s;
        const QString rent = folder + u"/Übersicht Miete.txt"_s;
        const QString star = u"docs/star*[q]?\\.txt"_s;
        const auto row = [](int services, const QString &text, const QStringList &expected) {
            const QByteArray name =
                QByteArray::number(services) + ' ' + text.left(30).simplified().toUtf8();
            QTest::newRow(name.constData()) << services << text << expected;
        };
        for (const Service service : {tracker, baloo, plocate}) {
            row(service, u"BUDGET"_s, {u"docs/budget.txt"_s});
            row(service, u"annual report 2026.md"_s, {report});
            row(service, u"2026"_s, {report});
            row(service, u"übersicht"_s, {rent});
            row(service, u"e 100%"_s, service == baloo ? QStringList() : QStringList{folder});
            row(service, u"star*[q]?\\"_s, {star});
            row(service, u"-L '"_s, {u"docs/-l 'x'.txt"_s});
            for (const QString &text : {u"b*dget"_s,
                                        u"[b]udget"_s,
                                        u"budge?"_s,
                                        u"^budget"_s,
                                        u"budget|solo"_s,
                                        u"\"budget\""_s,
                                        u"budget OR operators"_s,
                                        u"filename:budget"_s,
                                        u"\")) } #"_s,
                                        u"\\bbudget"_s,
                                        u"docs/budget"_s,
                                        u"line\nfeed"_s,
                                        u"$(ls)"_s,
                                        u"--help"_s,
                                        u"Report Annual"_s,
                                        QString(100'000, u'b')}) {
                row(service, text, {});
            }
        }
        row(tracker | plocate, u"udget.tx"_s, {u"docs/budget.txt"_s});
        row(0, u"budget"_s, {});
    }
    void findsByName()
    {
        QFETCH(const int, services);
        QFETCH(const QString, text);
        QTEST(find({u"-name"_s, text}, services), "expected");
    }

    void findsByText_data()
    {
        QTest::addColumn<int>("services");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("expected");
        const QString plan = u"docs/budget.txt"_s;
        const QString rent = u"docs/Grüne Mappe 100%/Übersicht Miete.txt"_s;
        const QString operators = u"docs/operators.txt"_s;
        const auto row = [](int services, const QString &text, const QStringList &expected) {
            const QByteArray name =
                QByteArray::number(services) + ' ' + text.left(30).simplified().toUtf8();
            QTest::newRow(name.constData()) << services << text << expected;
        };
        row(tracker, u"budget"_s, {plan, u"docs/Annual Report 2026.md"_s}); // in order
        for (const Service service : {tracker, baloo}) {
            row(service, u"Where is the plan for my KITCHEN?"_s, {plan});
            row(service, u"straße, tenant"_s, {rent});
            row(service, u"it's 3.14 foo_bar C++ e-mail"_s, {u"docs/star*[q]?\\.txt"_s});
            row(service, u"operators"_s, {operators});
            row(service, u"-dashed"_s, {u"docs/-l 'x'.txt"_s});
            row(service, u"\"plan (kitchen"_s, {plan});
            row(service, u"kitchen') } #"_s, {plan});
            row(service, u"landl"_s, {rent}); // words may be begun only
            row(service, u"kitchen NOT plan"_s, {plan});
            row(service, u"^kitchen {plan} -- +plan"_s, {plan});
            for (const QString &text : {u"plan OR tenant"_s,
                                        u"\"plan\" OR \"tenant\""_s,
                                        u"(plan) OR (tenant)"_s,
                                        u"filename:budget"_s,
                                        u"filename=budget.txt"_s,
                                        u"size>9"_s,
                                        u"\" \""_s,
                                        u"()"_s,
                                        u"?!"_s,
                                        QString(100'000, u'"'),
                                        QString(100'000, u'('),
                                        QString(60'000, u'ü')}) {
                row(service, text, {});
            }
            row(service, u"plan kitchen "_s.repeated(8000), {plan});
        }
        row(tracker, u"near the kitchen"_s, {plan}); // it keeps no stop words
        row(tracker, u"AND OR NOT"_s, {});
        row(baloo, u"AND OR NOT"_s, {operators});
        row(baloo, u"type:Text"_s, {});
        row(baloo, u"text : budget"_s, {});
        row(plocate, u"budget"_s, {});
    }
    void findsByText()
    {
        QFETCH(const int, services);
        QFETCH(const QString, text);
        QTEST(find({u"--"_s, text}, services), "expected");
    }

    void theDesktopsOwnComesFirst()
    {
        QProcessEnvironment desktop = environment(all);
        desktop.insert(u"XDG_CURRENT_DESKTOP"_s, u"ubuntu:GNOME"_s);
        const QString gnome = u"gnome/solo.txt"_s;
        const QString kde = u"kde/solo.txt"_s;
        const QString machine = u"machine/solo.txt"_s;
        QCOMPARE(find({u"-name"_s, u"solo"_s}, desktop), QStringList({gnome, kde, machine}));
        desktop.insert(u"XDG_CURRENT_DESKTOP"_s, u"KDE"_s);
        QCOMPARE(find({u"-name"_s, u"solo"_s}, desktop), QStringList({kde, gnome, machine}));
    }

    void aServiceThatHangsCostsTwoSeconds_data()
    {
        QTest::addColumn<bool>("isBaloo");
        QTest::newRow("baloosearch sleeps") << true;
        QTest::newRow("Tracker's index cannot be opened") << false;
    }
    void aServiceThatHangsCostsTwoSeconds()
    {
        QFETCH(const bool, isBaloo);
        QProcessEnvironment hanging = environment(isBaloo ? all : baloo | plocate);
        if (isBaloo) {
            const QString stub = m_scratch.filePath(u"bin/baloosearch"_s);
            writeFile(stub, "#!/bin/sh\nexec sleep 600\n");
            QFile::setPermissions(stub, QFile::ReadOwner | QFile::ExeOwner);
            hanging.insert(u"PATH"_s, m_scratch.filePath(u"bin:"_s) + qEnvironmentVariable("PATH"));
        } else {
            QVERIFY(QDir().mkpath(m_scratch.filePath(u"hanging/tracker3/files"_s)));
            const QString index = m_scratch.filePath(u"hanging/tracker3/files/meta.db"_s);
            QCOMPARE(::mkfifo(qPrintable(index), 0600), 0);
            hanging.insert(u"XDG_CACHE_HOME"_s, m_scratch.filePath(u"hanging"_s));
        }
        QElapsedTimer timer;
        timer.start();
        const QStringList found = find({u"-name"_s, u"solo"_s}, hanging);
        QCOMPARE_GE(timer.elapsed(), 1900);
        QCOMPARE_LT(timer.elapsed(), 8000);
        QCOMPARE(QSet<QString>(found.begin(), found.end()),
                 QSet<QString>({u"gnome/solo.txt"_s, u"kde/solo.txt"_s, u"machine/solo.txt"_s}));
    }

    void tellsWhatIsThere()
    {
        const auto states = [](const QProcessEnvironment &environment) {
            for (const char *name : {"XDG_CACHE_HOME", "XDG_DATA_HOME", "PATH"})
                qputenv(name, environment.value(QString::fromLatin1(name)).toUtf8());
            QList<MetadataSearchService::State> all;
            for (const MetadataSearchService &service : metadataSearchServices())
                all.append(service.state);
            return all.first(2); // whether plocate has a database is up to the machine
        };
        using State = MetadataSearchService::State;
        QProcessEnvironment desktop = environment(all);
        const QByteArray before = qgetenv("PATH");
        QCOMPARE(states(desktop), QList({State::present, State::present}));
        QCOMPARE(states(environment(0)), QList({State::notIndexed, State::notIndexed}));
        desktop.insert(u"PATH"_s, u"/nonexistent"_s);
        QCOMPARE(states(desktop), QList({State::present, State::absent}));
        qputenv("PATH", before);
    }

    void dugwiseAsksTheHelper()
    {
        const auto names = [this](const QStringList &arguments) {
            const auto answer =
                output(QStringLiteral(DUGWISE_PROGRAM), arguments, environment(all));
            QStringList all;
            for (const QJsonValue &result :
                 QJsonDocument::fromJson(answer.value_or("")).object()["results"_L1].toArray())
                all.append(result["name"_L1].toString());
            return all;
        };
        const QStringList request{u"ask"_s, u"--json"_s, u"landlord"_s};
        QCOMPARE(names(request), QStringList{u"Übersicht Miete.txt"_s});
        QCOMPARE(names(request + QStringList{u"--no-system-search"_s}), QStringList());
    }

    void aServiceThatDoesNotRunIsNotStarted()
    {
        QVERIFY(isTrackerRunning());
        m_services.stopTracker();
        QTRY_VERIFY_WITH_TIMEOUT(!isTrackerRunning(), SearchServices::kPatience);
        const QStringList found = find({u"budget"_s}, tracker);
        QCOMPARE(found, QStringList({u"docs/budget.txt"_s, u"docs/Annual Report 2026.md"_s}));
        QCOMPARE(find({u"-name"_s, u"solo"_s}, tracker), QStringList{u"gnome/solo.txt"_s});
        QVERIFY(!isTrackerRunning());
    }

    void aLostIndexIsNotMadeAgain_data()
    {
        QTest::addColumn<std::optional<QByteArray>>("database");
        using Content = std::optional<QByteArray>;
        QTest::newRow("deleted") << Content();
        QTest::newRow("empty") << Content("");
        QTest::newRow("damaged") << Content(QByteArray(5000, 'x'));
    }
    void aLostIndexIsNotMadeAgain()
    {
        QFETCH(const std::optional<QByteArray>, database);
        const QDir folder(path(u"cache/tracker3/files"_s));
        QVERIFY(QFile::remove(folder.filePath(u"meta.db"_s)));
        if (database)
            writeFile(folder.filePath(u"meta.db"_s), *database);
        const QStringList before = folder.entryList(QDir::Files);
        QCOMPARE(find({u"budget"_s}, tracker), QStringList());
        QCOMPARE(readFile(folder.filePath(u"meta.db"_s)), database.value_or(""));
        if (!database) {
            QCOMPARE(folder.entryList(QDir::Files), before);
            writeFile(folder.filePath(u"meta.db"_s), "");
        }
    }

    void misuseEndsWithTwo_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("nothing") << QStringList();
        QTest::newRow("no text") << QStringList{QString()};
        QTest::newRow("a blank text") << QStringList{u" \n"_s};
        QTest::newRow("no name") << QStringList{u"-name"_s};
        QTest::newRow("an option") << QStringList{u"-onlyin"_s};
        QTest::newRow("two texts") << QStringList{u"a"_s, u"b"_s};
    }
    void misuseEndsWithTwo()
    {
        QFETCH(const QStringList, arguments);
        QProcess process;
        process.start(QStringLiteral(DUGWISE_MDFIND), arguments);
        QVERIFY(process.waitForFinished(SearchServices::kPatience));
        QCOMPARE(process.exitCode(), 2);
        QCOMPARE(process.readAllStandardOutput(), QByteArray());
        QCOMPARE(process.readAllStandardError().count('\n'), 1);
    }

    void cleanupTestCase()
    {
        ::unlink(m_latin.constData()); // QTemporaryDir cannot
        m_services.stop();
        QTRY_VERIFY_WITH_TIMEOUT(SearchServices::isEveryProcessGone(), SearchServices::kPatience);
    }
};

QTEST_GUILESS_MAIN(TstMDFind)
#include "tst_MDFind.moc"
