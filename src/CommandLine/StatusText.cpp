// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine/StatusText.h"

#include "CommandLine/AnswerText.h"
#include "Models/AppState.h"
#include "Platform/Platform.h"
#include "Services/FileIndexer.h"
#include "Utilities/Formatters.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

QString line(const QString &what, const QString &state)
{
    return u"  %1%2\n"_s.arg(what.leftJustified(18), state);
}

QString onOrWhyNot(bool isOn, const QString &whyNot)
{
    return isOn ? u"on"_s : u"off: "_s + whyNot;
}

QString folderLines(const FileIndexer &fileIndexer)
{
    const QList<IndexedFile> files = fileIndexer.indexedFiles();
    QString text;
    for (const QUrl &folder : fileIndexer.indexedFolderURLs()) {
        const QString path = folder.toLocalFile();
        const auto count = std::ranges::count_if(
            files, [&](const IndexedFile &file) { return file->path.startsWith(path + u'/'); });
        const QString missing = QFileInfo(path).isDir() ? u""_s : u" (not there)"_s;
        text += u"  %1  %2%3\n"_s.arg(printable(path), counted(count, u"file"_s), missing);
    }
    return text;
}

} // namespace

QString
statusText(const Platform &platform, const AppState &appState, const FileIndexer &fileIndexer)
{
    const QString indexPath = platform.folders.data + u'/' + FileIndexer::kIndexFileName;
    const QString notYet = u"not part of this version"_s;
    return u"Folders\n"_s + folderLines(fileIndexer) + u"Index\n"_s
           + line(u"files"_s, QString::number(fileIndexer.totalFilesIndexed()))
           + line(u"on disk"_s, byteCount(QFileInfo(indexPath).size()) + u", "_s + indexPath)
           + u"Search\n"_s + line(u"language model"_s, appState.aiStatusLabel())
           + line(u"by meaning"_s, onOrWhyNot(false, notYet))
           + line(u"text of PDFs"_s, onOrWhyNot(platform.pdfDocuments != nullptr, notYet))
           + line(u"download facts"_s, onOrWhyNot(platform.metadataReader != nullptr, notYet))
           + line(u"whole machine"_s, onOrWhyNot(platform.metadataQueryCommand != nullptr, notYet))
           + u"Data sources\n"_s + line(u"mail"_s, onOrWhyNot(false, notYet))
           + line(u"messages"_s, onOrWhyNot(appState.messagesAccessible(), notYet))
           + line(u"calendar"_s, onOrWhyNot(appState.calendarEnabled(), notYet))
           + line(u"contacts"_s, onOrWhyNot(appState.contactsEnabled(), notYet)) + u"Network\n"_s
           + line(u"connections"_s, u"none; nothing leaves this machine"_s);
}

} // namespace dugwise
