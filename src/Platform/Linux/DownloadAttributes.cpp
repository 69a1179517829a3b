// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/DownloadAttributes.h"

#include "Utilities/Text.h"

#include <QFile>

#include <sys/xattr.h>

#include <array>

namespace dugwise {

namespace {

/// An address in an attribute; absent also where it is longer than any real one.
std::optional<QString> addressIn(const char *attribute, const QByteArray &file)
{
    std::array<char, 16'384> value; // NOLINT(*-member-init): filled up to `size`
    const ssize_t size = ::lgetxattr(file.constData(), attribute, value.data(), value.size());
    if (size <= 0)
        return std::nullopt;
    const std::string_view utf8(value.data(), static_cast<std::size_t>(size));
    if (!QByteArrayView(utf8.data(), size).isValidUtf8())
        return std::nullopt;
    return webAddress(toQString(utf8));
}

} // namespace

std::optional<Download> downloadAttributes(const QString &path)
{
    const QByteArray file = QFile::encodeName(path);
    const auto source = addressIn("user.xdg.origin.url", file);
    if (!source)
        return std::nullopt;
    Download download{.source = *source};
    if (const auto referrer = addressIn("user.xdg.referrer.url", file))
        download.referrer = *referrer;
    return download;
}

} // namespace dugwise
