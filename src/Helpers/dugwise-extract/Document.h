// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/FileDescriptor.h"

#include <poppler-document.h>

#include <cstddef>
#include <memory>
#include <string_view>

namespace dugwise {

/// A PDF document of an open file, which is closed again, and mapped as long as the document lives.
class Document
{
public:
    explicit Document(FileDescriptor file);

    /// Negative when the file is no document, or locked by a password.
    [[nodiscard]] int pageCount() const { return m_document ? m_document->pages() : -1; }
    /// In reading order; empty when the page is missing or has none.
    [[nodiscard]] poppler::ustring pageText(int page) const;

private:
    struct Unmap
    {
        std::size_t size;
        void operator()(char *data) const;
    };

    std::unique_ptr<char, Unmap> m_file{nullptr, Unmap{0}};
    std::unique_ptr<poppler::document> m_document; ///< reads from the mapping until it is gone
};

} // namespace dugwise
