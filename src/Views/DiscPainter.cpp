// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/DiscPainter.h"

namespace dugwise {

void DiscPainter::paint(QPainter *painter)
{
    paintDiscs(*painter, m_discs);
}

void DiscPainter::updatePolish()
{
    m_discs = discs();
    update();
}

} // namespace dugwise
