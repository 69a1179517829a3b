// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/IndexedFile.h"
#include "Platform/Thumbnail.h"
#include "Services/FilePreviewService.h"

#include <QCoroTask>
#include <QObject>
#include <QThreadPool>
#include <QTimer>

#include <chrono>
#include <memory>
#include <optional>
#include <stop_token>

namespace dugwise {

/// Reads what a preview shows of a file's content, one file at a time, in a worker of its own. Only
/// the file asked for last counts: reading the one before is stopped, and those in between are
/// never touched. A file on a mount that is gone may hold its worker up for ever: one that does not
/// stop is abandoned, and another takes its place, while not too many are. Lives on the UI thread,
/// where what was read is published.
class PreviewLoader : public QObject
{
    Q_OBJECT

public:
    /// What a preview shows of a file's text.
    struct Text
    {
        QString plain; ///< several lines, without characters that control anything
        QString html;  ///< its first lines, with a <b> around the words that are looked for
    };

    /// Characters of the text that is shown.
    static constexpr std::size_t kMostCharacters = 3000;
    /// UTF-16 code units of it: characters can be of any length, and all of them are laid out.
    static constexpr qsizetype kMostUnits = qsizetype{2} * kMostCharacters;
    /// Lines that are laid out; the panel has room for some twenty.
    static constexpr int kMostLines = 60;
    /// Bytes of the largest file that is read for its text, because all of it is looked at.
    static constexpr qint64 kLargestFile = qint64{512} * 1024 * 1024;
    /// After this there is no text, whatever holds its reading up; somewhat longer than a document
    /// may take by itself.
    static constexpr std::chrono::seconds kPatience{7};
    /// What a worker has to stop in, which takes it a moment where files answer.
    static constexpr std::chrono::seconds kGrace{1};
    static constexpr int kMostAbandoned = 3; ///< workers at a time

    /// The reader outlives the object; null: there are no thumbnails.
    PreviewLoader(FilePreviewService service,
                  const ThumbnailReader *thumbnails,
                  std::chrono::milliseconds patience = kPatience);
    Q_DISABLE_COPY_MOVE(PreviewLoader)
    /// Waits for the workers, but no longer than kGrace.
    ~PreviewLoader() override;

    /// Shows nothing of any file before, and reads this one, if any. `words` are looked for in it.
    void load(const std::optional<IndexedFile> &file, const QStringList &words = {});

    /// Whether the text is still to come.
    [[nodiscard]] bool isReading() const { return m_isReading; }
    /// Absent as long as it is read, and when there is none.
    [[nodiscard]] const std::optional<Text> &text() const { return m_text; }
    /// Of an image; comes after the text.
    [[nodiscard]] const std::optional<Thumbnail> &thumbnail() const { return m_thumbnail; }

Q_SIGNALS:
    void changed();

private:
    struct Wanted
    {
        IndexedFile file;
        QStringList words;
    };

    QCoro::Task<void> readWanted();
    void stopReading();
    void giveUp();
    void abandonWorker();
    void publish(const std::optional<Text> &text);

    FilePreviewService m_service;
    const ThumbnailReader *m_thumbnails;
    /// Has one thread for the worker, and one for each abandoned one.
    std::unique_ptr<QThreadPool> m_threads = std::make_unique<QThreadPool>();
    QTimer m_patience;            ///< with a file that has no text yet
    QTimer m_grace;               ///< with a worker that is to stop
    std::stop_source m_stop;      ///< of what is read now
    std::stop_source m_abandoned; ///< tells who awaits the worker that it is not any more
    int m_abandonedWorkers = 0;   ///< that have not come back
    std::optional<Wanted> m_wanted;
    bool m_isWorking = false;
    bool m_isReading = false;
    std::optional<Text> m_text;
    std::optional<Thumbnail> m_thumbnail;
};

} // namespace dugwise
