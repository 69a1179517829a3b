// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/ParserSocket.h"
#include "Helpers/dugwise-extract/Document.h"
#include "Helpers/dugwise-extract/Service.h"
#include "Platform/Sandbox.h"

#include <iconv.h>
#include <poppler-global.h>
#include <poppler-version.h>

#include <optional>
#include <string>

namespace dugwise {

using namespace ParserProtocol;

namespace {

const iconv_t kNoConversion = reinterpret_cast<iconv_t>(-1); // NOLINT(performance-no-int-to-ptr)

/// What Poppler opens while it reads: names of glyphs and encodings of East Asian texts.
constexpr const char *kPopplerData = "/usr/share/poppler";

bool send(std::int32_t result, const poppler::ustring &text = {})
{
    static_assert(sizeof(poppler::ustring::value_type) == sizeof(char16_t));
    return ParserSocket::send(result,
                              {reinterpret_cast<const char16_t *>(text.data()), text.size()});
}

bool sendPage(const std::optional<Document> &document, int page)
{
    const poppler::ustring text = document ? document->pageText(page) : poppler::ustring();
    return send(text.empty() ? -1 : 0, text);
}

} // namespace

bool serveDocuments()
{
    // Poppler converts every text with this. The C library loads it from a module, which is out of
    // reach in the sandbox, and keeps that as long as somebody has it open.
    if (::iconv_open("UTF-16", "UTF-8") == kNoConversion || !Sandbox::confine(kPopplerData))
        return false;
    poppler::set_debug_error_function([](const std::string &, void *) {}, nullptr);
    std::optional<Document> document;
    bool isHeard = ParserSocket::greet("poppler " + poppler::version_string());
    while (isHeard) {
        std::optional<ParserSocket::Received> received = ParserSocket::receive();
        if (!received)
            break;
        switch (received->request.subject) {
        case Subject::document:
            document.emplace(std::move(received->file));
            isHeard = send(document->pageCount());
            break;
        case Subject::page:
            isHeard = sendPage(document, static_cast<int>(received->request.number));
            break;
        case Subject::close:
            document.reset();
            break;
        case Subject::messages:
            isHeard = false; // none of this service's
            break;
        }
    }
    return true;
}

} // namespace dugwise
