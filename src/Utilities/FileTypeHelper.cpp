// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/FileTypeHelper.h"

#include "Utilities/Text.h"

#include <QHash>
#include <QSet>

using namespace Qt::StringLiterals;

namespace dugwise::FileTypeHelper {

namespace {

struct Look
{
    QString symbol;
    QString color;
};

Look look(FileType type)
{
    switch (type) {
    case FileType::pdf:
        return {u"doc.richtext.fill"_s, u"red"_s};
    case FileType::text:
        return {u"doc.text.fill"_s, u"blue"_s};
    case FileType::markdown:
        return {u"doc.plaintext.fill"_s, u"purple"_s};
    case FileType::document:
        return {u"doc.fill"_s, u"blue"_s};
    case FileType::image:
        return {u"photo.fill"_s, u"green"_s};
    case FileType::screenshot:
        return {u"camera.viewfinder"_s, u"orange"_s};
    case FileType::spreadsheet:
        return {u"tablecells.fill"_s, u"green"_s};
    case FileType::presentation:
        return {u"rectangle.on.rectangle.fill"_s, u"orange"_s};
    case FileType::code:
        return {u"chevron.left.forwardslash.chevron.right"_s, u"teal"_s};
    case FileType::archive:
        return {u"archivebox.fill"_s, u"gray"_s};
    case FileType::other:
        return {u"doc.fill"_s, u"gray"_s};
    }
    Q_UNREACHABLE();
}

QHash<QString, FileType> makeTypes()
{
    const QList<std::pair<FileType, QString>> rows{
        {FileType::pdf, u"pdf"_s},
        {FileType::text, u"txt rtf log"_s},
        {FileType::markdown, u"md markdown"_s},
        {FileType::document, u"doc docx pages"_s},
        {FileType::image, u"jpg jpeg png gif heic tiff webp bmp svg"_s},
        {FileType::spreadsheet, u"xls xlsx csv numbers"_s},
        {FileType::presentation, u"ppt pptx key"_s},
        {FileType::code,
         u"swift py js ts html css json xml yaml yml rb go rs c cpp h m java kt sh "
         "zsh bash"_s},
        {FileType::archive, u"zip tar gz rar 7z dmg"_s},
    };
    QHash<QString, FileType> types;
    for (const auto &[type, extensions] : rows) {
        for (const QString &extension : extensions.split(u' '))
            types.insert(extension, type);
    }
    return types;
}

} // namespace

FileType fileType(const QString &extension)
{
    static const QHash<QString, FileType> kTypes = makeTypes();
    return kTypes.value(lowerCased(extension), FileType::other);
}

QString sfSymbol(const QString &extension)
{
    return look(fileType(extension)).symbol;
}

QString iconColor(const QString &extension)
{
    return look(fileType(extension)).color;
}

bool isTextExtractable(const QString &extension)
{
    static const QStringList kList =
        u"txt md markdown rtf log swift py js ts html css json xml yaml yml rb go rs c cpp h m "
        "java kt sh zsh bash csv"_s.split(u' ');
    static const QSet<QString> kExtensions(kList.begin(), kList.end());
    return kExtensions.contains(extension);
}

} // namespace dugwise::FileTypeHelper
