// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Window.h"

#include "Views/ImageProviders.h"
#include "Views/NoNetwork.h"

#include <QDir>
#include <QGuiApplication>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QSGRendererInterface>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

/// Without one, painting in software takes less time and memory than emulating one.
bool hasGraphicsProcessor()
{
    return !QDir(u"/dev/dri"_s).entryList({u"renderD*"_s}, QDir::System).isEmpty();
}

} // namespace

Window::Window(Session &session)
{
    if (!hasGraphicsProcessor())
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QQuickStyle::setStyle(u"Basic"_s);
    denyNetwork(m_engine);
    addImageProviders(m_engine);
    m_engine.setInitialProperties({{u"session"_s, QVariant::fromValue(&session)}});
    m_engine.load(QUrl(u"qrc:/qt-project.org/imports/Dugwise/qml/Main.qml"_s));
    if (QQuickWindow *const shown = view()) {
        QObject::connect(shown,
                         &QQuickWindow::sceneGraphError,
                         shown,
                         [](QQuickWindow::SceneGraphError /*error*/, const QString &message) {
                             qWarning("%s", qPrintable(message));
                             QCoreApplication::exit(1);
                         });
    }
}

QQuickWindow *Window::view() const
{
    return qobject_cast<QQuickWindow *>(m_engine.rootObjects().value(0));
}

void Window::raise(const QString &activationToken)
{
    QQuickWindow *const window = view();
    if (window == nullptr)
        return;
    // Qt's Wayland client takes the token from there.
    const bool needsToken = QGuiApplication::platformName().startsWith("wayland"_L1);
    if (needsToken)
        qputenv("XDG_ACTIVATION_TOKEN", activationToken.toUtf8());
    window->setWindowStates(window->windowStates() & ~Qt::WindowMinimized);
    window->setVisible(true); // show() would make a maximised window normal
    window->raise();
    window->requestActivate();
    if (needsToken)
        qunsetenv("XDG_ACTIVATION_TOKEN");
}

} // namespace dugwise
