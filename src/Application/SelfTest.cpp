// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Application/SelfTest.h"

#include "DugwiseApp.h"
#include "Platform/SystemFacilities.h"
#include "Services/AccessRequest.h"
#include "Utilities/FileTypeHelper.h"
#include "Utilities/Text.h"
#include "Views/Window.h"

#include <QDir>
#include <QEventLoop>
#include <QImage>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace dugwise {

namespace {

constexpr auto kPatience = 60s; ///< with one state
constexpr auto kEntrance =
    2s; ///< the welcome's animations and an answer's cards have ended by then

std::atomic<int> faults = 0; // a message handler is given nothing to keep it in

void report(const QString &fault)
{
    ++faults;
    std::fputs(qPrintable("dugwise: "_L1 + fault + u'\n'), stderr);
}

void noteMessage(QtMsgType type, const QMessageLogContext & /*context*/, const QString &text)
{
    if (type == QtWarningMsg || type == QtCriticalMsg)
        report(text);
}

/// A facility that the program follows, with values as the test gives them.
template <typename Facility, typename Value>
class Given final : public Facility
{
public:
    using UpdateHandler = typename Facility::UpdateHandler;

    void start(UpdateHandler updateHandler) override { m_updateHandler = std::move(updateHandler); }
    void cancel() override { m_updateHandler = nullptr; }
    void set(const Value &value) const { m_updateHandler(value); }

private:
    UpdateHandler m_updateHandler;
};

using GivenAppearance = Given<DesktopAppearance, Appearance>;
using GivenPath = Given<NetworkPathMonitor, NetworkPath>;

/// Says the same of every document, while it is there.
class GivenModel final : public SystemLanguageModel
{
public:
    bool isThere = false;

    [[nodiscard]] bool isAvailable() override { return isThere; }
    [[nodiscard]] QCoro::Task<void> firstAnswer() override { co_return; }
    [[nodiscard]] QString description() const override { return u"self-test"_s; }
    [[nodiscard]] QCoro::Task<Outcome<QString>> respond(LanguageModelRequest /*request*/) override
    {
        const QString text = uR"({"documentType": "services agreement",
            "summary": "Two parties agree on what one does for the other, and what it costs.",
            "keyPoints": ["It runs for 27 months.", "Either side may end it in writing."],
            "entities": ["Fernwick Analytics", "Mossbury", "27 months"]})"_s;
        co_return text;
    }
};

StandardFolders withOwnFolders(const QString &own)
{
    StandardFolders folders = StandardFolders::ofUser();
    folders.data = own + "/data/Dugwise"_L1;
    folders.config = own + "/config/Dugwise"_L1;
    folders.cache = own + "/cache/Dugwise"_L1;
    return folders;
}

/// Handles events until `isReached` holds; false when it does not for too long.
template <typename Condition>
bool waitUntil(const Condition &isReached)
{
    QEventLoop loop;
    QTimer look;
    const QDeadlineTimer deadline(kPatience);
    look.callOnTimeout([&] {
        if (isReached() || deadline.hasExpired())
            loop.quit();
    });
    look.start(2ms);
    loop.exec();
    return isReached();
}

void wait(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Whether it shows anything: one colour alone is a window that was not drawn.
bool isDrawn(const QImage &picture)
{
    if (picture.isNull())
        return false;
    const QRgb first = picture.pixel(0, 0);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != first)
                return true;
        }
    }
    return false;
}

class Tour
{
public:
    Tour(const QString &own, QString pictureFolder)
        : m_platform(withOwnFolders(own))
        , m_pictureFolder(std::move(pictureFolder))
    {
        addSystemFacilities(m_platform);
        auto appearance = std::make_unique<GivenAppearance>();
        m_appearance = appearance.get();
        m_platform.desktopAppearance = std::move(appearance);
        auto path = std::make_unique<GivenPath>();
        m_path = path.get();
        m_platform.networkPathMonitor = std::move(path);
        auto model = std::make_unique<GivenModel>();
        m_model = model.get();
        m_platform.languageModel = std::move(model);
        m_platform.log = [](const QString & /*line*/) {};
        takeOverAnswers();
        m_app.emplace(m_platform);
        require(waitUntil([this] { return m_app->appState().isStarted(); }), u"the start"_s);
        auto prompt = std::make_unique<SheetAccessPrompt>(); // nobody was to be asked so far
        m_prompt = prompt.get();
        m_platform.accessPrompt = std::move(prompt);
        m_session.emplace(
            m_platform, m_app->appState(), m_app->fileIndexer(), m_app->networkMonitor());
        m_window.emplace(*m_session);
    }

    [[nodiscard]] bool isOpen() const { return m_window->isOpen(); }

