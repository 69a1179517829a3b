// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/IndexingOptions.h"

#include "Services/FileKind.h"
#include "Services/StoredSwitch.h"
#include "Utilities/FilePath.h"
#include "Utilities/FileTypeHelper.h"
#include "Utilities/Text.h"

namespace dugwise {

namespace {

bool isScreenshot(FileType kind, const ListedFile &file)
{
    const QByteArray name = lowerCased(file.name).toUtf8();
    const QByteArray folder = lowerCased(file.folderPath).toUtf8();
    return isLikelyScreenshot(kind, {.name = view(name), .folder = view(folder)});
}

} // namespace

IndexingOptions IndexingOptions::stored(const UserDefaults &defaults)
{
    return {
        .isEnabled = kEnableLocalIndexing.isOn(defaults),
        .includesHiddenFiles = kIncludeHiddenFiles.isOn(defaults),
        .includesScreenshots = kIncludeScreenshots.isOn(defaults),
        .includesPDFs = kIncludePDFs.isOn(defaults),
    };
}

bool IndexingOptions::includes(const ListedFile &file) const
{
    const FileType kind = FileTypeHelper::fileType(FilePath::fileExtension(file.name));
    return (includesPDFs || kind != FileType::pdf)
           && (includesScreenshots || !isScreenshot(kind, file));
}

std::optional<QList<ListedFile>>
listIncluded(const QString &folder, const IndexingOptions &options, const std::stop_token &stop)
{
    const HiddenNames hidden =
        options.includesHiddenFiles ? HiddenNames::listed : HiddenNames::skipped;
    std::optional<QList<ListedFile>> files = listFolder(folder, stop, hidden);
    if (files && !(options.includesPDFs && options.includesScreenshots))
        files->removeIf([&](const ListedFile &file) { return !options.includes(file); });
    return files;
}

} // namespace dugwise
