// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/PreviewLoader.h"
#include "Platform/PDFDocument.h"
#include "support/SampleFiles.h"

#include <QSemaphore>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

#include <atomic>
#include <memory>

using namespace Qt::StringLiterals;

namespace dugwise::test {

namespace {

class OnePage final : public PDFDocument
{
public:
    [[nodiscard]] int pageCount() const override { return 1; }
    [[nodiscard]] std::optional<QString> pageText(int /*page*/) const override { return u"page"_s; }
};

/// Reads only when a test lets it go on, or when it is to stop; counts the documents.
class SlowReader final : public PDFDocumentReader
{
public:
    mutable QSemaphore goOn;
    mutable std::atomic<int> opened = 0;
    mutable std::atomic<int> stopped = 0;

    [[nodiscard]] bool read(const QString & /*path*/,
                            const std::function<void(const PDFDocument &document)> &use,
                            const std::stop_token &stop) const override
    {
        ++opened;
        while (!goOn.tryAcquire(1, 1)) {
            if (stop.stop_requested()) {
                ++stopped;
                return false;
            }
        }
        use(OnePage());
        return true;
    }
};

/// Lies where nothing answers, whoever wants it to stop, until a test lets it go on.
class HeldUpReader final : public PDFDocumentReader
{
public:
    mutable QSemaphore goOn;
    mutable std::atomic<int> opened = 0;
    mutable std::atomic<int> closed = 0;

    [[nodiscard]] bool read(const QString & /*path*/,
                            const std::function<void(const PDFDocument &document)> & /*use*/,
                            const std::stop_token & /*stop*/) const override
    {
        ++opened;
        goOn.acquire();
        ++closed;
        return false;
    }
};

class FakeThumbnails final : public ThumbnailReader
{
public:
    mutable QStringList paths; // asked for by one worker at a time

    [[nodiscard]] std::optional<Thumbnail>
    thumbnail(const QString &path, const std::stop_token & /*stop*/) const override
    {
        paths.append(path);
        if (path.endsWith("bad.png"_L1))
            return std::nullopt;
        return Thumbnail{{1, 1}, QByteArray(4, '\x7f')};
    }
};

} // namespace

class TstPreviewLoader : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;

    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }
    [[nodiscard]] IndexedFile file(const QString &name) const
    {
        return indexedFile({.path = path(name)});
    }
    /// What is shown of a file in the end.
    [[nodiscard]] std::optional<QString> textOf(const QString &name) const
    {
        PreviewLoader loader(FilePreviewService(nullptr), nullptr);
        loader.load(file(name));
        if (!QTest::qWaitFor([&] { return !loader.isReading(); }))
            return u"(still reading)"_s;
        return loader.text() ? std::optional(loader.text()->plain) : std::nullopt;
    }

