// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/SandboxedThumbnailReader.h"
#include "support/ChildProcesses.h"

#include <QElapsedTimer>
#include <QImage>
#include <QImageWriter>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <sys/stat.h>

#include <filesystem>
#include <future>
#include <vector>

using namespace Qt::StringLiterals;

namespace dugwise::test {

namespace {

/// An image whose upper left quarter is red, the rest being green.
QImage sample(const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::green);
    for (int y = 0; y < size.height() / 2; ++y) {
        for (int x = 0; x < size.width() / 2; ++x)
            image.setPixel(x, y, qRgb(255, 0, 0));
    }
    return image;
}

template <typename Number>
QByteArray bytes(Number number)
{
    QByteArray result(sizeof number, '\0');
    qToBigEndian(number, result.data());
    return result;
}

/// Part of a PNG file, with its check sum.
QByteArray chunk(const QByteArray &type, const QByteArray &data)
{
    quint32 sum = 0xFFFFFFFF;
    for (const char c : type + data) {
        sum ^= static_cast<quint8>(c);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1U) ^ ((sum & 1U) != 0 ? 0xEDB88320U : 0);
    }
    return bytes(static_cast<quint32>(data.size())) + type + data + bytes(~sum);
}

/// A black PNG image of that many pixels; only `rows` of them are in it.
QByteArray blackPNG(quint32 width, quint32 height, quint32 rows)
{
    const QByteArray header = bytes(width) + bytes(height) + QByteArray::fromHex("0800000000");
    const qsizetype size = (qsizetype{width} + 1) * rows;
    return QByteArray::fromHex("89504e470d0a1a0a") + chunk("IHDR", header)
           + chunk("IDAT", qCompress(QByteArray(size, '\0')).sliced(4)) + chunk("IEND", {});
}

} // namespace

class TstSandboxedThumbnailReader : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    std::unique_ptr<SandboxedThumbnailReader> m_reader;

    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }

    /// The thumbnail's size; empty when there is none.
    [[nodiscard]] QSize sizeOf(const QString &name, const std::stop_token &stop = {}) const
    {
        const std::optional<Thumbnail> found = m_reader->thumbnail(path(name), stop);
        if (found
            && found->pixels.size() != qsizetype{4} * found->size.width() * found->size.height())
            return {-1, -1};
        return found ? found->size : QSize();
    }
    /// Red, green, blue and alpha of a pixel, in hexadecimal digits.
    [[nodiscard]] QByteArray pixel(const Thumbnail &thumbnail, int x, int y) const
    {
        return thumbnail.pixels.sliced(qsizetype{4} * (y * thumbnail.size.width() + x), 4).toHex();
    }

