// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/FirefoxDownloads.h"

#include "Utilities/FileUri.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr int kFinished = 1;

// Columns: file, address, metadata, date of the annotation (µs since 1970), page.
constexpr auto kQuery = R"(
    SELECT file.content, place.url, about.content, file.dateAdded,
           (SELECT page.url
              FROM moz_historyvisits visit
              JOIN moz_historyvisits before ON before.id = visit.from_visit
              JOIN moz_places page ON page.id = before.place_id
             WHERE visit.place_id = place.id AND visit.visit_type = 7
             ORDER BY visit.visit_date DESC LIMIT 1)
      FROM moz_annos file
      JOIN moz_annos about ON about.place_id = file.place_id
      JOIN moz_places place ON place.id = file.place_id
     WHERE file.anno_attribute_id =
           (SELECT id FROM moz_anno_attributes WHERE name = 'downloads/destinationFileURI')
       AND about.anno_attribute_id =
           (SELECT id FROM moz_anno_attributes WHERE name = 'downloads/metaData')
     ORDER BY about.lastModified DESC)";

} // namespace

StoreFacts readFirefoxDownloads(const SQLiteDatabase &places, Instant now)
{
    StoreFacts facts;
    SQLiteStatement rows = places.prepare(kQuery);
    for (int row = 0; row < kMostStoreRecords && rows.step(); ++row) {
        const auto path = pathOfFileUri(rows.text(0).value_or(QString()));
        const QByteArray json = rows.text(2).value_or(QString()).toUtf8();
        const QJsonObject about = QJsonDocument::fromJson(json).object();
        if (!path || about["state"_L1].toInt() != kFinished || about["deleted"_L1].toBool())
            continue;
        auto date = storedDate(about["endTime"_L1].toDouble() / 1000, now);
        if (!date)
            date = storedDate(rows.real(3) / 1e6, now);
        facts.downloads[*path].append({
            .source = webAddress(rows.text(1).value_or(QString())).value_or(QString()),
            .referrer = webAddress(rows.text(4).value_or(QString())).value_or(QString()),
            .date = date,
            .size = about["fileSize"_L1].toInteger(),
        });
    }
    return facts;
}

} // namespace dugwise
