// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/SymbolTable.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise {

/// The font's own name of a glyph stands beside it. It has one form of each symbol, mostly the
/// filled one; where the system's name means another, the symbol is a drawing.
constexpr std::array<Symbol, 51> kSymbols = {{
    {"app.connected.to.app.below.fill"_L1},
    {"archivebox.fill"_L1, 0xe149}, // archive
    {"arrow.down.circle"_L1},
    {"arrow.up.circle.fill"_L1},
    {"arrow.up.forward.square"_L1, 0xe89e}, // open_in_new
    {"arrow.up.right.circle"_L1},
    {"brain"_L1},
    {"calendar"_L1, 0xe935}, // calendar_today
    {"calendar.badge.plus"_L1},
    {"camera.viewfinder"_L1, 0xe3dc},                       // filter_center_focus
    {"checkmark.circle.fill"_L1, 0xe86c},                   // check_circle
    {"chevron.left.forwardslash.chevron.right"_L1, 0xe86f}, // code
    {"clock"_L1, 0xe8b5},                                   // schedule
    {"clock.arrow.circlepath"_L1, 0xe889},                  // history
    {"cpu"_L1, 0xe322},                                     // memory
    {"doc"_L1},
    {"doc.fill"_L1, 0xe24d},           // insert_drive_file
    {"doc.plaintext.fill"_L1, 0xef42}, // article
    {"doc.richtext.fill"_L1, 0xe415},  // picture_as_pdf
    {"doc.text"_L1},
    {"doc.text.fill"_L1, 0xe873}, // description
    {"doc.text.magnifyingglass"_L1},
    {"envelope.fill"_L1, 0xe0be}, // email
    {"eye.slash"_L1, 0xe8f5},     // visibility_off
    {"folder"_L1},
    {"folder.badge.questionmark"_L1},
    {"folder.fill"_L1, 0xe2c7},      // folder
    {"gearshape.fill"_L1, 0xe8b8},   // settings
    {"globe"_L1, 0xe894},            // language
    {"house.fill"_L1, 0xe88a},       // home
    {"info.circle"_L1, 0xe88f},      // info_outline
    {"info.circle.fill"_L1, 0xe88e}, // info
    {"internaldrive"_L1},
    {"lock.shield.fill"_L1},
    {"magnifyingglass"_L1, 0xe8b6}, // search
    {"message.fill"_L1, 0xe0ca},    // chat_bubble
    {"person.crop.circle"_L1},
    {"photo.fill"_L1, 0xe3f4},       // image
    {"plus"_L1, 0xe145},             // add
    {"plus.circle.fill"_L1, 0xe147}, // add_circle
    {"plus.message"_L1},
    {"rectangle.on.rectangle.fill"_L1},
    {"sparkle.magnifyingglass"_L1},
    {"sparkles"_L1, 0xe65f},             // auto_awesome
    {"tablecells.fill"_L1, 0xe3ec},      // grid_on
    {"text.magnifyingglass"_L1, 0xf02f}, // manage_search
    {"trash"_L1, 0xe92e},                // delete_outline
    {"wifi"_L1, 0xe63e},                 // wifi
    {"wifi.slash"_L1, 0xe648},           // wifi_off
    {"xmark.circle.fill"_L1, 0xe5c9},    // cancel
    {"xmark.icloud"_L1},
}};

std::optional<Symbol> findSymbol(QStringView name)
{
    const auto *const found = std::ranges::find_if(
        kSymbols, [name](const Symbol &symbol) { return symbol.name == name; });
    if (found == kSymbols.end())
        return std::nullopt;
    return *found;
}

} // namespace dugwise