private Q_SLOTS:
    void init()
    {
        m_reader = std::make_unique<SandboxedThumbnailReader>(QStringLiteral(DUGWISE_THUMBNAIL));
        QVERIFY(sample({40, 30}).save(path(u"good.png"_s)));
    }

    void imagesAreMadeSmall_data()
    {
        QTest::addColumn<QString>("format");
        for (const QString &format : {u"png"_s, u"jpg"_s, u"bmp"_s, u"webp"_s, u"tiff"_s})
            QTest::newRow(qPrintable(format)) << format;
    }
    void imagesAreMadeSmall()
    {
        QFETCH(QString, format);
        const QString name = u"picture."_s + format;
        QVERIFY(sample({2000, 1000}).save(path(name), nullptr, 100));
        const auto large = m_reader->thumbnail(path(name), {});
        QVERIFY(large);
        QCOMPARE(large->size, QSize(512, 256));
        QVERIFY(sample({40, 30}).save(path(name), nullptr, 100));
        const auto small = m_reader->thumbnail(path(name), {});
        QVERIFY(small);
        QCOMPARE(small->size, QSize(40, 30));
        for (const auto &thumbnail : {*large, *small}) {
            const bool isExact = format != "jpg"_L1 && format != "webp"_L1;
            const QByteArray first = pixel(thumbnail, 2, 2);
            const QByteArray last =
                pixel(thumbnail, thumbnail.size.width() - 3, thumbnail.size.height() - 3);
            QVERIFY2(isExact ? first == "ff0000ff" : first.startsWith('f'), first);
            QVERIFY2(isExact ? last == "00ff00ff" : last.startsWith('0'), last);
        }
    }

    void allKindsOfPixelsAreRead()
    {
        for (const QImage::Format format : {QImage::Format_Mono,
                                            QImage::Format_Indexed8,
                                            QImage::Format_Grayscale16,
                                            QImage::Format_RGBA64,
                                            QImage::Format_ARGB32}) {
            QVERIFY(sample({1200, 1200}).convertToFormat(format).save(path(u"kind.png"_s)));
            QCOMPARE(sizeOf(u"kind.png"_s), QSize(512, 512));
        }
        QVERIFY(sample({5000, 3}).save(path(u"line.png"_s)));
        QCOMPARE(sizeOf(u"line.png"_s), QSize(512, 1));
        writeFile(path(u"drawing.svg"_s),
                  "<svg xmlns='http://www.w3.org/2000/svg' width='900' height='600'>"
                  "<rect width='900' height='600' fill='red'/></svg>");
        const auto drawing = m_reader->thumbnail(path(u"drawing.svg"_s), {});
        QVERIFY(drawing);
        QCOMPARE(drawing->size, QSize(512, 341));
        QCOMPARE(pixel(*drawing, 200, 200), "ff0000ff");
        writeFile(
            path(u"dot.gif"_s),
            QByteArray::fromBase64("R0lGODlhAQABAPAAAP8AAP///yH5BAAAAAAALAAAAAABAAEAAAICRAEAOw=="));
        QCOMPARE(sizeOf(u"dot.gif"_s), QSize(1, 1));
    }

    void photographsStandUpright()
    {
        QImageWriter writer(path(u"turned.jpg"_s));
        writer.setTransformation(QImageIOHandler::TransformationRotate90);
        QVERIFY(writer.write(sample({2000, 1000})));
        QCOMPARE(sizeOf(u"turned.jpg"_s), QSize(256, 512));
    }

    void bombsHaveNone_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("png") << blackPNG(50'000, 50'000, 1000);
        QTest::newRow("large, and not all there") << blackPNG(15'000, 15'000, 10);
        QTest::newRow("gif") << QByteArray("GIF89a\xff\xff\xff\xff\x80\0\0\0\0\0\xff\xff\xff", 19)
                                    + QByteArray::fromHex("2c00000000ffffffff00") + "\2\2D\1\0;";
        QByteArray bitmap = QByteArray::fromHex(
            "424d0000000000000000360000002800000050c3000050c300000100180000000000"
            "000000000000000000000000000000000000000000");
        bitmap.resize(4096);
        QTest::newRow("bmp") << bitmap;
        QTest::newRow("svg") << QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='50000' "
                                           "height='50000'><rect width='9' height='9'/></svg>");
        QByteArray laughs = "<!DOCTYPE svg [<!ENTITY a '" + QByteArray(2000, 'x') + "'>";
        for (char entity = 'b'; entity < 'k'; ++entity) {
            const QByteArray before = QByteArray("&") + char(entity - 1) + ';';
            laughs += QByteArray("<!ENTITY ") + entity + " '" + before.repeated(10) + "'>";
        }
        QTest::newRow("entities") << laughs
                                         + "]><svg xmlns='http://www.w3.org/2000/svg' width='9' "
                                           "height='9'><desc>&j;</desc></svg>";
    }
    void bombsHaveNone()
    {
        QFETCH(QByteArray, content);
        writeFile(path(u"bomb.png"_s), content);
        const QSize size = sizeOf(u"bomb.png"_s);
        QVERIFY2(size.isEmpty(), qPrintable(u"%1 x %2"_s.arg(size.width()).arg(size.height())));
        QCOMPARE(sizeOf(u"good.png"_s), QSize(40, 30));
    }

    void onlyImagesHaveOne()
    {
        writeFile(path(u"text.png"_s), "Hello");
        writeFile(path(u"empty.png"_s), "");
        writeFile(path(u"cut.png"_s), readFile(path(u"good.png"_s)).first(40));
        QVERIFY(QDir().mkpath(path(u"folder.png"_s)));
        ::mkfifo(path(u"pipe.png"_s).toUtf8().constData(), 0600);
        QVERIFY(QFile::link(path(u"good.png"_s), path(u"link.png"_s)));
        for (const QString &name : {u"text.png"_s,
                                    u"empty.png"_s,
                                    u"cut.png"_s,
                                    u"folder.png"_s,
                                    u"pipe.png"_s,
                                    u"link.png"_s,
                                    u"missing.png"_s})
            QCOMPARE(sizeOf(name), QSize());
        const SandboxedThumbnailReader noProgram(path(u"no such program"_s));
        QVERIFY(!noProgram.thumbnail(path(u"good.png"_s), {}));
        // What this draws text with has not been set up, and ends the process.
        writeFile(path(u"text.svg"_s),
                  "<svg xmlns='http://www.w3.org/2000/svg' width='90' height='60'>"
                  "<text x='9' y='30'>Hello</text></svg>");
        [[maybe_unused]] const QSize size = sizeOf(u"text.svg"_s);
        QCOMPARE(sizeOf(u"good.png"_s), QSize(40, 30));
    }

    void theProcessIsConfined()
    {
        QCOMPARE(sizeOf(u"good.png"_s), QSize(40, 30));
        const QString process = u"/proc/%1/"_s.arg(childProcesses().value(0));
        const QDir threads(process + u"task"_s);
        const QStringList names = threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        QCOMPARE(names.size(), 2);
        for (const QString &name : names) {
            const QByteArray status = readFile(threads.filePath(name) + u"/status"_s);
            QVERIFY2(status.contains("NoNewPrivs:\t1") && status.contains("Seccomp:\t2"),
                     status.constData());
        }
        namespace fs = std::filesystem;
        for (const auto &open : fs::directory_iterator((process + u"fd"_s).toStdString())) {
            const std::string what = fs::read_symlink(open).string();
            QVERIFY2(what == "/dev/null" || what.starts_with("socket:")
                         || what == "anon_inode:[eventfd]" || what.ends_with("/good.png"),
                     what.c_str());
        }
        QVERIFY(readFile(process + u"environ"_s).isEmpty());
    }

    void whatDiesOrHangsIsStartedAnew()
    {
        QCOMPARE(sizeOf(u"good.png"_s), QSize(40, 30));
        signalChildProcesses(SIGKILL);
        QCOMPARE(sizeOf(u"good.png"_s), QSize(40, 30));

        signalChildProcesses(SIGSTOP);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(sizeOf(u"good.png"_s), QSize());
        QVERIFY(std::chrono::milliseconds(timer.elapsed()) >= SandboxedThumbnailReader::kDeadline);
        QCOMPARE(sizeOf(u"good.png"_s), QSize(40, 30));

        signalChildProcesses(SIGSTOP);
        std::stop_source stop;
        const auto stopping = std::async(std::launch::async, [&] {
            QTest::qSleep(100);
            stop.request_stop();
        });
        timer.start();
        QCOMPARE(sizeOf(u"good.png"_s, stop.get_token()), QSize());
        QVERIFY(std::chrono::milliseconds(timer.elapsed()) < SandboxedThumbnailReader::kDeadline);
        QCOMPARE(sizeOf(u"good.png"_s), QSize(40, 30));
    }

    void manyThreadsShareOneProcess()
    {
        std::vector<std::future<bool>> thumbnails;
        for (int i = 0; i < 8; ++i) {
            thumbnails.push_back(std::async(std::launch::async, [this] {
                return sizeOf(u"good.png"_s) == QSize(40, 30) && childProcesses().size() == 1;
            }));
        }
        for (std::future<bool> &isRight : thumbnails)
            QVERIFY(isRight.get());
        m_reader.reset();
        QVERIFY(childProcesses().isEmpty());
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstSandboxedThumbnailReader)
#include "tst_SandboxedThumbnailReader.moc"
