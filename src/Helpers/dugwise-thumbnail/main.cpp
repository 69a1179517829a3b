// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Makes small forms of images of strangers for the program that started it: gets open files, gives
// back pixels. It opens nothing by itself, and whatever an image makes of it stays in its sandbox.
#include "Helpers/ParserSocket.h"
#include "Helpers/dugwise-thumbnail/Thumbnail.h"
#include "Platform/Sandbox.h"
#include "Platform/ThumbnailProtocol.h"

#include <QFile>
#include <QSemaphore>
#include <QThreadPool>

#include <unistd.h>

#include <string>

namespace {

using namespace dugwise;

constexpr int kNotReady = 3;

/// Qt scales and converts images in a pool of threads. It gets one, for good, and that is confined
/// like the main one: a thread could not be started later.
bool confineAllThreads()
{
    QThreadPool &pool = *QThreadPool::globalInstance();
    pool.setMaxThreadCount(1);
    pool.setExpiryTimeout(-1);
    QSemaphore isDone;
    bool isConfined = false;
    pool.start([&] {
        isConfined = Sandbox::confine("");
        isDone.release();
    });
    isDone.acquire();
    return isConfined && Sandbox::confine("");
}

bool sendThumbnail(const FileDescriptor &file)
{
    QFile device;
    if (!device.open(file.get(), QFile::ReadOnly))
        return ParserSocket::send(-1);
    const QImage image = Thumbnails::read(device);
    if (image.isNull())
        return ParserSocket::send(-1);
    // Its rows, of four bytes a pixel, have no gaps between them.
    const std::u16string pixels(reinterpret_cast<const char16_t *>(image.constBits()),
                                static_cast<std::size_t>(image.sizeInBytes()) / sizeof(char16_t));
    return ParserSocket::send(ThumbnailProtocol::packed(image.width(), image.height()), pixels);
}

void serve()
{
    const std::string library = "thumbnails 1, qt " QT_VERSION_STR;
    bool isHeard = ParserSocket::send(0, std::u16string(library.begin(), library.end()));
    while (isHeard) {
        const std::optional<ParserSocket::Received> received = ParserSocket::receive();
        if (!received)
            return;
        if (received->request.subject == ParserProtocol::Subject::document)
            isHeard = sendThumbnail(received->file);
    }
}

} // namespace

int main()
{
    Thumbnails::loadFormats();
    if (!confineAllThreads())
        return kNotReady;
    try {
        serve();
    } catch (...) { // out of memory, by most likelihood; the program takes the end for an answer
        ::_exit(1);
    }
    // Without the destructors of libraries, which may call what the sandbox forbids.
    ::_exit(0);
}
