// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/AppServices.h"

#include "Platform/Platform.h"
#include "Services/OnDeviceLLMService.h"

namespace dugwise {

AppServices::AppServices(Platform &platform)
    : llm(std::make_unique<OnDeviceLLMService>(
        platform.languageModel.get(), std::make_unique<MockLLMService>(), platform.clock))
    , calendar(std::make_unique<CalendarService>(platform))
    , mail(std::make_unique<MailSearchService>(platform.metadataQuery.get(), platform.clock))
    , messages(std::make_unique<MessagesService>(platform.messageStore.get()))
    , contacts(std::make_unique<ContactsService>(platform))
    , preview(platform.pdfDocuments.get())
    , spotlight(nullptr, platform.metadataQueryCommand.get())
{
    search =
        std::make_unique<FileSearchService>(std::make_unique<SemanticSearchService>([&platform] {
                                                return platform.sentenceEmbedding.get();
                                            }),
                                            spotlight,
                                            platform.clock);
}

} // namespace dugwise
