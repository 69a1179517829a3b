// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/PreviewFacts.h"

#include "Utilities/Formatters.h"
#include "Utilities/PrintableText.h"

using namespace Qt::StringLiterals;

namespace dugwise {

QList<PreviewFact> previewFacts(const IndexedFile &file)
{
    QList<PreviewFact> facts{
        {u"folder"_s, u"Path"_s, printable(file->folderPath)},
        {u"doc"_s, u"Extension"_s, printable(file->fileExtension.toUpper())},
        {u"internaldrive"_s, u"Size"_s, byteCount(file->size)},
        {u"calendar"_s, u"Modified"_s, dateAndTime(file->modifiedDate)},
        {u"calendar.badge.plus"_s, u"Created"_s, dateAndTime(file->createdDate)},
    };
    if (file->lastUsedDate)
        facts.append(
            {u"clock.arrow.circlepath"_s, u"Last Used"_s, dateAndTime(*file->lastUsedDate)});
    if (file->downloadDate)
        facts.append({u"arrow.down.circle"_s, u"Downloaded"_s, dateAndTime(*file->downloadDate)});
    const QString host = hostOf(file->downloadSource.value_or(QString()));
    if (!host.isEmpty())
        facts.append({u"globe"_s, u"Source"_s, host});
    return facts;
}

} // namespace dugwise
