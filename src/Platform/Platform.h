// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AccessPrompt.h"
#include "Platform/ContactStore.h"
#include "Platform/DesktopAppearance.h"
#include "Platform/EventStore.h"
#include "Platform/FolderPicker.h"
#include "Platform/MessageStore.h"
#include "Platform/MetadataItem.h"
#include "Platform/MetadataQuery.h"
#include "Platform/MetadataQueryCommand.h"
#include "Platform/NetworkPathMonitor.h"
#include "Platform/PDFDocument.h"
#include "Platform/SentenceEmbedding.h"
#include "Platform/StandardFolders.h"
#include "Platform/SystemLanguageModel.h"
#include "Platform/Thumbnail.h"
#include "Platform/UserDefaults.h"
#include "Platform/Workspace.h"
#include "Utilities/Clock.h"

#include <functional>
#include <memory>

namespace dugwise {

/// Everything that this system can do for the services, handed down from the entry. A null
/// facility is one that this system, or this way of running, does not have.
struct Platform
{
    explicit Platform(StandardFolders standardFolders);

    StandardFolders folders;
    UserDefaults userDefaults;
    Clock clock;
    /// Where the few log lines go; standard output unless told otherwise.
    std::function<void(const QString &line)> log;
    std::unique_ptr<FolderPicker> folderPicker;
    std::unique_ptr<PDFDocumentReader> pdfDocuments;
    std::unique_ptr<ThumbnailReader> thumbnails;
    std::unique_ptr<MetadataReader> metadataReader;
    std::unique_ptr<MetadataQueryCommand> metadataQueryCommand;
    std::unique_ptr<MetadataQuery> metadataQuery;
    std::unique_ptr<SentenceEmbedding> sentenceEmbedding;
    std::unique_ptr<SystemLanguageModel> languageModel;
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<MessageStore> messageStore;
    std::unique_ptr<EventStore> eventStore;
    std::unique_ptr<ContactStore> contactStore;
    std::unique_ptr<AccessPrompt> accessPrompt;
    std::unique_ptr<NetworkPathMonitor> networkPathMonitor;
    std::unique_ptr<DesktopAppearance> desktopAppearance;
};

} // namespace dugwise
