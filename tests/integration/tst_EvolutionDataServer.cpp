// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/DesktopContactStore.h"
#include "Platform/Linux/DesktopEventStore.h"
#include "support/LocalZone.h"
#include "support/PrivateBus.h"
#include "support/SampleHome.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QElapsedTimer>
#include <QtConcurrent/QtConcurrent>

#include <csignal>
#include <optional>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

namespace {

constexpr auto kPrefix = "org.gnome.evolution.dataserver."_L1;
/// Of one source, with all that may hold a thread up around it on a busy machine.
constexpr int kLongest = 4000; // milliseconds

} // namespace

/// The stores over the real server, which keeps one small home.
class TstEvolutionDataServer : public QObject
{
    Q_OBJECT

private:
    std::optional<SampleHome> m_home;
    std::optional<PrivateBus> m_bus;
    std::optional<DesktopEventStore> m_events;
    std::optional<DesktopContactStore> m_contacts;

    [[nodiscard]] QDBusConnection bus() const
    {
        return QDBusConnection::connectToBus(m_bus->address(), m_bus->address());
    }

    /// Each source has this time.
    void useStores(std::chrono::milliseconds time)
    {
        const auto &folders = m_home->platform.folders;
        m_events.emplace(folders, QStringLiteral(DUGWISE_AGENDA), time);
        m_contacts.emplace(folders, QStringLiteral(DUGWISE_AGENDA), time);
    }

    /// What a call returns.
    [[nodiscard]] QVariantList call(const QString &service,
                                    const QString &path,
                                    const QString &interface,
                                    const QString &method,
                                    const QVariantList &arguments) const
    {
        QDBusMessage message = QDBusMessage::createMethodCall(
            service, "/org/gnome/evolution/dataserver/"_L1 + path, kPrefix + interface, method);
        message.setArguments(arguments);
        const QDBusMessage reply = bus().call(message, QDBus::Block, PrivateBus::kPatience);
        if (reply.type() == QDBusMessage::ErrorMessage)
            qWarning("%s: %s", qPrintable(method), qPrintable(reply.errorMessage()));
        return reply.arguments();
    }

    /// Has the server change a calendar or an address book.
    void change(const QString &kind,
                const QString &service,
                const QString &source,
                const QString &method,
                const QVariantList &arguments) const
    {
        const QString factory = kind + "Factory"_L1;
        const QVariantList opened =
            call(kPrefix + service, factory, factory, "Open"_L1 + kind, {source});
        const QString path =
            opened.value(0).toString().mid(QString("/org/gnome/evolution/dataserver/"_L1).size());
        const QString name = opened.value(1).toString();
        QVERIFY(!call(name, path, kind, u"Open"_s, {}).isEmpty());
        QDBusMessage message = QDBusMessage::createMethodCall(
            name, opened.value(0).toString(), kPrefix + kind, method);
        message.setArguments(arguments);
        const QDBusMessage reply = bus().call(message, QDBus::Block, PrivateBus::kPatience);
        QVERIFY2(reply.type() == QDBusMessage::ReplyMessage, qPrintable(reply.errorMessage()));
    }
    void changeEvents(const QString &method, const QVariantList &arguments) const
    {
        change(u"Calendar"_s, u"Calendar8"_s, u"system-calendar"_s, method, arguments);
    }
    void createEvents(const QStringList &events) const
    {
        changeEvents(u"CreateObjects"_s, {events, 0U});
    }
    void createContacts(const QStringList &cards) const
    {
        change(u"AddressBook"_s,
               u"AddressBook10"_s,
               u"system-address-book"_s,
               u"CreateContacts"_s,
               {cards, 0U});
    }

