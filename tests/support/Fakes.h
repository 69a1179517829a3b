// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AccessPrompt.h"
#include "Platform/ContactStore.h"
#include "Platform/DesktopAppearance.h"
#include "Platform/EventStore.h"
#include "Platform/FolderPicker.h"
#include "Platform/MetadataItem.h"
#include "Platform/MetadataQueryCommand.h"
#include "Platform/NetworkPathMonitor.h"
#include "Platform/PDFDocument.h"
#include "Platform/SentenceEmbedding.h"
#include "Platform/SystemLanguageModel.h"
#include "Platform/Workspace.h"

#include <QCoroFuture>
#include <QHash>
#include <QPromise>

#include <algorithm>
#include <atomic>

/// Stand-ins for what the desktop gives.
namespace dugwise::test {

/// Knows the items that a test puts in.
class FakeMetadataIndex final : public MetadataIndex
{
public:
    QHash<QString, MetadataItem> items;

    [[nodiscard]] std::optional<MetadataItem> item(const QString &path) const override
    {
        const auto at = items.constFind(path);
        return at == items.cend() ? std::nullopt : std::optional(*at);
    }
};

/// Reads the same at all times.
class FakeMetadataReader final : public MetadataReader
{
public:
    std::shared_ptr<FakeMetadataIndex> index = std::make_shared<FakeMetadataIndex>();

    [[nodiscard]] std::shared_ptr<const MetadataIndex>
    read(std::shared_ptr<const MetadataIndex> /*previous*/, const std::stop_token &) const override
    {
        return index;
    }
};

/// Answers one run after the other with what a test has set down, and keeps the arguments.
class FakeMetadataQueryCommand final : public MetadataQueryCommand
{
public:
    QList<std::optional<QByteArray>> outputs;
    QList<QStringList> runs;

    [[nodiscard]] QCoro::Task<std::optional<QByteArray>> run(QStringList arguments) override
    {
        runs.append(arguments);
        std::optional<QByteArray> output;
        if (!outputs.isEmpty())
            output = outputs.takeFirst();
        co_return output;
    }
};

/// A desktop whose settings a test changes.
class FakeDesktopAppearance final : public DesktopAppearance
{
public:
    UpdateHandler handler;

    void start(UpdateHandler updateHandler) override { handler = std::move(updateHandler); }
    void cancel() override { handler = {}; }
};

/// Follows the paths that a test hands to the handler.
class FakeNetworkPathMonitor final : public NetworkPathMonitor
{
public:
    UpdateHandler updateHandler; ///< none while nobody watches

    void start(UpdateHandler handler) override { updateHandler = std::move(handler); }
    void cancel() override { updateHandler = {}; }
};

/// The texts of a document's pages; absent where a page is only a picture.
using FakePages = QList<std::optional<QString>>;

class FakePDFDocument final : public PDFDocument
{
public:
    explicit FakePDFDocument(FakePages pages)
        : m_pages(std::move(pages))
    {}
    [[nodiscard]] int pageCount() const override { return static_cast<int>(m_pages.size()); }
    [[nodiscard]] std::optional<QString> pageText(int page) const override
    {
        return m_pages.value(page);
    }

private:
    FakePages m_pages;
};

/// Opens the documents that a test puts in, by their paths.
class FakePDFDocumentReader final : public PDFDocumentReader
{
public:
    QHash<QString, FakePages> documents;
    mutable int forgotten = 0; ///< how often

    void forgetFailures() const override { ++forgotten; }

    [[nodiscard]] bool read(const QString &path,
                            const std::function<void(const PDFDocument &document)> &use,
                            const std::stop_token &) const override
    {
        const auto at = documents.constFind(path);
        if (at != documents.cend())
            use(FakePDFDocument(*at));
        return at != documents.cend();
    }
};

/// Finds the texts that a test puts in at a given distance from every request, and all others at 2.
class FakeSentenceEmbedding final : public SentenceEmbedding
{
public:
    QHash<QByteArray, double> distances;
    quint64 number = 1;
    mutable std::atomic<int> made = 0; ///< vectors of files

    [[nodiscard]] quint64 version() const override { return number; }
    [[nodiscard]] QString description() const override { return QStringLiteral("made up"); }
    [[nodiscard]] std::unique_ptr<PassageEncoder> encoder() const override
    {
        return std::make_unique<Encoder>(*this);
    }
    [[nodiscard]] std::unique_ptr<PassageQuery> query(const QByteArray &) const override
    {
        return std::make_unique<Query>(*this);
    }

private:
    static constexpr char kBetween = '|';

