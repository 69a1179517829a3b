// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QStringList>

/// PDF documents for tests, put together object by object (ISO 32000-1).
namespace dugwise::test {

/// A document of these objects, numbered from 1, of which the first is the catalogue.
inline QByteArray pdfOfObjects(const QByteArrayList &objects)
{
    QByteArray pdf = "%PDF-1.7\n";
    QByteArray table = "0000000000 65535 f \n";
    for (qsizetype i = 0; i < objects.size(); ++i) {
        table += QByteArray::number(pdf.size()).rightJustified(10, '0') + " 00000 n \n";
        pdf += QByteArray::number(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const QByteArray count = QByteArray::number(objects.size() + 1);
    const QByteArray start = QByteArray::number(pdf.size());
    return pdf + "xref\n0 " + count + '\n' + table + "trailer\n<< /Size " + count
           + " /Root 1 0 R >>\nstartxref\n" + start + "\n%%EOF\n";
}

inline QByteArray pdfStream(const QByteArray &content, const QByteArray &entries = {})
{
    return "<< /Length " + QByteArray::number(content.size()) + ' ' + entries + " >>\nstream\n"
           + content + "\nendstream";
}

/// The drawing of one page: its text line by line, or a grey picture when there is none.
inline QByteArray pdfPageContent(const QString &text)
{
    if (text.isEmpty())
        return "q 500 0 0 700 50 50 cm BI /W 2 /H 2 /BPC 8 /CS /G ID \x40\x80\xC0\xFF EI Q";
    QByteArray content = "BT /F1 11 Tf 14 TL 60 780 Td\n";
    for (QByteArray line : text.toLatin1().split('\n')) {
        line.replace('\\', "\\\\").replace('(', "\\(").replace(')', "\\)");
        content += '(' + line + ") Tj T*\n";
    }
    return content + "ET";
}

/// A document with a page for each text, of Latin-1 characters; an empty one gives a page that is
/// a picture.
inline QByteArray samplePDF(const QStringList &pages)
{
    QByteArray kids;
    QByteArrayList objects{
        "<< /Type /Catalog /Pages 2 0 R >>",
        {},
        "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>"};
    for (const QString &text : pages) {
        const QByteArray content = qCompress(pdfPageContent(text)).mid(4); // behind Qt's own length
        objects.append(pdfStream(content, "/Filter /FlateDecode"));
        objects.append("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents "
                       + QByteArray::number(objects.size())
                       + " 0 R /Resources << /Font << /F1 3 0 R >> >> >>");
        kids += QByteArray::number(objects.size()) + " 0 R ";
    }
    objects[1] =
        "<< /Type /Pages /Count " + QByteArray::number(pages.size()) + " /Kids [ " + kids + "] >>";
    return pdfOfObjects(objects);
}

} // namespace dugwise::test