    /// "DAY TIME TITLE" of each of 2026, in UTC.
    [[nodiscard]] QStringList find(const QString &from = u"01-01"_s,
                                   const QString &to = u"12-31"_s) const
    {
        QStringList found;
        const auto day = [](const QString &text) { return at(u"2026-%1T00:00:00Z"_s.arg(text)); };
        for (const StoredEvent &event : m_events->eventsIn({day(from), day(to)}))
            found.append(QDateTime::fromSecsSinceEpoch(
                             static_cast<qint64>(event.start.unixSeconds()), Qt::UTC)
                             .toString(u"MM-dd hh:mm "_s)
                         + event.title);
        return found;
    }
    [[nodiscard]] QStringList named(const QString &name) const
    {
        QStringList found;
        for (const StoredContact &contact : m_contacts->contactsNamed(name))
            found.append(contact.givenName + u'/' + contact.familyName + u' '
                         + contact.emails.join(u',') + u' ' + contact.phoneNumbers.join(u','));
        return found;
    }

    /// A service file of the server's source manager that starts this program.
    void writeService(const QByteArray &program) const
    {
        writeFile(m_home->path(u"services/a.service"_s),
                  "[D-BUS Service]\nName=org.gnome.evolution.dataserver.Sources5\nExec=" + program
                      + '\n');
    }
    /// An event and a contact of another source, to be found whatever the server does.
    void writeFiles() const
    {
        writeFile(m_home->path(u".calendars/a.ics"_s),
                  "BEGIN:VEVENT\nSUMMARY:File\nDTSTART:20260310T100000Z\nEND:VEVENT\n");
        writeFile(m_home->path(u".contacts/a.vcf"_s), "BEGIN:VCARD\nN:File;Sarah\nEND:VCARD\n");
    }

private Q_SLOTS:
    void init()
    {
        setZone(u"UTC"_s);
        m_home.emplace();
        useStores(std::chrono::seconds(PrivateBus::kPatience / 1000));
    }
    void cleanup()
    {
        if (m_bus)
            QDBusConnection::disconnectFromBus(m_bus->address());
        m_bus.reset();
    }

    void readsEvents()
    {
        m_bus.emplace(m_home->folder.path());
        QVERIFY(QDir().mkpath(m_home->path(u".config/evolution"_s)));
        createEvents(
            {u"BEGIN:VEVENT\r\nUID:1\r\nSUMMARY:Sarah\\, sync\r\nLOCATION:Here\r\n"
             "DESCRIPTION:About\\nit\r\nDTSTART:20260310T140000Z\r\nDTEND:20260310T150000Z\r\n"
             "END:VEVENT\r\n"_s,
             u"BEGIN:VEVENT\r\nUID:2\r\nSUMMARY:Weekly\r\n"
             "DTSTART;TZID=/freeassociation.sourceforge.net/Europe/Berlin:20260302T090000\r\n"
             "DTEND;TZID=/freeassociation.sourceforge.net/Europe/Berlin:20260302T100000\r\n"
             "RRULE:FREQ=WEEKLY;COUNT=6\r\nEXDATE:20260316T080000Z\r\nEND:VEVENT\r\n"_s,
             u"BEGIN:VEVENT\r\nUID:3\r\nSUMMARY:Day\r\nDTSTART;VALUE=DATE:20260401\r\n"
             "DTEND;VALUE=DATE:20260402\r\nEND:VEVENT\r\n"_s,
             u"BEGIN:VEVENT\r\nUID:4\r\nSUMMARY:Before\r\nDTSTART:20250310T140000Z\r\n"
             "END:VEVENT\r\n"_s});
        // One of the occurrences, moved to the summer.
        const QString moved =
            u"BEGIN:VEVENT\r\nUID:2\r\nSUMMARY:Moved\r\n"
            "RECURRENCE-ID;TZID=/freeassociation.sourceforge.net/Europe/Berlin:"
            "20260309T090000\r\nDTSTART:20260701T090000Z\r\nDTEND:20260701T100000Z\r\n"
            "END:VEVENT\r\n"_s;
        changeEvents(u"ModifyObjects"_s, {QStringList{moved}, u"this"_s, 0U});
        const QStringList all{u"03-02 08:00 Weekly"_s,
                              u"03-10 14:00 Sarah, sync"_s,
                              u"03-23 08:00 Weekly"_s,
                              u"03-30 07:00 Weekly"_s,
                              u"04-01 00:00 Day"_s,
                              u"04-06 07:00 Weekly"_s,
                              u"07-01 09:00 Moved"_s};
        QTRY_COMPARE_WITH_TIMEOUT(find(), all, PrivateBus::kPatience);
        // Neither where it was, nor anything that lies elsewhere.
        QCOMPARE(find(u"03-05"_s, u"03-20"_s), QStringList{u"03-10 14:00 Sarah, sync"_s});
        const StoredEvent event =
            m_events->eventsIn({at(u"2026-03-10T14:30:00Z"_s), at(u"2026-03-10T14:31:00Z"_s)})
                .value(0);
        QCOMPARE(event.notes, u"About\nit"_s);
        QCOMPARE(event.location, u"Here"_s);
        QCOMPARE(event.end, at(u"2026-03-10T15:00:00Z"_s));
        QCOMPARE(m_events->sources(), QStringList{u"Evolution Data Server"_s});

        // The same ones in a file count once; a new one is there at once.
        writeFile(m_home->path(u".calendars/a.ics"_s),
                  "BEGIN:VEVENT\nUID:1\nSUMMARY:Copy\nDTSTART:20260310T140000Z\nEND:VEVENT\n"
                  "BEGIN:VEVENT\nUID:4\nSUMMARY:File\nDTSTART:20260310T140000Z\nEND:VEVENT\n");
        createEvents({u"BEGIN:VEVENT\r\nUID:5\r\nSUMMARY:New\r\nDTSTART:20260311T140000Z\r\n"
                      "END:VEVENT\r\n"_s});
        QCOMPARE(find(u"03-10"_s, u"03-12"_s),
                 (QStringList{
                     u"03-10 14:00 Sarah, sync"_s, u"03-10 14:00 File"_s, u"03-11 14:00 New"_s}));
        // From any thread.
        QCOMPARE(QtConcurrent::run([this] { return find(u"03-11"_s, u"03-12"_s); }).result(),
                 QStringList{u"03-11 14:00 New"_s});
    }

