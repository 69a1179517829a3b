// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine/Preview.h"

#include "Models/PreviewLoader.h"
#include "Models/Records/IndexedFile.h"
#include "Platform/FileAttributes.h"
#include "Platform/Platform.h"
#include "Services/FilePreviewService.h"
#include "Utilities/FilePath.h"

#include <QFileInfo>

namespace dugwise {

std::optional<QString> previewText(const Platform &platform, const QString &path)
{
    const QString target = QFileInfo(path).canonicalFilePath();
    const auto attributes = fileAttributes(target);
    if (!attributes || !attributes->isRegularFile)
        return std::nullopt;
    const IndexedFile file({
        .name = FilePath::name(target),
        .path = target,
        .fileExtension = FilePath::fileExtension(target),
        .size = attributes->size,
        .modifiedDate = attributes->modifiedDate,
        .folderPath = FilePath::folder(target),
    });
    const FilePreviewService service(platform.pdfDocuments.get());
    return service.extractPreviewText(file, PreviewLoader::kMostCharacters);
}

} // namespace dugwise
