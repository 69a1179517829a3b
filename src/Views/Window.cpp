// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Window.h"

#include "Views/ImageProviders.h"

#include <QDir>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QQmlNetworkAccessManagerFactory>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QSGRendererInterface>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

/// Answers every request with nothing: what the views show is on this machine.
class NoNetwork final : public QNetworkAccessManager
{
    using QNetworkAccessManager::QNetworkAccessManager;

protected:
    QNetworkReply *
    createRequest(Operation /*operation*/, const QNetworkRequest &, QIODevice * /*data*/) override
    {
        const QNetworkRequest nothing(QUrl(u"data:,"_s));
        return QNetworkAccessManager::createRequest(GetOperation, nothing, nullptr);
    }
};

/// Without one, painting in software takes less time and memory than emulating one.
bool hasGraphicsProcessor()
{
    return !QDir(u"/dev/dri"_s).entryList({u"renderD*"_s}, QDir::System).isEmpty();
}

class NoNetworkFactory final : public QQmlNetworkAccessManagerFactory
{
public:
    QNetworkAccessManager *create(QObject *parent) override { return new NoNetwork(parent); }
};

} // namespace

Window::Window(Session &session)
{
    if (!hasGraphicsProcessor())
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    static NoNetworkFactory noNetwork; // the engine asks it for as long as it lives
    QQuickStyle::setStyle(u"Basic"_s);
    m_engine.setNetworkAccessManagerFactory(&noNetwork);
    addImageProviders(m_engine);
    m_engine.setInitialProperties({{u"session"_s, QVariant::fromValue(&session)}});
    m_engine.load(QUrl(u"qrc:/qt-project.org/imports/Dugwise/qml/Main.qml"_s));
}

} // namespace dugwise