    void readsContacts()
    {
        m_bus.emplace(m_home->folder.path());
        writeFiles();
        createContacts({u"BEGIN:VCARD\r\nVERSION:3.0\r\nN:Lee;Sarah;;;\r\nFN:Sarah Lee\r\n"
                        "EMAIL:sarah@example.org\r\nEMAIL:lee@example.org\r\nTEL:+1 555 0100\r\n"
                        "END:VCARD\r\n"_s,
                        u"BEGIN:VCARD\r\nVERSION:3.0\r\nN:;Zo\u00eb;;;\r\nFN:Zo\u00eb\r\n"
                        "NICKNAME:Bunny\r\nEND:VCARD\r\n"_s,
                        u"BEGIN:VCARD\r\nVERSION:3.0\r\nN:Rosarah;Ann;;;\r\nFN:Ann Rosarah\r\n"
                        "END:VCARD\r\n"_s,
                        u"BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Sarah's friends\r\n"
                        "X-EVOLUTION-LIST:TRUE\r\nEMAIL:a@example.org\r\nEND:VCARD\r\n"_s});
        const QStringList sarahs{u"Sarah/Lee sarah@example.org,lee@example.org +1 555 0100"_s,
                                 u"Sarah/File  "_s};
        QTRY_COMPARE_WITH_TIMEOUT(named(u"sarah"_s), sarahs, PrivateBus::kPatience);
        QCOMPARE(named(u"SARAH lee"_s), sarahs.first(1));
        QCOMPARE(named(u"zoe"_s), QStringList{u"Zoë/  "_s});
        QCOMPARE(named(u"bunny"_s), QStringList{u"Zoë/  "_s});
        QCOMPARE(named(u"\") (contains \"full_name\" \""_s), QStringList());
        QCOMPARE(m_contacts->sources(),
                 (QStringList{u"Evolution Data Server"_s, u"folder ~/.contacts"_s}));
    }