private Q_SLOTS:
    void textsAppearWhenTheyAreReady()
    {
        writeFile(path(u"a.txt"_s), "A budget,\r\n\ttwo <b>\x1b[1m lines");
        PreviewLoader loader(FilePreviewService(nullptr), nullptr);
        QVERIFY(!loader.isReading() && !loader.text());
        loader.load(file(u"a.txt"_s), {u"budget"_s});
        QTRY_VERIFY(!loader.isReading());
        QVERIFY(loader.text());
        QCOMPARE(loader.text()->plain, u"A budget,\n    two <b>\uFFFD[1m lines"_s);
        QVERIFY(loader.text()->html.contains(u"A <b>budget</b>,<br>    two &lt;b&gt;"_s));
        QVERIFY(!loader.thumbnail());

        QSignalSpy changed(&loader, &PreviewLoader::changed);
        loader.load(std::nullopt);
        QCOMPARE(changed.size(), 1);
        QVERIFY(!loader.isReading() && !loader.text());
    }

    void onlyTheLastOneCounts()
    {
        SlowReader reader;
        PreviewLoader loader{FilePreviewService(&reader), nullptr};
        QStringList texts;
        connect(&loader, &PreviewLoader::changed, this, [&] {
            if (loader.text())
                texts.append(loader.text()->plain);
        });
        writeFile(path(u"last.txt"_s), "the last");
        for (int i = 0; i < 100; ++i) {
            const QString name = u"%1.pdf"_s.arg(i);
            writeFile(path(name), "");
            loader.load(file(name));
            if (i == 0)
                QTRY_COMPARE(reader.opened, 1);
            QVERIFY(loader.isReading() && !loader.text());
        }
        loader.load(file(u"last.txt"_s));
        QTRY_VERIFY(!loader.isReading());
        QCOMPARE(reader.opened, 1);
        QCOMPARE(reader.stopped, 1);
        QCOMPARE(texts, QStringList{u"the last"_s});

        reader.goOn.release();
        loader.load(file(u"7.pdf"_s));
        QTRY_VERIFY(!loader.isReading());
        QCOMPARE(texts.last(), u"--- Page 1 ---\npage\n\n"_s);
    }

    void whatIsNotReadToItsEndIsStopped()
    {
        SlowReader reader;
        writeFile(path(u"some.pdf"_s), "");
        auto loader = std::make_unique<PreviewLoader>(FilePreviewService(&reader), nullptr);
        loader->load(file(u"some.pdf"_s));
        QTRY_COMPARE(reader.opened, 1);
        loader->load(std::nullopt);
        QTRY_COMPARE(reader.stopped, 1);
        loader->load(file(u"some.pdf"_s));
        QTRY_COMPARE(reader.opened, 2);
        loader.reset();
        QCOMPARE(reader.stopped, 2);
        QCoreApplication::processEvents(); // what was to be published has nowhere to go
    }

    void whatTakesTooLongHasNoText()
    {
        SlowReader reader;
        writeFile(path(u"some.pdf"_s), "");
        PreviewLoader loader(FilePreviewService(&reader), nullptr, std::chrono::milliseconds(20));
        QSignalSpy changed(&loader, &PreviewLoader::changed);
        loader.load(file(u"some.pdf"_s));
        QTRY_VERIFY(!loader.isReading());
        QVERIFY(!loader.text());
        QTRY_COMPARE(reader.stopped, reader.opened);
        QCOMPARE(changed.size(), 2); // what comes too late changes nothing

        reader.goOn.release();
        PreviewLoader patient(FilePreviewService(&reader), nullptr);
        patient.load(file(u"some.pdf"_s));
        QTRY_VERIFY(patient.text());
    }

    void whatIsHeldUpHoldsUpNothingElse()
    {
        const HeldUpReader reader;
        writeFile(path(u"some.pdf"_s), "");
        writeFile(path(u"some.txt"_s), "text");
        {
            PreviewLoader loader(
                FilePreviewService(&reader), nullptr, std::chrono::milliseconds(5000));
            const auto textAfter = [&](const QString &name) {
                loader.load(file(name));
                [[maybe_unused]] const bool isDone =
                    QTest::qWaitFor([&] { return !loader.isReading(); }, 20'000);
                return loader.text() ? loader.text()->plain : QString();
            };
            const int most = PreviewLoader::kMostAbandoned + 1;
            for (int i = 1; i <= most; ++i) {
                loader.load(file(u"some.pdf"_s));
                QTRY_COMPARE(reader.opened, i);
                if (i < most)
                    QCOMPARE(textAfter(u"some.txt"_s), u"text"_s);
            }
            QCOMPARE(textAfter(u"some.txt"_s), QString()); // too many
            reader.goOn.release();
            QTRY_COMPARE(reader.closed, 1);
            QCOMPARE(textAfter(u"some.txt"_s), u"text"_s);
            QCOMPARE(reader.opened, most);
            loader.load(file(u"some.pdf"_s));
            QTRY_COMPARE(reader.opened, most + 1);
        } // without an end of what is held up
        QCOMPARE(reader.closed, 1);
        reader.goOn.release(PreviewLoader::kMostAbandoned + 1);
        QTRY_COMPARE(reader.closed, reader.opened);
    }

    void filesThatAreNoneHaveNoText()
    {
        QVERIFY(QDir().mkpath(path(u"folder.txt"_s)));
        QCOMPARE(::mkfifo(path(u"pipe.txt"_s).toUtf8().constData(), 0600), 0);
        writeFile(path(u"target.txt"_s), "text");
        QVERIFY(QFile::link(path(u"target.txt"_s), path(u"link.txt"_s)));
        writeFile(path(u"binary.txt"_s), "text\xff");
        writeFile(path(u"letter.docx"_s), "text");
        QFile huge(path(u"huge.txt"_s));
        QVERIFY(huge.open(QFile::WriteOnly) && huge.resize(qint64{10} << 30));
        for (const QString &name : {u"folder.txt"_s,
                                    u"pipe.txt"_s,
                                    u"pipe.pdf"_s,
                                    u"link.txt"_s,
                                    u"missing.txt"_s,
                                    u"missing.png"_s,
                                    u"binary.txt"_s,
                                    u"letter.docx"_s,
                                    u"huge.txt"_s})
            QCOMPARE(textOf(name), std::nullopt);
        QCOMPARE(textOf(u"target.txt"_s), u"text"_s);
        writeFile(path(u"empty.txt"_s), "");
        QCOMPARE(textOf(u"empty.txt"_s), QString());
    }

    void longTextsAreCut()
    {
        writeFile(path(u"long.txt"_s), QByteArray(20'000, 'x'));
        QCOMPARE(textOf(u"long.txt"_s), QString(3000, u'x') + u"\n\n[Truncated...]"_s);
        // Few characters of great length.
        writeFile(path(u"marks.txt"_s), u"a"_s.append(QString(200'000, u'\u0301')).toUtf8());
        QCOMPARE(textOf(u"marks.txt"_s), u"a"_s + QString(8, u'\u0301'));
        const QString family = u"\U0001F468\u200D\U0001F469\u200D\U0001F467"_s;
        writeFile(path(u"families.txt"_s), family.repeated(2000).toUtf8());
        const std::optional<QString> families = textOf(u"families.txt"_s);
        QVERIFY(families && families->size() <= PreviewLoader::kMostUnits + 20);
        QVERIFY(families->endsWith(u"[Truncated...]"_s));

        writeFile(path(u"lines.txt"_s), QByteArray("<\n").repeated(1000));
        PreviewLoader loader(FilePreviewService(nullptr), nullptr);
        loader.load(file(u"lines.txt"_s));
        QTRY_VERIFY(!loader.isReading());
        QCOMPARE(loader.text()->plain.count(u'\n'), 1000);
        QCOMPARE(loader.text()->html.count(u"&lt;"_s), PreviewLoader::kMostLines);
    }

    void imagesHaveAThumbnailBehindTheirText()
    {
        const FakeThumbnails thumbnails;
        PreviewLoader loader(FilePreviewService(nullptr), &thumbnails);
        QList<bool> seen;
        connect(&loader, &PreviewLoader::changed, this, [&] {
            if (loader.text())
                seen.append(loader.thumbnail().has_value());
        });
        for (const QString &name : {u"good.PNG"_s, u"bad.png"_s, u"text.txt"_s})
            writeFile(path(name), "");
        loader.load(file(u"good.PNG"_s));
        QTRY_VERIFY(loader.thumbnail());
        QCOMPARE(seen, (QList<bool>{false, true}));
        QVERIFY(loader.text()->plain.startsWith(u"Image File: good.PNG\nType: PNG"_s));
        loader.load(file(u"bad.png"_s));
        QVERIFY(!loader.thumbnail());
        QTRY_COMPARE(thumbnails.paths.size(), 2);
        loader.load(file(u"text.txt"_s));
        QTRY_VERIFY(!loader.isReading());
        QVERIFY(loader.text() && !loader.thumbnail());
        QCOMPARE(thumbnails.paths, (QStringList{path(u"good.PNG"_s), path(u"bad.png"_s)}));
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstPreviewLoader)
#include "tst_PreviewLoader.moc"
