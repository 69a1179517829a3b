// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Has the indexer walk a folder of broken and hostile PDF documents with sound files between them:
// all must be indexed, the sound ones with their text, and nothing else touched.
// usage: fuzz_pdf [COUNT [SEED]]

#include "PDFMutator.h"
#include "Platform/Platform.h"
#include "Platform/SandboxedPDFReader.h"
#include "Services/FileIndexer.h"
#include "support/SampleFiles.h"
#include "support/SampleHome.h"
#include "support/SamplePDF.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QProcess>

#include <sys/resource.h>

#include <cstdio>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

namespace {

constexpr int kFilesPerSoundOne = 20;
constexpr qint64 kMostMemory = qint64{1} << 30; // bytes of a parser

const QString kSentence = u"The quick brown fox jumps over the lazy dog"_s;

/// Sound documents, as several programs write them, to be spoilt.
QByteArrayList soundDocuments(const QString &folder)
{
    const QByteArray plain = samplePDF(QStringList(12, kSentence));
    const QString path = folder + u"/plain.pdf"_s;
    writeFile(path, plain);
    QByteArrayList documents{plain, samplePDF({u""_s, kSentence, u""_s}), samplePDF({kSentence})};
    const QStringList fixed{u"--static-id"_s, u"--static-aes-iv"_s, u"--allow-weak-crypto"_s};
    const auto encrypted = [](const QString &password, const QStringList &options) {
        return QStringList{u"--encrypt"_s, password, u"owner"_s, u"128"_s} + options
               + QStringList{u"--"_s};
    };
    const QList<QStringList> rewritings{
        encrypted(u""_s, {u"--use-aes=y"_s}),
        encrypted(u"user"_s, {u"--use-aes=y"_s}),
        encrypted(u""_s, {u"--use-aes=n"_s}),
        {u"--object-streams=generate"_s},
        {u"--linearize"_s},
    };
    for (const QStringList &options : rewritings) {
        const QString rewritten = folder + u"/rewritten.pdf"_s;
        if (QProcess::execute(u"qpdf"_s, fixed + options + QStringList{path, rewritten}) != 0)
            qFatal("qpdf is needed");
        documents.append(readFile(rewritten));
    }
    return documents;
}

/// A hash of the names and contents of all files below a folder.
QByteArray digest(const QString &folder)
{
    QStringList paths;
    for (QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
         files.hasNext();)
        paths.append(files.next());
    paths.sort();
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const QString &path : paths)
        hash.addData(path.toUtf8() + '\n' + readFile(path));
    return hash.result();
}

void makeFiles(const SampleHome &home, int count, std::uint64_t seed)
{
    const QString documents = home.path(u"Documents"_s);
    fuzz::PDFMutator mutator(soundDocuments(home.path(u"sound"_s)), seed);
    for (int i = 0; i < count; ++i) {
        writeFile(documents + u"/%1 broken.pdf"_s.arg(i, 6), mutator.next());
        if (i % kFilesPerSoundOne == 0) {
            writeFile(documents + u"/%1 sound.pdf"_s.arg(i, 6), samplePDF({kSentence}));
            writeFile(documents + u"/%1 sound.txt"_s.arg(i, 6), kSentence.toUtf8());
        }
    }
    int number = 0;
    for (const QByteArray &trap : fuzz::PDFMutator::traps())
        writeFile(documents + u"/trap %1.pdf"_s.arg(++number), trap);
    writeFile(home.path(u"elsewhere/secret"_s), "secret");
}

int problem(const char *what)
{
    std::printf("FAILED: %s\n", what);
    return 1;
}

/// What is wrong with the index; 0 when nothing is.
int check(const QList<IndexedFile> &files, qsizetype expected)
{
    qsizetype texts = 0;
    for (const IndexedFile &file : files) {
        texts += file->extractedText ? 1 : 0;
        const QByteArray text = file->extractedText ? file->extractedText->text() : QByteArray();
        if (file->name.contains("sound"_L1) && text.trimmed() != kSentence.toUtf8())
            return problem(qPrintable(file->name));
    }
    std::printf("%lld files indexed, %lld with text\n",
                static_cast<long long>(files.size()),
                static_cast<long long>(texts));
    return files.size() == expected ? 0 : problem("files are missing");
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const int count = QCoreApplication::arguments().value(1, u"1000"_s).toInt();
    const quint64 seed = QCoreApplication::arguments().value(2, u"1"_s).toULongLong();

    SampleHome home;
    makeFiles(home, count, seed);
    const QString documents = home.path(u"Documents"_s);
    const QByteArray before = digest(documents) + digest(home.path(u"elsewhere"_s));
    const qsizetype expected = QDir(documents).entryList(QDir::Files).size();

    QElapsedTimer timer;
    timer.start();
    home.platform.pdfDocuments = std::make_unique<SandboxedPDFReader>(
        QStringLiteral(DUGWISE_EXTRACT), home.path(u"unreadable"_s));
    FileIndexer indexer(home.platform);
    QObject::connect(&indexer, &FileIndexer::settled, &application, &QCoreApplication::quit);
    QCoreApplication::exec();
    home.platform.pdfDocuments.reset();
    std::printf(
        "seed %llu, %.1f s, %lld given up\n",
        seed,
        static_cast<double>(timer.elapsed()) / 1000,
        static_cast<long long>(QDir(home.path(u"unreadable"_s)).entryList(QDir::Files).size()));

    if (const int problems = check(indexer.indexedFiles(), expected))
        return problems;
    if (digest(documents) + digest(home.path(u"elsewhere"_s)) != before)
        return problem("files were touched");
#ifndef __SANITIZE_ADDRESS__
    rusage children = {};
    ::getrusage(RUSAGE_CHILDREN, &children);
    std::printf("%ld kB of memory in a parser at most\n", children.ru_maxrss);
    if (children.ru_maxrss > kMostMemory / 1024)
        return problem("a parser took too much memory");
#endif
    return 0;
}