    void isNotStartedForNothing()
    {
        m_bus.emplace(m_home->folder.path());
        writeFiles();
        QCOMPARE(find(), QStringList{u"03-10 10:00 File"_s});
        QCOMPARE(named(u"sarah"_s), QStringList{u"Sarah/File  "_s});
        QCOMPARE(m_events->sources(), QStringList{u"folder ~/.calendars"_s});
        QVERIFY(!QFile::exists(m_home->path(u".config"_s)));
        // It has kept something here before: now it would be, but it is not for a list of sources.
        QVERIFY(QDir().mkpath(m_home->path(u".local/share/evolution"_s)));
        QCOMPARE(m_events->sources().size(), 2);
        QVERIFY(!QFile::exists(m_home->path(u".config"_s)));
        QTRY_VERIFY_WITH_TIMEOUT(
            (void(find()), QFile::exists(m_home->path(u".config/evolution"_s))),
            PrivateBus::kPatience);
    }

    void othersAreFoundWithoutIt_data()
    {
        QTest::addColumn<QByteArray>("program"); // that stands for the server
        QTest::addColumn<bool>("isListed");
        QTest::newRow("not installed") << QByteArray() << false;
        QTest::newRow("fails to start") << QByteArray("/bin/false") << true;
        QTest::newRow("hangs when it is started") << QByteArray("/bin/sleep 30") << true;
    }
    void othersAreFoundWithoutIt()
    {
        QFETCH(const QByteArray, program);
        QFETCH(const bool, isListed);
        QVERIFY(QDir().mkpath(m_home->path(u"services"_s)));
        QVERIFY(QDir().mkpath(m_home->path(u".config/evolution"_s)));
        if (!program.isEmpty())
            writeService(program);
        m_bus.emplace(m_home->folder.path(), m_home->path(u"services"_s));
        writeFiles();
        useStores(std::chrono::seconds(1));
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(find(), QStringList{u"03-10 10:00 File"_s});
        QCOMPARE(named(u"sarah"_s), QStringList{u"Sarah/File  "_s});
        QCOMPARE(m_events->sources().contains(u"Evolution Data Server"_s), isListed);
        QVERIFY(timer.elapsed() < 2 * kLongest);
    }

    void aBusThatHangsIsNone()
    {
        m_bus.emplace(m_home->folder.path());
        QVERIFY(QDir().mkpath(m_home->path(u".config/evolution"_s)));
        writeFiles();
        ::kill(static_cast<pid_t>(m_bus->processId()), SIGSTOP);
        useStores(std::chrono::seconds(1));
        QElapsedTimer timer;
        timer.start();
        const QStringList found = find();
        const QStringList sources = m_contacts->sources();
        const qint64 elapsed = timer.elapsed();
        ::kill(static_cast<pid_t>(m_bus->processId()), SIGCONT);
        QCOMPARE(found, QStringList{u"03-10 10:00 File"_s});
        QCOMPARE(sources, QStringList{u"folder ~/.contacts"_s});
        QVERIFY(elapsed < 2 * kLongest);
    }

    void diesAndComesBack()
    {
        m_bus.emplace(m_home->folder.path());
        createEvents({u"BEGIN:VEVENT\r\nUID:1\r\nSUMMARY:Kept\r\nDTSTART:20260310T140000Z\r\n"
                      "END:VEVENT\r\n"_s});
        const QStringList kept{u"03-10 14:00 Kept"_s};
        QTRY_COMPARE_WITH_TIMEOUT(find(), kept, PrivateBus::kPatience);
        const auto processOf = [this](const QString &service) {
            QDBusMessage message = QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s,
                                                                  u"/"_s,
                                                                  u"org.freedesktop.DBus"_s,
                                                                  u"GetConnectionUnixProcessID"_s);
            message.setArguments({QString(kPrefix + service)});
            return QDBusReply<uint>(bus().call(message)).value();
        };
        const auto factory = static_cast<pid_t>(processOf(u"Calendar8"_s));
        QVERIFY(factory > 0);
        // It answers nothing any more, and then it is gone.
        ::kill(factory, SIGSTOP);
        useStores(std::chrono::seconds(1));
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(find(), QStringList());
        QVERIFY(timer.elapsed() < kLongest);
        ::kill(factory, SIGKILL);
        QTRY_COMPARE_WITH_TIMEOUT(find(), kept, PrivateBus::kPatience);
    }
};

QTEST_GUILESS_MAIN(TstEvolutionDataServer)
#include "tst_EvolutionDataServer.moc"
