// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/StoreFacts.h"

#include <QSet>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr qsizetype kMostCharacters = 16'384;
constexpr double kDay = 86'400;

bool isOfServer(const QString &scheme)
{
    static const QSet<QString> kSchemes{u"http"_s,
                                        u"https"_s,
                                        u"ftp"_s,
                                        u"ftps"_s,
                                        u"sftp"_s,
                                        u"scp"_s,
                                        u"smb"_s,
                                        u"dav"_s,
                                        u"davs"_s};
    return kSchemes.contains(scheme);
}

} // namespace

void StoreFacts::addUse(const QString &path, std::optional<Instant> date)
{
    const auto known = lastUses.constFind(path);
    if (date && (known == lastUses.cend() || *known < *date))
        lastUses.insert(path, *date);
}

std::optional<QString> webAddress(const QString &text)
{
    constexpr auto kBlob = "blob:"_L1;
    if (text.size() > kMostCharacters)
        return std::nullopt;
    const bool isBlob = text.startsWith(kBlob, Qt::CaseInsensitive);
    const QUrl url(isBlob ? text.sliced(kBlob.size()) : text);
    if (!url.isValid() || url.host().isEmpty() || !isOfServer(url.scheme()))
        return std::nullopt;
    if (isBlob) // what follows the page's origin is only a number
        return url
            .adjusted(QUrl::RemoveUserInfo | QUrl::RemovePath | QUrl::RemoveQuery
                      | QUrl::RemoveFragment)
            .toString(QUrl::FullyEncoded);
    // As it was written, but for what must not be kept.
    return url.userInfo().isEmpty() && !url.authority().contains(u'@')
               ? text
               : url.adjusted(QUrl::RemoveUserInfo).toString(QUrl::FullyEncoded);
}

std::optional<Instant> storedDate(double unixSeconds, Instant now)
{
    const Instant date = Instant::fromUnix(unixSeconds);
    const bool canBe = unixSeconds > 0 && date.seconds <= now.seconds + kDay;
    return canBe ? std::optional(date) : std::nullopt;
}

} // namespace dugwise
