// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/EvolutionSources.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QHash>
#include <QMap>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr int kDeepest = 16; // sources above a source

/// A key file's values, by "GROUP/KEY" (Desktop Entry Specification, "Basic format of the file").
QHash<QByteArray, QByteArray> keyFile(const QString &text)
{
    QHash<QByteArray, QByteArray> values;
    QByteArray group;
    for (const QByteArray &whole : text.toUtf8().split('\n')) {
        const QByteArray line = whole.trimmed();
        const qsizetype equals = line.indexOf('=');
        if (line.startsWith('[') && line.endsWith(']')) {
            group = line.sliced(1, line.size() - 2) + '/';
            values.insert(group, QByteArray());
        } else if (equals > 0 && !line.startsWith('#')) {
            values.insert(group + line.first(equals).trimmed(), line.sliced(equals + 1).trimmed());
        }
    }
    return values;
}

} // namespace

QStringList enabledSources(const QVariant &managedObjects, QByteArrayView group)
{
    using Interfaces = QMap<QString, QVariantMap>;
    const auto objects = qdbus_cast<QMap<QDBusObjectPath, Interfaces>>(managedObjects);
    QMap<QString, QHash<QByteArray, QByteArray>> sources;
    for (const Interfaces &interfaces : objects) {
        const QVariantMap source = interfaces.value(u"org.gnome.evolution.dataserver.Source"_s);
        sources.insert(source.value(u"UID"_s).toString(),
                       keyFile(source.value(u"Data"_s).toString()));
    }
    const auto isEnabled = [&sources](QString uid) {
        for (int depth = 0; depth < kDeepest && !uid.isEmpty(); ++depth) {
            const auto source = sources.constFind(uid);
            if (source == sources.constEnd() || source->value("Data Source/Enabled") == "false")
                return false;
            uid = QString::fromUtf8(source->value("Data Source/Parent"));
        }
        return uid.isEmpty();
    };
    QStringList enabled;
    const QByteArray wanted = group.toByteArray() + '/';
    for (auto source = sources.cbegin(); source != sources.cend(); ++source) {
        if (source->contains(wanted) && source->value(wanted + "BackendName") != "ldap"
            && isEnabled(source.key()))
            enabled.append(source.key());
    }
    return enabled;
}

} // namespace dugwise