    void run()
    {
        m_appearance->set({.isDark = false});
        m_path->set({.isSatisfied = true});
        require(waitUntil([this] { return !isBusy(); }), u"the index"_s);
        wait(kEntrance);
        visit(u"welcome"_s);
        showAccess();
        showPages();
        showConversation();
        showSizes();
        showNothing();
    }

private:
    /// What the person lets be read is read here as well.
    void takeOverAnswers()
    {
        const Platform theirs(StandardFolders::ofUser());
        for (const PersonalData data : kAllPersonalData) {
            if (const auto answer = accessAnswer(theirs.userDefaults, data))
                setAccessAnswer(m_platform.userDefaults, data, *answer);
        }
    }

    [[nodiscard]] bool isBusy() { return m_app->fileIndexer().isBusy(); }

    static void require(bool isReached, const QString &what)
    {
        if (!isReached)
            report(u"%1: not reached"_s.arg(what));
    }

    void visit(const QString &state)
    {
        const QImage picture = m_window->view()->grabWindow();
        if (!isDrawn(picture))
            report(u"%1: nothing was drawn"_s.arg(state));
        if (m_pictureFolder.isEmpty())
            return;
        const QString path = QDir(m_pictureFolder).absoluteFilePath(state + ".png"_L1);
        if (!picture.save(path))
            report(u"%1: cannot be written"_s.arg(path));
    }

    void ask(const QString &request)
    {
        const qsizetype before = m_app->appState().messages().size();
        m_session->submit(request);
        const AppState &state = m_app->appState();
        require(waitUntil([&] { return state.messages().size() >= before + 2; }), request);
        wait(kEntrance);
    }

    void turnPages(int count, const QString &area = u"conversation"_s)
    {
        auto *const found = m_window->view()->findChild<QObject *>(area);
        if (!found || !QMetaObject::invokeMethod(found, "turnPages", Q_ARG(int, count)))
            report(u"there is no %1 to scroll"_s.arg(area));
    }

    void press(const QString &button)
    {
        auto *const found = m_window->view()->findChild<QObject *>(button);
        if (!found || !QMetaObject::invokeMethod(found, "clicked"))
            report(u"there is no %1 to press"_s.arg(button));
    }

    /// Asks for the sake of the pictures; nothing is done with an answer, and none is given.
    void showAccess()
    {
        const QCoro::Task<std::optional<bool>> calendar = m_prompt->ask(PersonalData::calendar);
        wait(kEntrance);
        visit(u"access"_s);
        m_prompt->dismiss();
        m_appearance->set({.isDark = true, .reducesMotion = true});
        wait(100ms);
        const QCoro::Task<std::optional<bool>> contacts = m_prompt->ask(PersonalData::contacts);
        wait(100ms);
        visit(u"access-dark"_s);
        m_appearance->set({.isDark = false, .reducesMotion = true, .textScale = 1.5});
        wait(100ms);
        visit(u"access-large-text"_s);
        m_prompt->dismiss();
    }

    void showPages()
    {
        m_appearance->set({.isDark = true});
        wait(kEntrance);
        visit(u"welcome-dark"_s);
        m_appearance->set({.isDark = false, .reducesMotion = true});
        for (const SidebarItem page : kAllSidebarItems) {
            if (page != SidebarItem::home)
                showPage(page);
        }
        m_app->appState().setSelectedSidebarItem(SidebarItem::home);
        showIndexing();
        m_path->set({});
        visit(u"offline"_s);
        m_path->set({.isSatisfied = true});
    }

    /// Its beginning and its end, in all looks.
    void showPage(SidebarItem page)
    {
        const QString name = rawValue(page).toLower();
        const QString area = name + "View"_L1;
        m_app->appState().setSelectedSidebarItem(page);
        const auto showBothEnds = [&](const QString &state, const Appearance &appearance) {
            m_appearance->set(appearance);
            wait(100ms);
            turnPages(-99, area);
            visit(state);
            turnPages(99, area);
            visit(state + "-end"_L1);
        };
        showBothEnds(name, {.isDark = false, .reducesMotion = true});
        showBothEnds(name + "-dark"_L1, {.isDark = true, .reducesMotion = true});
        const Appearance large{.isDark = false, .reducesMotion = true, .textScale = 1.5};
        showBothEnds(name + "-large-text"_L1, large);
        m_window->view()->resize(m_window->view()->minimumSize());
        showBothEnds(name + "-small-large-text"_L1, large);
        if (page == SidebarItem::settings) {
            press(u"clear"_s);
            wait(100ms);
            visit(name + "-clear"_L1);
            press(u"cancelClear"_s);
        }
        m_window->view()->resize(1200, 750);
        m_appearance->set({.isDark = false, .reducesMotion = true});
    }

    /// A walk of a few files is over before the next event: it is shown from within its beginning.
    void showIndexing()
    {
        FileIndexer &indexer = m_app->fileIndexer();
        bool isShown = indexer.indexedFolderURLs().isEmpty(); // nothing to index then
        QObject context;
        QObject::connect(&indexer, &FileIndexer::isIndexingChanged, &context, [&] {
            if (indexer.isIndexing() && !std::exchange(isShown, true))
                visit(u"indexing"_s);
        });
        indexer.reindexAll();
        require(waitUntil([&] { return isShown && !isBusy(); }), u"indexing"_s);
    }

