// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine/StatusText.h"

#include "Models/AppState.h"
#include "Platform/DesktopMetadata.h"
#include "Platform/MetadataSearchServices.h"
#include "Platform/Platform.h"
#include "Platform/Sandbox.h"
#include "Services/AccessRequest.h"
#include "Services/FileIndexer.h"
#include "Services/NetworkMonitor.h"
#include "Utilities/FilePath.h"
#include "Utilities/Formatters.h"
#include "Utilities/PrintableText.h"

#include <QFileInfo>
#include <QHash>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

QString line(const QString &what, const QString &state)
{
    return u"  %1%2\n"_s.arg(what.leftJustified(18), state);
}

/// The number of files in each of these folders and below it.
QHash<QString, qint64> filesBelow(const QList<QUrl> &folders, const QList<IndexedFile> &files)
{
    QHash<QString, qint64> counts;
    for (const QUrl &folder : folders)
        counts.insert(folder.toLocalFile(), 0);
    for (const IndexedFile &file : files) {
        QString path = file->path;
        do {
            path = FilePath::folder(path);
            const auto count = counts.find(path);
            if (count != counts.end())
                ++*count;
        } while (path != "/"_L1);
    }
    return counts;
}

QString folderLines(const FileIndexer &fileIndexer)
{
    const QList<QUrl> folders = fileIndexer.indexedFolderURLs();
    const QHash<QString, qint64> counts = filesBelow(folders, fileIndexer.indexedFiles());
    QString text;
    for (const QUrl &folder : folders) {
        const QString path = folder.toLocalFile();
        const QString missing = QFileInfo(path).isDir() ? u""_s : u" (not there)"_s;
        text +=
            u"  %1  %2%3\n"_s.arg(printable(path), counted(counts.value(path), u"file"_s), missing);
    }
    return text;
}

/// Why what a sandboxed helper reads is off.
QString withoutHelper(const QString &helper)
{
    return Sandbox::isAvailable()
               ? u"off: %1 is not beside the program"_s.arg(helper)
               : u"off: this system has no Landlock or no seccomp to read them safely"_s;
}

QString pdfState(const Platform &platform)
{
    return platform.pdfDocuments ? u"on, read in a sandbox"_s : withoutHelper(u"dugwise-extract"_s);
}

QString meaningState(const Platform &platform)
{
    const SentenceEmbedding *const embedding = platform.sentenceEmbedding.get();
    return embedding ? u"on: "_s + embedding->description()
                     : u"off: embedding.table is missing or damaged"_s;
}

QString modelState(const Platform &platform, const AppState &appState)
{
    const QString why =
        platform.languageModel ? platform.languageModel->description() : u"this system has none"_s;
    return appState.aiStatusLabel() + u" ("_s + why + u')';
}

/// The stores that tell of downloads and last uses, by their programs.
QString metadataState(const Platform &platform)
{
    QStringList stores{u"attributes of files"_s};
    for (const QString &store : describeMetadataStores(platform.folders))
        stores.append(store.section(u':', 0, 0));
    stores.removeDuplicates();
    return u"on: "_s + stores.join(u", "_s);
}

/// The desktop's search services, and what to install for those that are missing.
QString machineSearchState(const Platform &platform)
{
    if (!platform.metadataQueryCommand)
        return u"off: dugwise-mdfind is not beside the program"_s;
    QStringList present;
    QStringList missing;
    for (const MetadataSearchService &service : metadataSearchServices()) {
        if (service.state == MetadataSearchService::State::present)
            present.append(service.name);
        else if (service.state == MetadataSearchService::State::notIndexed)
            missing.append(service.name + u" has no index yet"_s);
        else
            missing.append(
                u"%1 is not installed (package %2)"_s.arg(service.name, service.package));
    }
    if (present.isEmpty())
        return u"off: "_s + missing.join(u", "_s);
    return (QStringList{u"on: "_s + present.join(u", "_s)} + missing).join(u"; "_s);
}

QString mailState(const Platform &platform)
{
    const MetadataQuery *const mail = platform.metadataQuery.get();
    if (!mail)
        return withoutHelper(u"dugwise-extract"_s);
    return (mail->hasStores() ? u"on: "_s : u"off: "_s) + printable(mail->description());
}

QString messagesState(const Platform &platform)
{
    if (!platform.messageStore)
        return u"off: this system has none"_s;
    const QString what = printable(platform.messageStore->description());
    return (platform.messageStore->isReadable() ? u"on: "_s : u"off: "_s) + what;
}

/// The state of what is read only after a yes. `bringer` says what would give it a source.
QString personalState(const Platform &platform,
                      PersonalData data,
                      const QStringList &sources,
                      const QString &bringer)
{
    if (sources.isEmpty())
        return u"off: none found; %1 would be read"_s.arg(bringer);
    const std::optional<bool> answer = accessAnswer(platform.userDefaults, data);
    if (answer.value_or(false)) {
        QStringList lines;
        for (const QString &source : sources)
            lines.append(printable(source));
        return u"on: "_s + lines.join(u", "_s);
    }
    const QString why = answer ? u"denied"_s : u"not asked yet"_s;
    return u"off: %1; `dugwise access grant %2` turns it on"_s.arg(why, nameOf(data));
}

QString calendarState(const Platform &platform)
{
    if (!platform.eventStore)
        return withoutHelper(u"dugwise-agenda"_s);
    return personalState(platform,
                         PersonalData::calendar,
                         platform.eventStore->sources(),
                         u"calendars of Evolution or Thunderbird, or .ics files in ~/.calendars"_s);
}

QString contactsState(const Platform &platform)
{
    if (!platform.contactStore)
        return withoutHelper(u"dugwise-agenda"_s);
    return personalState(
        platform,
        PersonalData::contacts,
        platform.contactStore->sources(),
        u"address books of Evolution or Thunderbird, or .vcf files in ~/.contacts"_s);
}

QString networkState(const NetworkMonitor &monitor)
{
    const QString connected = monitor.isConnected() ? u"connected"_s : u"not connected"_s;
    return monitor.connectionType() + u", "_s + connected;
}

} // namespace

QString statusText(const Platform &platform,
                   const AppState &appState,
                   const FileIndexer &fileIndexer,
                   const NetworkMonitor &networkMonitor)
{
    const QString indexPath = platform.folders.data + u'/' + FileIndexer::kIndexFileName;
    return u"Folders\n"_s + folderLines(fileIndexer) + u"Index\n"_s
           + line(u"files"_s, QString::number(fileIndexer.totalFilesIndexed()))
           + line(u"on disk"_s, byteCount(QFileInfo(indexPath).size()) + u", "_s + indexPath)
           + u"Search\n"_s + line(u"language model"_s, modelState(platform, appState))
           + line(u"by meaning"_s, meaningState(platform))
           + line(u"text of PDFs"_s, pdfState(platform))
           + line(u"download facts"_s, metadataState(platform))
           + line(u"whole machine"_s, machineSearchState(platform)) + u"Data sources\n"_s
           + line(u"mail"_s, mailState(platform)) + line(u"messages"_s, messagesState(platform))
           + line(u"calendar"_s, calendarState(platform))
           + line(u"contacts"_s, contactsState(platform)) + u"Network\n"_s
           + line(u"connections"_s,
                  u"to a model server on this machine at most; nothing leaves it"_s)
           + line(u"this machine"_s, networkState(networkMonitor));
}

} // namespace dugwise
