// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/EvolutionDataServer.h"

#include "Platform/Linux/EvolutionSources.h"
#include "Platform/Linux/SessionBusProbe.h"

#include <QCryptographicHash>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDateTime>
#include <QEventLoop>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QTimeZone>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr auto kBus = "org.freedesktop.DBus"_L1;
constexpr auto kSourceManager = "org.gnome.evolution.dataserver.Sources5"_L1;
constexpr auto kPrefix = "org.gnome.evolution.dataserver."_L1;
constexpr auto kPathPrefix = "/org/gnome/evolution/dataserver/"_L1;
constexpr qint64 kDay = 86'400;
constexpr int kMostZones = 32; // of a calendar

/// How calendars and address books differ on the bus.
struct Kind
{
    QByteArrayView group; ///< of a source's key file
    QLatin1StringView service;
    QLatin1StringView factory; ///< its path, and its interface
    QLatin1StringView open;
    QLatin1StringView store;
    QLatin1StringView find;
};
constexpr Kind kCalendars{"Calendar",
                          "org.gnome.evolution.dataserver.Calendar8"_L1,
                          "CalendarFactory"_L1,
                          "OpenCalendar"_L1,
                          "Calendar"_L1,
                          "GetObjectList"_L1};
constexpr Kind kAddressBooks{"Address Book",
                             "org.gnome.evolution.dataserver.AddressBook10"_L1,
                             "AddressBookFactory"_L1,
                             "OpenAddressBook"_L1,
                             "AddressBook"_L1,
                             "GetContactList"_L1};

int milliseconds(const QDeadlineTimer &deadline)
{
    return static_cast<int>(std::max<qint64>(deadline.remainingTime(), 1));
}

/// A connection of our own: whoever closes the common one would close it for all.
class Connection
{
public:
    explicit Connection(const QDeadlineTimer &deadline)
        : m_name(u"evolution-%1"_s.arg(reinterpret_cast<quintptr>(this)))
        , m_bus(m_name)
    {
        // Connecting takes as long as the bus likes.
        if (sessionBusAnswers(deadline))
            m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_name);
    }
    Q_DISABLE_COPY_MOVE(Connection)
    ~Connection() { QDBusConnection::disconnectFromBus(m_name); }

    [[nodiscard]] const QDBusConnection &bus() const { return m_bus; }

    /// The first value of the bus's own answer.
    [[nodiscard]] QVariant
    ask(const QString &method, const QVariantList &arguments, const QDeadlineTimer &deadline) const
    {
        QDBusMessage call =
            QDBusMessage::createMethodCall(kBus, u"/org/freedesktop/DBus"_s, kBus, method);
        call.setArguments(arguments);
        return m_bus.call(call, QDBus::Block, milliseconds(deadline)).arguments().value(0);
    }

private:
    QString m_name;
    QDBusConnection m_bus;
};

/// Asks all stores of a kind at once, and takes what is there when the deadline comes. The server
/// drops what was opened when the connection ends.
class Conversation
{
public:
    Conversation(const Connection &connection,
                 const Kind &kind,
                 QString query,
                 const QDeadlineTimer &deadline)
        : m_bus(connection.bus())
        , m_kind(kind)
        , m_query(std::move(query))
        , m_deadline(deadline)
    {}

    [[nodiscard]] QList<StoreDocument> run()
    {
        call({kSourceManager,
              kPathPrefix + "SourceManager"_L1,
              u"org.freedesktop.DBus.ObjectManager"_s,
              u"GetManagedObjects"_s},
             {},
             [this](const QDBusMessage &reply) { openStores(reply); });
        if (m_waiting > 0) {
            QTimer::singleShot(milliseconds(m_deadline), &m_loop, &QEventLoop::quit);
            m_loop.exec();
        }
        QList<StoreDocument> documents;
        for (auto text = m_texts.cbegin(); text != m_texts.cend(); ++text) {
            documents.append({
                .name = text.key(),
                .state = QCryptographicHash::hash(*text, QCryptographicHash::Sha1),
                .text = [bytes = *text] { return bytes; },
            });
        }
        return documents;
    }

private:
    struct Method
    {
        QString service;
        QString path;
        QString interface;
        QString name;
    };
    using Handler = std::function<void(const QDBusMessage &reply)>;

