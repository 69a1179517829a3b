// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/CalendarService.h"
#include "Services/ContactsService.h"
#include "Services/FilePreviewService.h"
#include "Services/FileSearchService.h"
#include "Services/LLMServiceProtocol.h"
#include "Services/MailSearchService.h"
#include "Services/MessagesService.h"
#include "Services/SpotlightMetadataService.h"

#include <memory>

namespace dugwise {

struct Platform;

/// The services that the conversation owns for its whole life; none is null.
struct AppServices
{
    /// Those of the real program.
    explicit AppServices(Platform &platform);

    std::unique_ptr<FileSearchService> search;
    std::unique_ptr<LLMServiceProtocol> llm;
    std::unique_ptr<CalendarService> calendar;
    std::unique_ptr<MailSearchService> mail;
    std::unique_ptr<MessagesService> messages;
    std::unique_ptr<ContactsService> contacts;
    FilePreviewService preview;
    SpotlightMetadataService spotlight; ///< to search with; the facts of files are in the records
};

} // namespace dugwise
