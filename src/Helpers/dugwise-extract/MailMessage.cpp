// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-extract/MailMessage.h"

#include "Helpers/dugwise-extract/CleanText.h"
#include "Helpers/dugwise-extract/HTMLText.h"

#include <gmime/gmime.h>
#include <iconv.h>

#include <algorithm>
#include <memory>

namespace dugwise {

using namespace ParserProtocol;

namespace {

// Beyond these a message is made to keep its reader busy.
constexpr int kDeepestPart = 50;
constexpr int kMostParts = 500;
constexpr std::size_t kMostMarkup = std::size_t{2} << 20U; // bytes of an HTML part that are read
constexpr int kMostAuthors = 50;

/// Character sets that mail comes in; the C library has a module for each but the first.
constexpr std::array kCharacterSets{
    "UTF-8",        "UTF-7",        "ISO-8859-1",   "ISO-8859-2",   "ISO-8859-3",   "ISO-8859-4",
    "ISO-8859-5",   "ISO-8859-6",   "ISO-8859-7",   "ISO-8859-8",   "ISO-8859-9",   "ISO-8859-10",
    "ISO-8859-13",  "ISO-8859-14",  "ISO-8859-15",  "ISO-8859-16",  "WINDOWS-1250", "WINDOWS-1251",
    "WINDOWS-1252", "WINDOWS-1253", "WINDOWS-1254", "WINDOWS-1255", "WINDOWS-1256", "WINDOWS-1257",
    "WINDOWS-1258", "KOI8-R",       "KOI8-U",       "IBM437",       "IBM850",       "IBM852",
    "IBM866",       "MACINTOSH",    "TIS-620",      "ISO-2022-JP",  "SHIFT_JIS",    "CP932",
    "EUC-JP",       "GBK",          "GB18030",      "BIG5",         "BIG5-HKSCS",   "EUC-KR",
    "ISO-2022-KR",  "UHC",          "HZ",
};

struct Release
{
    void operator()(gpointer object) const { g_object_unref(object); }
    void operator()(char *text) const { g_free(text); }
};
template <typename T>
using Held = std::unique_ptr<T, Release>;

std::string_view view(const char *text)
{
    return text ? std::string_view(text) : std::string_view();
}

/// Whether texts in a character set can be taken as they are: cleanText() reads them.
bool isReadAsItIs(const char *set)
{
    constexpr std::array kSets{"utf-8", "us-ascii"};
    return !set || std::ranges::any_of(kSets, [&](const char *known) {
        return g_ascii_strcasecmp(set, known) == 0;
    });
}

/// A part's content without its transfer encoding, in UTF-8 or nearly so.
std::string content(GMimeTextPart *part)
{
    if (!isReadAsItIs(g_mime_text_part_get_charset(part))) {
        const Held<char> text(g_mime_text_part_get_text(part));
        return std::string(view(text.get()));
    }
    GMimeDataWrapper *const data = g_mime_part_get_content(GMIME_PART(part));
    if (!data)
        return {};
    const Held<GMimeStream> bytes(g_mime_stream_mem_new());
    g_mime_data_wrapper_write_to_stream(data, bytes.get());
    const GByteArray *const array = g_mime_stream_mem_get_byte_array(GMIME_STREAM_MEM(bytes.get()));
    return {reinterpret_cast<const char *>(array->data), array->len};
}

/// Gathers the text of a message's parts until there is enough.
class Body
{
public:
    [[nodiscard]] std::string text() && { return cleanText(m_text, kMostBody); }

    /// Whether the object had text.
    bool add(GMimeObject *object, int depth = 0)
    {
        if (!object || depth > kDeepestPart || ++m_parts > kMostParts || isFull())
            return false;
        if (GMIME_IS_MULTIPART(object))
            return addParts(GMIME_MULTIPART(object), depth);
        return GMIME_IS_TEXT_PART(object) && addText(GMIME_TEXT_PART(object));
    }

private:
    [[nodiscard]] bool isFull() const { return m_text.size() >= kMostBody * std::size_t{2}; }

    bool addParts(GMimeMultipart *parts, int depth)
    {
        GMimeContentType *const type = g_mime_object_get_content_type(GMIME_OBJECT(parts));
        const bool isOneEnough = g_mime_content_type_is_type(type, "multipart", "alternative") != 0;
        const int count = g_mime_multipart_get_count(parts);
        bool hasText = false;
        for (int i = 0; i < count && !(isOneEnough && hasText) && m_parts <= kMostParts; ++i)
            hasText = add(g_mime_multipart_get_part(parts, i), depth + 1) || hasText;
        return hasText;
    }

