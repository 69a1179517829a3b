// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/PDFDocument.h"

#include <QThreadPool>
#include <QThreadStorage>

#include <chrono>
#include <memory>

namespace dugwise {

class ParserProcess;

/// Reads PDF documents through dugwise-extract, two at a time at most: two threads, each with a
/// parser process of its own, which both end when there is nothing to read for a while. A document
/// has five seconds; one that takes longer, or kills its parser twice, is not tried again until it
/// changes.
class SandboxedPDFReader final : public PDFDocumentReader
{
public:
    /// `program` is the path of dugwise-extract; what failed is remembered in `failedFilesFolder`.
    SandboxedPDFReader(QString program, QString failedFilesFolder);
    ~SandboxedPDFReader() override;

    [[nodiscard]] bool read(const QString &path,
                            const std::function<void(const PDFDocument &document)> &use,
                            const std::stop_token &stop) const override;
    void forgetFailures() const override;

    /// For one document, from its opening to its last page.
    static constexpr std::chrono::seconds kDeadline{5};

private:
    using Use = std::function<void(const PDFDocument &document)>;
    [[nodiscard]] bool
    readInThisThread(const QString &path, const Use &use, const std::stop_token &stop) const;
    [[nodiscard]] ParserProcess &parserOfThisThread(const std::stop_token &stop) const;

    QString m_program;
    QString m_failedFilesFolder;
    mutable QThreadPool m_threads;
    mutable QThreadStorage<std::shared_ptr<ParserProcess>> m_parsers;
};

} // namespace dugwise
