// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/ImageProviders.h"

#include "Views/ShadowImageProvider.h"
#include "Views/SymbolImageProvider.h"

#include <QQmlEngine>

using namespace Qt::StringLiterals;

namespace dugwise {

void addImageProviders(QQmlEngine &engine)
{
    engine.addImageProvider(u"symbol"_s,
                            new SymbolImageProvider(SymbolImageProvider::installedFont()));
    engine.addImageProvider(u"shadow"_s, new ShadowImageProvider);
}

} // namespace dugwise