    /// An error is the end of whatever was asked for.
    void call(const Method &method, const QVariantList &arguments, const Handler &handler)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(
            method.service, method.path, method.interface, method.name);
        message.setArguments(arguments);
        const QDBusPendingCall pending = m_bus.asyncCall(message, milliseconds(m_deadline));
        auto *const watcher = new QDBusPendingCallWatcher(pending, &m_loop);
        ++m_waiting;
        QObject::connect(
            watcher, &QDBusPendingCallWatcher::finished, &m_loop, [this, watcher, handler] {
                watcher->deleteLater();
                if (!watcher->isError())
                    handler(watcher->reply());
                if (--m_waiting == 0)
                    m_loop.quit();
            });
    }

    void openStores(const QDBusMessage &reply)
    {
        for (const QString &uid : enabledSources(reply.arguments().value(0), m_kind.group)) {
            call({m_kind.service,
                  kPathPrefix + m_kind.factory,
                  kPrefix + m_kind.factory,
                  m_kind.open},
                 {uid},
                 [this, uid](const QDBusMessage &opened) {
                     const QVariantList store = opened.arguments();
                     openStore(uid, store.value(1).toString(), store.value(0).toString());
                 });
        }
    }

    void openStore(const QString &uid, const QString &service, const QString &path)
    {
        const QString interface = kPrefix + m_kind.store;
        call({service, path, interface, u"Open"_s}, {}, [=, this](const QDBusMessage &) {
            call({service, path, interface, m_kind.find},
                 {m_query},
                 [=, this](const QDBusMessage &found) {
                     const QString text =
                         found.arguments().value(0).toStringList().join(u"\r\n"_s) + "\r\n"_L1;
                     m_texts.insert(uid, text.toUtf8());
                     for (const QString &zone : foreignZones(text))
                         addZone(uid, {service, path, interface, u"GetTimezone"_s}, zone);
                 });
        });
    }

    /// The zones that a text names and that only the server knows.
    [[nodiscard]] static QSet<QString> foreignZones(const QString &text)
    {
        static const QRegularExpression kZone(u";TZID=(?:\"([^\"\\r\\n]+)\"|([^\":;\\r\\n]+))"_s);
        QSet<QString> names;
        auto matches = kZone.globalMatch(text);
        while (matches.hasNext() && names.size() < kMostZones) {
            const QRegularExpressionMatch match = matches.next();
            const QString name = match.captured(1) + match.captured(2);
            if (!name.startsWith("/freeassociation.sourceforge.net/"_L1) // a name of the system's
                && !QTimeZone::isTimeZoneIdAvailable(name.toUtf8()))
                names.insert(name);
        }
        return names;
    }

    void addZone(const QString &uid, const Method &method, const QString &zone)
    {
        call(method, {zone}, [this, uid](const QDBusMessage &reply) {
            m_texts[uid] += reply.arguments().value(0).toString().toUtf8() + "\r\n";
        });
    }

    QDBusConnection m_bus;
    Kind m_kind;
    QString m_query;
    QDeadlineTimer m_deadline;
    QMap<QString, QByteArray> m_texts; ///< by the stores' UIDs
    int m_waiting = 0;                 ///< for replies
    QEventLoop m_loop;                 ///< goes first, and with it what would still be heard
};

/// Whether the server runs, or may and can be started.
bool isAskable(const Connection &connection, const QDeadlineTimer &deadline, bool mayStart)
{
    const QString name(kSourceManager);
    return connection.bus().isConnected()
           && (connection.ask(u"NameHasOwner"_s, {name}, deadline).toBool()
               || (mayStart
                   && connection.ask(u"ListActivatableNames"_s, {}, deadline)
                          .toStringList()
                          .contains(name)));
}

/// In UTC, as the server's queries have it.
QString timeText(Instant instant, qint64 later)
{
    const double seconds = std::clamp(instant.unixSeconds(), -6e10, 2.5e11); // years with 4 digits
    return QDateTime::fromSecsSinceEpoch(static_cast<qint64>(seconds) + later, Qt::UTC)
        .toString(u"yyyyMMdd'T'HHmmss'Z'"_s);
}

} // namespace

EvolutionDataServer::EvolutionDataServer(const StandardFolders &folders)
    : m_hasKeptSomething(QFileInfo::exists(folders.configHome() + "/evolution"_L1)
                         || QFileInfo::exists(folders.dataHome() + "/evolution"_L1))
{}

bool EvolutionDataServer::isThere(const QDeadlineTimer &deadline) const
{
    return isAskable(Connection(deadline), deadline, m_hasKeptSomething);
}

QList<StoreDocument> EvolutionDataServer::calendars(const DateIntentParser::DateRange &span,
                                                    const QDeadlineTimer &deadline) const
{
    // A day more on both sides, for times that are local ones. All that recur, because one whose
    // occurrence lies in the span may have moved it out.
    const QString query = uR"((or (occur-in-time-range? (make-time "%1") (make-time "%2"))
                                  (has-recurrences?)))"_s.arg(timeText(span.start, -kDay),
                                                              timeText(span.end, kDay));
    const Connection connection(deadline);
    return isAskable(connection, deadline, m_hasKeptSomething)
               ? Conversation(connection, kCalendars, query, deadline).run()
               : QList<StoreDocument>();
}

QList<StoreDocument> EvolutionDataServer::addressBooks(const QStringList &words,
                                                       const QDeadlineTimer &deadline) const
{
    QString query = u"(and"_s;
    for (const QString &word : words)
        query += uR"( (or (contains "full_name" "%1") (contains "given_name" "%1")
                      (contains "family_name" "%1") (contains "nickname" "%1")))"_s.arg(word);
    const Connection connection(deadline);
    return isAskable(connection, deadline, m_hasKeptSomething)
               ? Conversation(connection, kAddressBooks, query + u')', deadline).run()
               : QList<StoreDocument>();
}

} // namespace dugwise
