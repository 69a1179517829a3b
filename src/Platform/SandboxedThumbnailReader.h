// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Thumbnail.h"

#include <QThreadPool>
#include <QThreadStorage>

#include <chrono>
#include <memory>

namespace dugwise {

class ParserProcess;

/// Makes thumbnails through dugwise-thumbnail, one at a time: a thread with a process of its own,
/// which both end when there is nothing to do for a while. An image has three seconds.
class SandboxedThumbnailReader final : public ThumbnailReader
{
public:
    /// `program` is the path of dugwise-thumbnail.
    explicit SandboxedThumbnailReader(QString program);
    ~SandboxedThumbnailReader() override;

    [[nodiscard]] std::optional<Thumbnail> thumbnail(const QString &path,
                                                     const std::stop_token &stop) const override;

    static constexpr std::chrono::seconds kDeadline{3};

private:
    [[nodiscard]] std::optional<Thumbnail> makeInThisThread(const QString &path,
                                                            const std::stop_token &stop) const;

    QString m_program;
    mutable QThreadPool m_thread;
    mutable QThreadStorage<std::shared_ptr<ParserProcess>> m_process;
};

} // namespace dugwise
