// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/NoNetwork.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QQmlEngine>
#include <QQmlNetworkAccessManagerFactory>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

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

class NoNetworkFactory final : public QQmlNetworkAccessManagerFactory
{
public:
    QNetworkAccessManager *create(QObject *parent) override { return new NoNetwork(parent); }
};

} // namespace

void denyNetwork(QQmlEngine &engine)
{
    static NoNetworkFactory noNetwork; // an engine asks it for as long as it lives
    engine.setNetworkAccessManagerFactory(&noNetwork);
}

} // namespace dugwise
