// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Reads documents and mail of strangers for the program that started it: gets open files, gives
// back their texts. It opens nothing by itself, and whatever a document makes of it stays in its
// sandbox. usage: dugwise-extract [mail]
#include "Helpers/dugwise-extract/Service.h"

#include <unistd.h>

#include <string_view>

namespace {

constexpr int kNotReady = 3;

} // namespace

int main(int argc, char **argv)
{
    try {
        const bool isForMail = argc > 1 && std::string_view(argv[1]) == "mail";
        if (!(isForMail ? dugwise::serveMail() : dugwise::serveDocuments()))
            return kNotReady;
    } catch (...) { // out of memory, by most likelihood; the program takes the end for an answer
        ::_exit(1);
    }
    // Without the destructors of libraries, which may call what the sandbox forbids.
    ::_exit(0);
}
