// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/RecentlyUsed.h"

#include "Utilities/FileUri.h"

#include <QDateTime>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

std::optional<Instant> dateIn(const QXmlStreamReader &xml, QLatin1StringView attribute, Instant now)
{
    const QString text = xml.attributes().value(attribute).toString();
    QDateTime date = QDateTime::fromString(text, Qt::ISODateWithMs);
    if (!date.isValid())
        return std::nullopt;
    if (date.timeSpec() == Qt::LocalTime)
        date.setTimeSpec(Qt::UTC);
    return storedDate(static_cast<double>(date.toMSecsSinceEpoch()) / 1000, now);
}

} // namespace

StoreFacts readRecentlyUsed(const QByteArray &xbel, Instant now)
{
    constexpr auto kBookmark = "bookmark"_L1;
    StoreFacts facts;
    QXmlStreamReader xml(xbel);
    xml.setNamespaceProcessing(false); // a prefix may be used without its declaration
    std::optional<QString> path;
    std::optional<Instant> newest;
    int records = 0;
    while (!xml.atEnd() && records < kMostStoreRecords) {
        xml.readNext();
        const QStringView name = xml.qualifiedName();
        if (xml.isStartElement() && name == kBookmark) {
            path = pathOfFileUri(xml.attributes().value("href"_L1).toString());
            newest = std::max(dateIn(xml, "visited"_L1, now), dateIn(xml, "modified"_L1, now));
        } else if (xml.isStartElement() && name == "bookmark:application"_L1) {
            newest = std::max(newest, dateIn(xml, "modified"_L1, now));
        } else if (xml.isStartElement() && name == "bookmark:private"_L1) {
            path.reset();
        } else if (xml.isEndElement() && name == kBookmark) {
            if (path)
                facts.addUse(*path, newest);
            ++records;
        }
    }
    return facts;
}

} // namespace dugwise
