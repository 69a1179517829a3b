// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/FilePreview.h"

#include "Models/PreviewFacts.h"
#include "Platform/Platform.h"
#include "Utilities/DateIntentParser.h"
#include "Utilities/FileTypeHelper.h"
#include "Utilities/PrintableText.h"

#include <QImage>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

/// Of those in a request; it may be of any length.
constexpr qsizetype kMostWords = 30;
/// Entries of a list that a language model gave, and the characters of each of its texts.
constexpr qsizetype kMostEntries = 50;
constexpr qsizetype kLongestText = 2000;

/// The words of the request whose answer has the result; of the latest such request.
QStringList wordsOfRequest(const QList<ChatMessage> &messages, const QUuid &result)
{
    const auto hasResult = [&](const ChatMessage &message) {
        return std::ranges::find(message.results, result, &SearchResult::id)
               != message.results.end();
    };
    const auto answer = std::find_if(messages.crbegin(), messages.crend(), hasResult);
    const auto request = std::find_if(
        answer, messages.crend(), [](const ChatMessage &message) { return message.isUser; });
    if (request == messages.crend())
        return {};
    const QStringList words = DateIntentParser::extractKeywords(request->content);
    return words.first(std::min(words.size(), kMostWords));
}

QString lines(const QString &text)
{
    return printableLines(text.left(kLongestText));
}

QStringList entries(const QStringList &list)
{
    QStringList shown;
    for (const QString &entry : list.first(std::min(list.size(), kMostEntries)))
        shown.append(printable(entry.left(kLongestText)));
    return shown;
}

} // namespace

FilePreview::FilePreview(Platform &platform, AppState &appState, QObject *parent)
    : QObject(parent)
    , m_platform(platform)
    , m_appState(appState)
    , m_loader(FilePreviewService(platform.pdfDocuments.get()), platform.thumbnails.get())
{
    connect(&appState, &AppState::selectedResultChanged, this, &FilePreview::takeResult);
    connect(&appState, &AppState::previewInsightsChanged, this, &FilePreview::insightsChanged);
    connect(&appState, &AppState::isGeneratingInsightsChanged, this, &FilePreview::insightsChanged);
    connect(&m_loader, &PreviewLoader::changed, this, &FilePreview::contentChanged);
    takeResult();
}

void FilePreview::takeResult()
{
    m_result = m_appState.selectedResult();
    Q_EMIT fileChanged();
    Q_EMIT insightsChanged();
    if (m_result)
        m_loader.load(m_result->file, wordsOfRequest(m_appState.messages(), m_result->id));
    else
        m_loader.load(std::nullopt);
}

QString FilePreview::name() const
{
    return m_result ? printable(m_result->file->name) : QString();
}

QString FilePreview::symbol() const
{
    return m_result ? FileTypeHelper::sfSymbol(m_result->file->fileExtension) : QString();
}

QString FilePreview::typeName() const
{
    return m_result ? displayName(FileTypeHelper::fileType(m_result->file->fileExtension))
                    : QString();
}

QVariantList FilePreview::facts() const
{
    QVariantList facts;
    if (!m_result)
        return facts;
    for (const PreviewFact &fact : previewFacts(m_result->file))
        facts.append(QVariantMap{
            {u"icon"_s, fact.icon}, {u"label"_s, fact.label}, {u"value"_s, fact.value}});
    return facts;
}

QVariantList FilePreview::matchReasons() const
{
    QVariantList reasons;
    if (!m_result)
        return reasons;
    for (const SearchResult::MatchReason reason : m_result->matchReasons)
        reasons.append(QVariantMap{{u"icon"_s, iconName(reason)}, {u"text"_s, rawValue(reason)}});
    return reasons;
}

bool FilePreview::canPreview() const
{
    return m_result && FilePreviewService::canPreview(m_result->file);
}

/// Those of this file.
std::optional<DocumentInsightsResult> FilePreview::insights() const
{
    const std::optional<DocumentInsightsResult> found = m_appState.previewInsights();
    return found && m_result && found->fileName == m_result->file->name ? found : std::nullopt;
}

QString FilePreview::documentType() const
{
    const auto found = insights();
    return found ? printable(found->documentType.left(kLongestText)) : QString();
}

QString FilePreview::summary() const
{
    const auto found = insights();
    return found ? lines(found->summary) : QString();
}

QStringList FilePreview::keyPoints() const
{
    const auto found = insights();
    return found ? entries(found->keyPoints) : QStringList();
}

QStringList FilePreview::entities() const
{
    const auto found = insights();
    return found ? entries(found->entities) : QStringList();
}

QString FilePreview::text() const
{
    return m_loader.text() ? m_loader.text()->plain : QString();
}

QString FilePreview::markedText() const
{
    return m_loader.text() ? m_loader.text()->html : QString();
}

QVariant FilePreview::thumbnail() const
{
    const std::optional<Thumbnail> &found = m_loader.thumbnail();
    if (!found)
        return QImage();
    const QImage image(reinterpret_cast<const uchar *>(found->pixels.constData()),
                       found->size.width(),
                       found->size.height(),
                       QImage::Format_RGBA8888);
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied); // a copy
}

void FilePreview::generateInsights()
{
    if (m_result)
        m_appState.generatePreviewInsights(m_result->file);
}

void FilePreview::openFile()
{
    if (m_result && m_platform.workspace)
        m_platform.workspace->open(m_result->file->path);
}

void FilePreview::revealFile()
{
    if (m_result && m_platform.workspace)
        m_platform.workspace->showInFileManager(m_result->file->path);
}

} // namespace dugwise
