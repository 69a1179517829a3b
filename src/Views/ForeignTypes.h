// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/ConversationModel.h"
#include "Services/FileIndexer.h"
#include "Services/NetworkMonitor.h"

#include <QtQml>

/// Names under which the views know classes that know nothing of views.
namespace dugwise {

struct ForeignConversationModel
{
    Q_GADGET
    QML_FOREIGN(dugwise::ConversationModel)
    QML_NAMED_ELEMENT(ConversationModel)
    QML_UNCREATABLE("The session has it.")
};

struct ForeignFileIndexer
{
    Q_GADGET
    QML_FOREIGN(dugwise::FileIndexer)
    QML_NAMED_ELEMENT(FileIndexer)
    QML_UNCREATABLE("The session has it.")
};

struct ForeignNetworkMonitor
{
    Q_GADGET
    QML_FOREIGN(dugwise::NetworkMonitor)
    QML_NAMED_ELEMENT(NetworkMonitor)
    QML_UNCREATABLE("The session has it.")
};

} // namespace dugwise
