// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/Records/FileType.h"

using namespace Qt::StringLiterals;

namespace dugwise {

QString rawValue(FileType type)
{
    switch (type) {
    case FileType::pdf:
        return u"pdf"_s;
    case FileType::text:
        return u"text"_s;
    case FileType::markdown:
        return u"markdown"_s;
    case FileType::document:
        return u"document"_s;
    case FileType::image:
        return u"image"_s;
    case FileType::screenshot:
        return u"screenshot"_s;
    case FileType::spreadsheet:
        return u"spreadsheet"_s;
    case FileType::presentation:
        return u"presentation"_s;
    case FileType::code:
        return u"code"_s;
    case FileType::archive:
        return u"archive"_s;
    case FileType::other:
        return u"other"_s;
    }
    Q_UNREACHABLE();
}

std::optional<FileType> fileTypeFromRawValue(QStringView value)
{
    for (const FileType type : kAllFileTypes) {
        if (rawValue(type) == value)
            return type;
    }
    return std::nullopt;
}

QString displayName(FileType type)
{
    switch (type) {
    case FileType::pdf:
        return u"PDF"_s;
    case FileType::text:
        return u"Text"_s;
    case FileType::markdown:
        return u"Markdown"_s;
    case FileType::document:
        return u"Document"_s;
    case FileType::image:
        return u"Image"_s;
    case FileType::screenshot:
        return u"Screenshot"_s;
    case FileType::spreadsheet:
        return u"Spreadsheet"_s;
    case FileType::presentation:
        return u"Presentation"_s;
    case FileType::code:
        return u"Code"_s;
    case FileType::archive:
        return u"Archive"_s;
    case FileType::other:
        return u"File"_s;
    }
    Q_UNREACHABLE();
}

} // namespace dugwise
