// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/AccessRequest.h"
#include "Views/ImageProviders.h"
#include "Views/NoNetwork.h"
#include "Views/Session.h"
#include "support/Fakes.h"
#include "support/SampleFiles.h"
#include "support/SampleHome.h"

#include <QAccessible>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickStyle>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtQuickTest>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

namespace {

/// A home with a few files, and the application over it; what the desktop would do is kept.
class Sample : public QObject
{
    Q_OBJECT
    Q_PROPERTY(dugwise::Session *session READ session NOTIFY sessionChanged)
    Q_PROPERTY(bool isReady READ isReady NOTIFY readyChanged)
    Q_PROPERTY(QStringList requests READ requests NOTIFY requestsChanged)

public:
    Sample()
    {
        m_server.listen(QHostAddress::LocalHost);
        connect(&m_server, &QTcpServer::newConnection, this, [this] { ++m_visits; });
        makeHome();
        start();
    }

    /// Another home, with a calendar and an address book that may be asked for.
    Q_INVOKABLE void moveToSources()
    {
        stop();
        makeHome();
        install<FakeEventStore>(m_home->platform.eventStore);
        install<FakeContactStore>(m_home->platform.contactStore);
        start();
    }
    /// What the person has answered: a truth value, or nothing.
    Q_INVOKABLE QVariant accessAnswer(const QString &name) const
    {
        const auto answer =
            dugwise::accessAnswer(m_home->platform.userDefaults, *personalDataNamed(name));
        return answer ? QVariant(*answer) : QVariant();
    }

