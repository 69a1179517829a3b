// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/SystemFacilities.h"

#include "Platform/DesktopMetadata.h"
#include "Platform/HelperProgram.h"
#include "Platform/Linux/DesktopContactStore.h"
#include "Platform/Linux/DesktopEventStore.h"
#include "Platform/Linux/DesktopMailQuery.h"
#include "Platform/Linux/DesktopMessageStore.h"
#include "Platform/Linux/DesktopWorkspace.h"
#include "Platform/Linux/LocalModelServer.h"
#include "Platform/Linux/MetadataQueryProcess.h"
#include "Platform/Linux/PortalAppearance.h"
#include "Platform/Linux/RouteMonitor.h"
#include "Platform/Platform.h"
#include "Platform/Sandbox.h"
#include "Platform/SandboxedPDFReader.h"
#include "Platform/SandboxedThumbnailReader.h"
#include "Platform/TableEmbedding.h"

using namespace Qt::StringLiterals;

namespace dugwise {

void addSystemFacilities(Platform &platform)
{
    const std::optional<QString> parser = helperProgram(u"dugwise-extract"_s);
    if (parser && Sandbox::isAvailable()) {
        platform.pdfDocuments = std::make_unique<SandboxedPDFReader>(
            *parser, platform.folders.cache + u"/unreadable"_s);
        platform.metadataQuery = std::make_unique<DesktopMailQuery>(platform.folders, *parser);
    }
    const std::optional<QString> thumbnails = helperProgram(u"dugwise-thumbnail"_s);
    if (thumbnails && Sandbox::isAvailable())
        platform.thumbnails = std::make_unique<SandboxedThumbnailReader>(*thumbnails);
    if (const auto path = dataFile(u"embedding.table"_s)) {
        if (std::optional<EmbeddingTable> table = EmbeddingTable::open(*path))
            platform.sentenceEmbedding = std::make_unique<TableEmbedding>(std::move(*table));
    }
    platform.metadataReader = desktopMetadataReader(platform.folders, platform.clock);
    if (const auto program = helperProgram(u"dugwise-mdfind"_s))
        platform.metadataQueryCommand = std::make_unique<MetadataQueryProcess>(*program);
    platform.languageModel =
        std::make_unique<LocalModelServer>(LocalModelServer::Settings::ofEnvironment());
    platform.workspace = std::make_unique<DesktopWorkspace>();
    platform.messageStore = std::make_unique<DesktopMessageStore>(platform.folders);
    const std::optional<QString> agenda = helperProgram(u"dugwise-agenda"_s);
    if (agenda && Sandbox::isAvailable()) {
        platform.eventStore = std::make_unique<DesktopEventStore>(platform.folders, *agenda);
        platform.contactStore = std::make_unique<DesktopContactStore>(platform.folders, *agenda);
    }
    platform.networkPathMonitor = std::make_unique<RouteMonitor>(u"/sys/class/net"_s);
    platform.desktopAppearance = std::make_unique<PortalAppearance>();
}

} // namespace dugwise
