// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-extract/Document.h"

#include <poppler-page.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <limits>

namespace dugwise {

void Document::Unmap::operator()(char *data) const
{
    ::munmap(data, size);
}

Document::Document(FileDescriptor file) // NOLINT(performance-unnecessary-value-param): to close it
{
    struct stat status = {};
    if (::fstat(file.get(), &status) != 0 || status.st_size <= 0
        || status.st_size > std::numeric_limits<int>::max())
        return;
    const auto size = static_cast<std::size_t>(status.st_size);
    void *const data = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.get(), 0);
    if (data == MAP_FAILED)
        return;
    m_file = {static_cast<char *>(data), Unmap{size}};
    m_document.reset(
        poppler::document::load_from_raw_data(m_file.get(), static_cast<int>(status.st_size)));
    if (m_document && m_document->is_locked())
        m_document.reset();
}

poppler::ustring Document::pageText(int page) const
{
    const std::unique_ptr<poppler::page> found(m_document ? m_document->create_page(page)
                                                          : nullptr);
    if (!found)
        return {};
    poppler::ustring text =
        found->text(poppler::rectf(), poppler::page::non_raw_non_physical_layout);
    // Poppler ends a page with line breaks and a form feed.
    const std::size_t end = text.find_last_not_of(poppler::ustring::from_latin1(" \n\r\f"));
    text.resize(end == poppler::ustring::npos ? 0 : end + 1);
    return text;
}

} // namespace dugwise
