// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/MailIndexWriter.h"
#include "Platform/Linux/MailStores.h"
#include "Platform/MailParser.h"

#include <functional>
#include <stop_token>
#include <utility>

namespace dugwise {

/// Brings the index up to date with the folders of mail. What is new is read; what is known already
/// is not parsed again, also where a program wrote a folder anew.
class MailUpdate
{
public:
    MailUpdate(MailIndexWriter &index, MailParser &parser, std::stop_token stop);

    /// Reads what is new in these folders and forgets all that is in no folder any more;
    /// `onCurrent` is called then. Afterwards looks through those files that were changed where
    /// they are, for messages that were deleted. Ends early on a stop, with what was read until
    /// then and perhaps without the call.
    void run(const QList<MailFolder> &folders, const std::function<void()> &onCurrent);

private:
    struct Work
    {
        MailFolder folder;
        MailIndexWriter::Folder known;
        QByteArray state; ///< of the folder now; empty while it may change without being seen
        qint64 size = 0;  ///< bytes to be read
        qint64 from = 0;  ///< of an mbox: the offset from which on it is new
        /// Of a Maildir: the keys and names of new messages.
        QList<std::pair<QByteArray, QByteArray>> fresh;
        bool isUrgent = true;
    };

    [[nodiscard]] std::optional<Work> workOn(const MailFolder &folder,
                                             const MailIndexWriter::Folder &known) const;
    [[nodiscard]] QList<Work> findWork(const QList<MailFolder> &folders);
    [[nodiscard]] bool isToEnd() const;
    void carryOut(const Work &work);
    [[nodiscard]] bool listMaildir(Work &work);
    void readMbox(const Work &work);
    void readMaildir(const Work &work);
    void add(MailIndexWriter::NewMessage message, QByteArray bytes);
    void parse();
    void flush();

    MailIndexWriter &m_index;
    MailParser &m_parser;
    std::stop_token m_stop;
    QList<MailIndexWriter::NewMessage> m_unparsed; ///< with their bytes in m_bytes
    QList<QByteArray> m_bytes;
    qint64 m_byteCount = 0;
    QList<MailIndexWriter::NewMessage> m_parsed;
    qint64 m_parsedSize = 0;
    qint64 m_done = 0; ///< bytes
    qint64 m_total = 0;
    bool m_isStopped = false; ///< also when there is no parser to be had
};

} // namespace dugwise