    [[nodiscard]] Session *session() const { return m_session.get(); }
    [[nodiscard]] bool isReady() const { return !m_indexer->isBusy(); }
    /// What has been asked so far.
    [[nodiscard]] QStringList requests() const
    {
        QStringList all;
        for (const ChatMessage &message : m_state->messages()) {
            if (message.isUser)
                all.append(message.content);
        }
        return all;
    }
    /// Of a desktop on which nothing moves for show.
    Q_INVOKABLE void setTextScale(double scale, bool isDark = false)
    {
        m_appearance->handler({.isDark = isDark, .reducesMotion = true, .textScale = scale});
    }
    Q_INVOKABLE void setConnected(bool isConnected)
    {
        m_path.updateHandler({.isSatisfied = isConnected});
    }
    /// A stored switch: a truth value, or nothing.
    Q_INVOKABLE QVariant stored(const QString &key) const
    {
        const std::optional<bool> value = m_home->platform.userDefaults.boolean(key);
        return value ? QVariant(*value) : QVariant();
    }
    Q_INVOKABLE QUrl extraFolder() const { return QUrl::fromLocalFile(m_home->path(u"Extra"_s)); }
    /// Has that many empty folders indexed beside the others.
    Q_INVOKABLE void addFolders(int count)
    {
        for (int i = 0; i < count; ++i) {
            const QString path = m_home->path(u"Many/%1"_s.arg(i));
            QDir().mkpath(path);
            m_indexer->addFolderURL(QUrl::fromLocalFile(path));
        }
    }
    /// A picture on a server of this machine, and how often it was asked for.
    Q_INVOKABLE QString picture() const
    {
        return u"http://127.0.0.1:%1/picture.png"_s.arg(m_server.serverPort());
    }
    Q_INVOKABLE int visits() const { return m_visits; }
    Q_INVOKABLE void visit()
    {
        QTcpSocket visitor;
        visitor.connectToHost(QHostAddress::LocalHost, m_server.serverPort());
        visitor.waitForConnected();
    }
    /// Does to a control what an assistive program does to it.
    Q_INVOKABLE static void act(QObject *control, const QString &action)
    {
        QAccessibleInterface *const seen = QAccessible::queryAccessibleInterface(control);
        QAccessibleActionInterface *const actions = seen ? seen->actionInterface() : nullptr;
        QVERIFY(actions);
        actions->doAction(action);
    }
    /// Whether there is a language model, and what it answers, once.
    Q_INVOKABLE void setModel(bool isThere, const QString &answer = {})
    {
        m_model->isThere = isThere;
        m_model->texts.clear();
        if (!answer.isEmpty())
            m_model->texts.append(answer);
    }
    /// Writes a file of the home anew, of which the index knows nothing.
    Q_INVOKABLE void write(const QString &file, const QString &text)
    {
        writeFile(m_home->path(file), text.toUtf8());
    }
    /// Moves a file of the home away, or back.
    Q_INVOKABLE void hide(const QString &file, bool isHidden)
    {
        const QString hidden = file + ".hidden"_L1;
        QVERIFY(QFile::rename(m_home->path(isHidden ? file : hidden),
                              m_home->path(isHidden ? hidden : file)));
    }
    Q_INVOKABLE QStringList opened() const { return m_workspace->opened; }
    Q_INVOKABLE QStringList shown() const { return m_workspace->shown; }

Q_SIGNALS:
    void sessionChanged();
    void readyChanged();
    void requestsChanged();

private:
    void makeHome()
    {
        m_home = std::make_unique<SampleHome>();
        const QString odd = QString(60, u'W') + u" budget\nof\u202Efdp.txt"_s;
        writeFile(m_home->path(u"Documents/budget <img src=x> **1**.txt"_s), "paint and nails");
        writeFile(m_home->path(u"Documents/budget 2026.md"_s), "a budget");
        writeFile(m_home->path(u"Downloads/lease.txt"_s), "landlord and tenant");
        writeFile(m_home->path(u"Documents/"_s + odd), "");
        writeFile(m_home->path(u"Extra/plan.txt"_s), "a plan");
        writeFile(m_home->path(u"Downloads/letter.docx"_s), "");
    }
    void start()
    {
        Platform &platform = m_home->platform;
        m_appearance = &install<FakeDesktopAppearance>(platform.desktopAppearance);
        m_workspace = &install<FakeWorkspace>(platform.workspace);
        m_model = &install<FakeLanguageModel>(platform.languageModel);
        m_model->isThere = false;
        install<DialogFolderPicker>(platform.folderPicker);
        install<SheetAccessPrompt>(platform.accessPrompt);
        m_state = std::make_unique<AppState>(platform, AppServices(platform));
        m_indexer = std::make_unique<FileIndexer>(platform);
        m_network = std::make_unique<NetworkMonitor>(&m_path);
        m_session = std::make_unique<Session>(platform, *m_state, *m_indexer, *m_network);
        setTextScale(1);
        connect(m_indexer.get(), &FileIndexer::settled, this, &Sample::readyChanged);
        connect(m_state.get(), &AppState::messagesChanged, this, &Sample::requestsChanged);
        Q_EMIT sessionChanged();
    }
    void stop()
    {
        m_session.reset();
        m_network.reset();
        m_indexer.reset();
        m_state.reset();
    }

    std::unique_ptr<SampleHome> m_home;
    FakeWorkspace *m_workspace = nullptr;
    FakeLanguageModel *m_model = nullptr;
    FakeDesktopAppearance *m_appearance = nullptr;
    FakeNetworkPathMonitor m_path;
    QTcpServer m_server;
    int m_visits = 0;
    std::unique_ptr<AppState> m_state;
    std::unique_ptr<FileIndexer> m_indexer;
    std::unique_ptr<NetworkMonitor> m_network;
    std::unique_ptr<Session> m_session;
};

} // namespace

/// Makes the engine of the tests in this folder as the window makes its own.
class Setup : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void applicationAvailable()
    {
        QQuickStyle::setStyle(u"Basic"_s);
        QCoreApplication::setApplicationVersion(u"1.2.3"_s);
    }
    void qmlEngineAvailable(QQmlEngine *engine)
    {
        addImageProviders(*engine);
        denyNetwork(*engine);
        m_sample = std::make_unique<Sample>();
        engine->rootContext()->setContextProperty(u"sample"_s, m_sample.get());
    }
    void cleanupTestCase() { m_sample.reset(); }

private:
    std::unique_ptr<Sample> m_sample;
};

QUICK_TEST_MAIN_WITH_SETUP(dugwise, Setup)
#include "main.moc"
