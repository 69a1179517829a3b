// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/MailFolderNames.h"

#include "Utilities/FoldedText.h"
#include "Utilities/Text.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <unicode/unistr.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr QStringView kNames =
    // deleted
    u"trash,deleted,deleted items,deleted messages,bin,wastebin,wastebasket,papierkorb,"
    u"geloscht,geloschte elemente,geloschte objekte,geloschte nachrichten,corbeille,"
    u"elements supprimes,messages supprimes,papelera,elementos eliminados,cestino,"
    u"posta eliminata,elementi eliminati,prullenbak,prullenmand,verwijderde items,"
    u"lixeira,lixo,itens excluidos,kosz,slettede elementer,papirkurv,papperskorgen,"
    u"roskakori,корзина,удаленные,ごみ箱,"
    // junk
    u"junk,junk mail,junk e-mail,junk email,spam,bulk,bulk mail,spamverdacht,"
    u"unerwunscht,werbung,indesirables,courrier indesirable,pourriel,correo no deseado,"
    u"posta indesiderata,ongewenste e-mail,ongewenst,lixo eletronico,спам,迷惑メール,"
    // drafts and templates
    u"draft,drafts,entwurf,entwurfe,brouillons,borradores,bozze,concepten,rascunhos,"
    u"черновики,下書き,templates,vorlagen,modeles,"
    // not sent yet
    u"outbox,unsent messages,postausgang";

QString foldedName(QStringView name)
{
    const QByteArray utf8 = name.trimmed().toUtf8();
    return QString::fromStdString(folded(view(utf8)));
}

bool isKnown(QStringView name)
{
    static const QSet<QString> kFolded = [] {
        QSet<QString> names;
        for (const QStringView known : kNames.split(u','))
            names.insert(foldedName(known));
        return names;
    }();
    return kFolded.contains(foldedName(name));
}

} // namespace

bool isLeftOutMailFolder(QStringView name)
{
    QString plain = name.toString();
    if (plain.contains(u'&')) { // as servers spell it (RFC 3501, 5.1.3)
        const QByteArray latin = plain.toLatin1();
        const icu::UnicodeString decoded(
            latin.constData(), static_cast<int32_t>(latin.size()), "IMAP-mailbox-name");
        plain = QString::fromUtf16(decoded.getBuffer(), decoded.length());
    }
    for (const auto ending : {".sbd"_L1, ".directory"_L1}) { // subfolders
        if (plain.endsWith(ending))
            plain.chop(ending.size());
    }
    if (!plain.startsWith(u'.'))
        return isKnown(plain);
    // Maildir++: all of the path, parted by dots.
    return std::ranges::any_of(plain.split(u'.', Qt::SkipEmptyParts),
                               [](const QString &part) { return isKnown(part); });
}

} // namespace dugwise