    void showConversation()
    {
        m_session->submit(u"That legal agreement I downloaded last week"_s);
        require(m_session->isSearching(), u"busy"_s);
        visit(u"busy"_s);
        require(waitUntil([this] { return !m_session->isSearching(); }), u"an answer"_s);
        m_session->selectNumber(1);
        m_appearance->set({.isDark = false});
        wait(kEntrance);
        m_appearance->set({.isDark = false, .reducesMotion = true});
        visit(u"answer-end"_s);
        turnPages(-99);
        visit(u"answer"_s);
        showPreview();
        m_model->isThere = true;
        ask(u"tell me about #1"_s);
        visit(u"insights"_s);
        m_model->isThere = false;
        showImage();
        m_session->newChat();
        ask(u"the budget review"_s);
        visit(u"messages"_s);
        m_appearance->set({.isDark = true, .reducesMotion = true});
        visit(u"messages-dark"_s);
        turnPages(-99);
        visit(u"answer-dark"_s);
    }

    void scrollPreview(bool toEnd)
    {
        auto *const scroll = m_window->view()->findChild<QObject *>(u"previewScroll"_s);
        if (!scroll)
            return report(u"there is no preview to scroll"_s);
        const double end =
            scroll->property("contentHeight").toDouble() - scroll->property("height").toDouble();
        scroll->setProperty("contentY", toEnd ? std::max(0.0, end) : 0.0);
    }

    void showPreview()
    {
        FilePreview &preview = *m_session->preview();
        require(preview.hasText(), u"the selected file's text"_s);
        scrollPreview(true);
        visit(u"preview-end"_s);
        scrollPreview(false);
        m_model->isThere = true;
        m_session->lookForModel();
        preview.generateInsights();
        visit(u"analyzing"_s);
        require(waitUntil([&] { return preview.hasInsights(); }), u"insights"_s);
        m_appearance->set({.isDark = true, .reducesMotion = true});
        visit(u"preview-dark"_s);
        m_appearance->set({.isDark = false, .reducesMotion = true});
        m_model->isThere = false;
        m_session->lookForModel();
    }

    void showImage()
    {
        ask(u"a picture of the plan"_s);
        const QList<SearchResult> results = m_app->appState().lastResults();
        const auto image = std::ranges::find(results, FileType::image, [](const auto &result) {
            return FileTypeHelper::fileType(result.file->fileExtension);
        });
        if (image == results.end())
            return; // there is none in this home
        m_app->appState().setSelectedResult(*image);
        FilePreview &preview = *m_session->preview();
        require(waitUntil([&] { return !preview.thumbnail().value<QImage>().isNull(); }),
                u"a thumbnail"_s);
        scrollPreview(true);
        visit(u"image"_s);
    }

    void showSizes()
    {
        m_session->selectNumber(1);
        require(waitUntil([this] { return !m_session->preview()->isReading(); }), u"a text"_s);
        m_appearance->set({.isDark = false, .reducesMotion = true, .textScale = 1.5});
        visit(u"large-text"_s);
        m_window->view()->resize(m_window->view()->minimumSize());
        m_appearance->set({.isDark = false, .reducesMotion = true});
        wait(100ms);
        visit(u"small"_s);
        m_session->newChat();
        visit(u"small-welcome"_s);
        m_appearance->set({.isDark = false, .reducesMotion = true, .textScale = 1.5});
        visit(u"small-large-text"_s);
    }

    void showNothing()
    {
        m_appearance->set({.isDark = false, .reducesMotion = true});
        m_window->view()->resize(1200, 750);
        const QList<QUrl> folders = m_app->fileIndexer().indexedFolderURLs();
        for (const QUrl &folder : folders)
            m_app->fileIndexer().removeFolder(folder);
        require(waitUntil([this] { return !isBusy(); }), u"the removal of folders"_s);
        visit(u"empty"_s);
    }

    Platform m_platform;
    QString m_pictureFolder;
    GivenAppearance *m_appearance = nullptr;
    GivenPath *m_path = nullptr;
    SheetAccessPrompt *m_prompt = nullptr;
    GivenModel *m_model = nullptr;
    std::optional<DugwiseApp> m_app;
    std::optional<Session> m_session;
    std::optional<Window> m_window;
};

} // namespace

int runSelfTest(const QString &pictureFolder)
{
    const QTemporaryDir own;
    qInstallMessageHandler(noteMessage);
    if (!own.isValid()) {
        report(u"no temporary folder can be made"_s);
    } else if (!pictureFolder.isEmpty() && !QDir().mkpath(pictureFolder)) {
        report(u"the folder cannot be made: %1"_s.arg(pictureFolder));
    } else {
        Tour tour(own.path(), pictureFolder);
        if (tour.isOpen())
            tour.run();
        else
            report(u"the window cannot be made"_s);
    }
    qInstallMessageHandler(nullptr);
    return faults == 0 ? 0 : 1;
}

} // namespace dugwise
