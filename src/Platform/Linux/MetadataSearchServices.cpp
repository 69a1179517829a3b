// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/MetadataSearchServices.h"

#include <QFile>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

QString inStandardFolder(QStandardPaths::StandardLocation folder, QLatin1StringView relative)
{
    return QStandardPaths::writableLocation(folder) + u'/' + relative;
}

/// Whether the session bus could start GNOME's service, under its former or its present name.
bool isTrackerInstalled()
{
    for (const auto name :
         {"org.freedesktop.Tracker3.Miner.Files"_L1, "org.freedesktop.LocalSearch3"_L1}) {
        const QString service = "dbus-1/services/"_L1 + name + ".service"_L1;
        if (!QStandardPaths::locate(QStandardPaths::GenericDataLocation, service).isEmpty())
            return true;
    }
    return false;
}

MetadataSearchService::State state(bool isInstalled, bool hasIndex)
{
    if (!isInstalled)
        return MetadataSearchService::State::absent;
    return hasIndex ? MetadataSearchService::State::present
                    : MetadataSearchService::State::notIndexed;
}

} // namespace

QList<MetadataSearchService> metadataSearchServices()
{
    const bool hasTracker = !trackerIndexFolder().isEmpty(); // it is read without the service
    return {
        {u"Tracker"_s,
         state(hasTracker || isTrackerInstalled(), hasTracker),
         u"tracker-miner-fs"_s},
        {u"Baloo"_s, state(!balooSearchProgram().isEmpty(), hasBalooIndex()), u"baloo-kf5"_s},
        {u"plocate"_s, state(!plocateProgram().isEmpty(), hasPlocateDatabase()), u"plocate"_s},
    };
}

QString trackerIndexFolder()
{
    const QString folder =
        inStandardFolder(QStandardPaths::GenericCacheLocation, "tracker3/files"_L1);
    return QFile::exists(folder + "/meta.db"_L1) ? folder : QString();
}

bool hasBalooIndex()
{
    return QFile::exists(inStandardFolder(QStandardPaths::GenericDataLocation, "baloo/index"_L1));
}

QString balooSearchProgram()
{
    return QStandardPaths::findExecutable(u"baloosearch"_s);
}

QString plocateProgram()
{
    return QStandardPaths::findExecutable(u"plocate"_s);
}

bool hasPlocateDatabase()
{
    return QFile::exists(u"/var/lib/plocate/plocate.db"_s);
}

} // namespace dugwise
