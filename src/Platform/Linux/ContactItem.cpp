// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/ContactItem.h"

#include "Platform/AgendaProtocol.h"
#include "Utilities/Text.h"

#include <algorithm>

namespace dugwise {

namespace {

QStringList elements(const QString &list)
{
    return list.split(QChar(AgendaProtocol::kElement), Qt::SkipEmptyParts);
}

} // namespace

std::optional<ContactItem> ContactItem::fromRecord(const QStringList &fields)
{
    if (fields.size() != 6)
        return std::nullopt;
    ContactItem item{.contact{.givenName = fields[0],
                              .familyName = fields[1],
                              .emails = elements(fields[4]),
                              .phoneNumbers = elements(fields[5])}};
    for (const QString &name : fields.first(4))
        item.names += foldedWords(name);
    item.names.removeDuplicates();
    if (fields[0].isEmpty() && fields[1].isEmpty())
        item.contact.givenName = fields[3].isEmpty() ? fields[2] : fields[3];
    return item;
}

bool ContactItem::isNamed(const QStringList &words) const
{
    return std::ranges::all_of(words, [this](const QString &word) {
        return std::ranges::any_of(names,
                                   [&word](const QString &name) { return name.startsWith(word); });
    });
}

QStringList foldedWords(const QString &name)
{
    QStringList words;
    QString word;
    // A space at the end ends the last word.
    for (const QChar character :
         lowerCased(name.normalized(QString::NormalizationForm_KD)) + u' ') {
        if (character.isMark())
            continue;
        if (character.isLetterOrNumber() || character.isSurrogate()) {
            word += character;
        } else if (!word.isEmpty()) {
            words.append(word);
            word.clear();
        }
    }
    return words;
}

} // namespace dugwise
