// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "PDFMutator.h"

#include "support/SamplePDF.h"

#include <algorithm>

namespace dugwise::fuzz {

using test::pdfOfObjects;
using test::pdfStream;

namespace {

constexpr qsizetype kMegabyte = qsizetype{1024} * 1024;

/// A document of one page with these contents, and further objects from number 4.
QByteArray onePage(const QByteArray &contents,
                   const QByteArray &mediaBox = "0 0 595 842",
                   const QByteArrayList &more = {})
{
    return pdfOfObjects(
        QByteArrayList{"<< /Type /Catalog /Pages 2 0 R >>",
                       "<< /Type /Pages /Count 1 /Kids [ 3 0 R ] >>",
                       "<< /Type /Page /Parent 2 0 R /MediaBox [" + mediaBox
                           + "] /Contents 4 0 R /Resources << /XObject << /X 5 0 R >> /Font << /F1 "
                             "<< /Type /Font /Subtype /Type1 /BaseFont /Courier >> >> >> >>",
                       contents}
        + more);
}

/// Forms that each draw the next one ten times, nine deep: a billion drawings.
QByteArrayList drawEachOther()
{
    QByteArrayList forms;
    for (int number = 5; number < 14; ++number) {
        forms.append(pdfStream(QByteArray("/X Do ").repeated(10),
                               "/Type /XObject /Subtype /Form /BBox [0 0 9 9] /Resources << "
                               "/XObject << /X "
                                   + QByteArray::number(number + 1) + " 0 R >> >>"));
    }
    forms.append(pdfStream("", "/Type /XObject /Subtype /Form /BBox [0 0 9 9]"));
    return forms;
}

QByteArray packed(const QByteArray &content, const QByteArray &filters = "/FlateDecode")
{
    return pdfStream(qCompress(content, 9).mid(4), "/Filter [" + filters + ']');
}

QByteArray text(const QByteArray &line, int times)
{
    return "BT /F1 9 Tf 10 TL 0 800 Td\n" + ('(' + line + ") Tj T*\n").repeated(times) + "ET";
}

} // namespace

PDFMutator::PDFMutator(QByteArrayList sound, std::uint64_t seed)
    : m_sound(std::move(sound))
    , m_random(seed)
{}

QByteArray PDFMutator::next()
{
    using Mutation = void (PDFMutator::*)(QByteArray &);
    constexpr Mutation kMutations[] = {&PDFMutator::flipBits,
                                       &PDFMutator::cut,
                                       &PDFMutator::splice,
                                       &PDFMutator::zero,
                                       &PDFMutator::changeDigits,
                                       &PDFMutator::repeat};
    QByteArray document = anySound();
    for (qsizetype count = 1 + below(3); count > 0; --count) {
        const Mutation mutation = kMutations[below(std::ssize(kMutations))];
        if (!document.isEmpty())
            (this->*mutation)(document);
    }
    return document;
}

QByteArrayList PDFMutator::traps()
{
    const QByteArray deep = QByteArray(100'000, '[');
    const QByteArray nested = QByteArray("<< /A ").repeated(100'000);
    const QByteArray drawsItself = pdfStream("/X Do",
                                             "/Type /XObject /Subtype /Form /BBox [0 0 9 9] "
                                             "/Resources << /XObject << /X 5 0 R >> >>");
    const QByteArray zeros = qCompress(QByteArray(64 * kMegabyte, '\0'), 9).mid(4);
    return {
        pdfOfObjects({"<< /Type /Catalog /Pages 2 0 R >>",
                      "<< /Type /Pages /Count 9 /Kids [ 2 0 R 2 0 R ] >>"}),
        pdfOfObjects({"<< /Type /Catalog /Pages 2 0 R >>",
                      "<< /Type /Pages /Count 2000000000 /Kids [ 3 0 R ] >>",
                      "<< /Type /Pages /Count -1 /Parent 3 0 R /Kids [ 2 0 R ] >>"}),
        pdfOfObjects({"<< /Type /Catalog /Pages 1 0 R >>"}),
        onePage(pdfStream("/X Do"), "0 0 595 842", {drawsItself}),
        onePage(pdfStream("/X Do"), "0 0 595 842", drawEachOther()),
        onePage(pdfStream(deep)),
        onePage(pdfStream(nested)),
        onePage(deep),
        onePage("4 0 R"),
        onePage(pdfStream(text("far away", 3)), "-1e30 -1e30 1e30 1e30"),
        onePage(pdfStream(text("large", 3)), "0 0 2147483647 2147483647"),
        onePage(pdfStream("1e-30 0 0 1e-30 0 0 cm " + text("small", 100))),
        onePage(packed(QByteArray(64 * kMegabyte, ' '))),
        onePage(pdfStream(qCompress(zeros, 9).mid(4), "/Filter [/FlateDecode /FlateDecode]")),
        onePage(packed(text("bomb bomb bomb bomb", 500'000))),
        onePage(packed("q " + QByteArray("q ").repeated(1'000'000))),
        onePage(pdfStream("BT /F1 0 Tf " + QByteArray("() Tj ").repeated(200'000) + "ET")),
    };
}

qsizetype PDFMutator::below(qsizetype bound)
{
    return static_cast<qsizetype>(m_random() % static_cast<std::uint64_t>(bound));
}

const QByteArray &PDFMutator::anySound()
{
    return m_sound.at(below(m_sound.size()));
}

void PDFMutator::flipBits(QByteArray &document)
{
    for (qsizetype count = 1 + below(32); count > 0; --count) {
        char &byte = document[below(document.size())];
        byte = static_cast<char>(byte ^ (1 << below(8)));
    }
}

void PDFMutator::cut(QByteArray &document)
{
    document.truncate(below(document.size()));
}

void PDFMutator::splice(QByteArray &document)
{
    const QByteArray &other = anySound();
    document.replace(
        below(document.size()), below(2000), other.mid(below(other.size()), below(2000)));
}

void PDFMutator::zero(QByteArray &document)
{
    const qsizetype at = below(document.size());
    const qsizetype length = std::min(below(512), document.size() - at);
    std::fill_n(document.begin() + at, length, '\0');
}

/// Lengths, offsets and references that lie.
void PDFMutator::changeDigits(QByteArray &document)
{
    for (qsizetype tries = 200, left = 1 + below(8); tries > 0 && left > 0; --tries) {
        char &byte = document[below(document.size())];
        if (byte < '0' || byte > '9')
            continue;
        byte = static_cast<char>('0' + below(10));
        --left;
    }
}

void PDFMutator::repeat(QByteArray &document)
{
    const qsizetype at = below(document.size());
    document.insert(at, document.mid(at, below(300)).repeated(1 + below(20)));
}

} // namespace dugwise::fuzz