    bool addText(GMimeTextPart *part)
    {
        const char *const disposition = g_mime_object_get_disposition(GMIME_OBJECT(part));
        if (disposition && g_ascii_strcasecmp(disposition, "attachment") == 0)
            return false;
        GMimeContentType *const type = g_mime_object_get_content_type(GMIME_OBJECT(part));
        const bool isMarkup = g_mime_content_type_is_type(type, "text", "html") != 0;
        if (!isMarkup && g_mime_content_type_is_type(type, "text", "plain") == 0)
            return false;
        const std::string found = content(part);
        const std::string read = isMarkup ? htmlText(std::string_view(found).substr(0, kMostMarkup))
                                          : found.substr(0, kMostBody * std::size_t{2});
        const bool hasText = !cleanText(read.substr(0, kMostBody), 1).empty();
        if (hasText)
            m_text.append(read).append("\n");
        return hasText;
    }

    std::string m_text;
    int m_parts = 0;
};

void appendLine(std::string &lines, const std::string &line)
{
    if (line.empty() || lines.size() + line.size() >= kMostMessageText)
        return;
    if (!lines.empty())
        lines += '\n';
    lines += line;
}

void addAuthors(InternetAddressList *list, MailMessage &message, int &left)
{
    const int count = list ? internet_address_list_length(list) : 0;
    for (int i = 0; i < count && left > 0; ++i) {
        InternetAddress *const entry = internet_address_list_get_address(list, i);
        if (INTERNET_ADDRESS_IS_GROUP(entry)) { // those have no groups in them
            addAuthors(
                internet_address_group_get_members(INTERNET_ADDRESS_GROUP(entry)), message, --left);
            continue;
        }
        --left;
        constexpr std::size_t kMost = 512;
        const std::string name = cleanText(view(internet_address_get_name(entry)), kMost);
        const std::string address =
            INTERNET_ADDRESS_IS_MAILBOX(entry) ? cleanText(
                view(internet_address_mailbox_get_addr(INTERNET_ADDRESS_MAILBOX(entry))), kMost)
                                               : std::string();
        appendLine(message.texts[authors], name.empty() ? address : name);
        appendLine(message.texts[addresses], address);
    }
}

} // namespace

void MailMessage::makeReady()
{
    // The C library loads these from modules, which are out of reach in the sandbox, and keeps them
    // as long as somebody has them open.
    for (const char *set : kCharacterSets)
        [[maybe_unused]] const iconv_t kept = ::iconv_open("UTF-8", set);
    g_mime_init();
    // Headers without any encoding.
    std::array<const char *, 3> fallbacks{"utf-8", "windows-1252", nullptr};
    g_mime_parser_options_set_fallback_charsets(g_mime_parser_options_get_default(),
                                                fallbacks.data());
    // The first message has the library make its tables; zones of time are looked up then, too.
    g_time_zone_unref(g_time_zone_new_local());
    [[maybe_unused]] const MailMessage first = read(
        "From: a@b.example\nDate: Thu, 1 Jan 1970 00:00:01 +0100\nSubject: =?utf-8?q?a?=\n\na\n");
}

MailMessage MailMessage::read(std::string_view bytes)
{
    MailMessage told;
    const Held<GMimeStream> stream(g_mime_stream_mem_new_with_buffer(bytes.data(), bytes.size()));
    const Held<GMimeParser> parser(g_mime_parser_new_with_stream(stream.get()));
    const Held<GMimeMessage> message(g_mime_parser_construct_message(parser.get(), nullptr));
    if (!message)
        return told;
    if (GDateTime *const date = g_mime_message_get_date(message.get()))
        told.date = g_date_time_to_unix(date);
    told.texts[subject] =
        cleanText(view(g_mime_message_get_subject(message.get())), kMostMessageText);
    int most = kMostAuthors;
    addAuthors(g_mime_message_get_from(message.get()), told, most);
    told.texts[identifier] =
        cleanText(view(g_mime_message_get_message_id(message.get())), kMostMessageText);
    Body text;
    text.add(g_mime_message_get_mime_part(message.get()));
    told.texts[body] = std::move(text).text();
    return told;
}

} // namespace dugwise