    class Encoder final : public PassageEncoder
    {
    public:
        explicit Encoder(const FakeSentenceEmbedding &embedding)
            : m_embedding(embedding)
        {}
        [[nodiscard]] QByteArray vectors(const QByteArray &name,
                                         const QByteArrayList &passages) override
        {
            ++m_embedding.made;
            return (QByteArrayList{name} + passages).join(kBetween) + kBetween;
        }

    private:
        const FakeSentenceEmbedding &m_embedding;
    };

    class Query final : public PassageQuery
    {
    public:
        explicit Query(const FakeSentenceEmbedding &embedding)
            : m_embedding(embedding)
        {}
        [[nodiscard]] double nearest(const QByteArray &vectors) const override
        {
            double least = 2;
            for (const QByteArray &text : vectors.split(kBetween))
                least = std::min(least, m_embedding.distances.value(text, 2));
            return least;
        }

    private:
        const FakeSentenceEmbedding &m_embedding;
    };
};

/// Generates one text after the other that a test has set down, and keeps what it was asked.
class FakeLanguageModel final : public SystemLanguageModel
{
public:
    bool isThere = true;
    QStringList texts; ///< none left: the request fails
    QList<LanguageModelRequest> requests;

    [[nodiscard]] bool isAvailable() override { return isThere; }
    [[nodiscard]] QCoro::Task<void> firstAnswer() override { co_return; }
    [[nodiscard]] QString description() const override { return QStringLiteral("made up"); }
    [[nodiscard]] QCoro::Task<Outcome<QString>> respond(LanguageModelRequest request) override
    {
        requests.append(request);
        if (texts.isEmpty())
            co_return Failure{QStringLiteral("nothing to say")};
        const QString text = texts.takeFirst();
        co_return text;
    }
};

/// Opens nothing, and keeps the paths.
class FakeWorkspace final : public Workspace
{
public:
    QStringList opened;
    QStringList shown;

    void open(const QString &path) override { opened.append(path); }
    void showInFileManager(const QString &path) override { shown.append(path); }
};

/// Picks what a test has chosen, or cancels.
class FakeFolderPicker final : public FolderPicker
{
public:
    std::optional<QString> choice;
    QStringList shown;

    [[nodiscard]] QCoro::Task<std::optional<QString>> pickFolder(QString message,
                                                                 QString confirmLabel) override
    {
        shown = {message, confirmLabel};
        co_return choice;
    }
};

/// Gives the events that a test puts in, whatever the span, and keeps the spans.
class FakeEventStore final : public EventStore
{
public:
    QList<StoredEvent> events;
    QStringList there = {QStringLiteral("a calendar")};
    mutable QList<DateIntentParser::DateRange> spans;

    [[nodiscard]] QList<StoredEvent>
    eventsIn(const DateIntentParser::DateRange &span) const override
    {
        spans.append(span);
        return events;
    }
    [[nodiscard]] QStringList sources() const override { return there; }
};

/// Gives the entries that a test puts in whose given name is asked for, and keeps the names.
class FakeContactStore final : public ContactStore
{
public:
    QList<StoredContact> contacts;
    QStringList there = {QStringLiteral("an address book")};
    mutable QStringList names;

    [[nodiscard]] QList<StoredContact> contactsNamed(const QString &name) const override
    {
        names.append(name);
        QList<StoredContact> found = contacts;
        found.removeIf([&](const StoredContact &contact) { return contact.givenName != name; });
        return found;
    }
    [[nodiscard]] QStringList sources() const override { return there; }
};

/// Answers as a test says, at once or when it lets go, and keeps what was asked for.
class FakeAccessPrompt final : public AccessPrompt
{
public:
    QHash<PersonalData, bool> answers; ///< to all else, none
    std::shared_ptr<QPromise<void>> gate;
    QList<PersonalData> asked;

    [[nodiscard]] QCoro::Task<std::optional<bool>> ask(PersonalData data) override
    {
        asked.append(data);
        std::optional<bool> answer;
        if (answers.contains(data))
            answer = answers[data];
        if (const auto held = gate) {
            const QFuture<void> opened = held->future();
            co_await opened;
        }
        co_return answer;
    }
};

/// Puts a new stand-in in a place of the platform or the services, and gives it to the test.
template <typename Fake, typename Facility, typename... Arguments>
Fake &install(std::unique_ptr<Facility> &place, Arguments &&...arguments)
{
    auto owned = std::make_unique<Fake>(std::forward<Arguments>(arguments)...);
    Fake &fake = *owned;
    place = std::move(owned);
    return fake;
}

} // namespace dugwise::test
