// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/MailIndex.h"

#include "Utilities/FoldedText.h"
#include "Utilities/Text.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr auto kDamageMark = "/mail.damaged"_L1;
constexpr std::size_t kTrigram = 3; // code points

bool beginsCodePoint(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0U) != 0x80;
}

std::size_t codePoints(std::string_view utf8)
{
    return static_cast<std::size_t>(std::ranges::count_if(utf8, beginsCodePoint));
}

/// As the texts of the index are: folded, with single blanks for white space, also at the ends.
std::string searched(const QString &text)
{
    QString plain;
    bool isBlank = false;
    for (const QChar c : text) {
        const bool isSpace = c.isSpace() || c < u' ' || c == QChar::ByteOrderMark;
        if (!isSpace || !isBlank)
            plain += isSpace ? u' ' : c;
        isBlank = isSpace;
    }
    const QByteArray utf8 = plain.toUtf8();
    return folded(view(utf8));
}

std::string phraseOf(std::string_view text)
{
    std::string phrase = "\"";
    for (const char c : text) {
        phrase += c;
        if (c == '"')
            phrase += c;
    }
    return phrase + '"';
}

/// The condition of a statement and the values of its parameters.
class Condition
{
public:
    /// Columns are parted by blanks; the text may be in any of them, and its trigrams in no other.
    void addText(const std::string &columns, const std::string &text)
    {
        if (text.empty())
            return;
        if (codePoints(text) >= kTrigram) {
            m_phrases += (m_phrases.empty() ? "" : " AND ") + phraseOf(text);
            return;
        }
        // Too short for the index: all texts are read.
        std::string any;
        std::size_t begin = 0;
        while (begin < columns.size()) {
            const std::size_t end = std::min(columns.find(' ', begin), columns.size());
            any += (any.empty() ? "" : " OR ") + ("instr(w." + columns.substr(begin, end - begin))
                   + ", ?)";
            m_values.push_back(text);
            begin = end + 1;
        }
        m_sql += " AND (" + any + ')';
    }

    [[nodiscard]] std::string sql() const
    {
        return (m_phrases.empty() ? "" : " AND words MATCH ?") + m_sql;
    }
    void bind(SQLiteStatement &statement, int parameter) const
    {
        if (!m_phrases.empty())
            statement.bind(parameter++, std::string_view(m_phrases));
        for (const std::string &value : m_values)
            statement.bind(parameter++, std::string_view(value));
    }

private:
    std::string m_phrases; ///< for the full-text index
    std::string m_sql;
    std::vector<std::string> m_values;
};

/// The first or last number of a second.
qint64 number(double second, bool isLast)
{
    if (std::isnan(second))
        return 0;
    const double bounded = std::clamp(second, 0.0, static_cast<double>(MailIndex::kLastSecond));
    constexpr qint64 kSequences = qint64{1} << MailIndex::kSequenceBits;
    return static_cast<qint64>(bounded) * kSequences + (isLast ? kSequences - 1 : 0);
}

MailItem itemOf(const SQLiteStatement &row)
{
    MailItem item;
    const auto text = [&](int column) {
        return row.isNull(column) ? std::nullopt : std::optional(toQString(row.bytes(column)));
    };
    if (const qint64 second = row.integer(0) >> MailIndex::kSequenceBits)
        item.contentCreationDate = Instant::fromUnix(static_cast<double>(second));
    item.subject = text(1);
    if (const std::optional<QString> authors = text(2))
        item.authors = authors->split(u'\n');
    item.textContent = text(3);
    const QString folder = toQString(row.bytes(4));
    item.path = row.isNull(5) ? folder : folder + u'/' + toQString(row.bytes(5));
    return item;
}

} // namespace

MailIndex::MailIndex(const QString &folder)
    : m_folder(folder)
{
    if (!QFileInfo::exists(path(folder)))
        return;
    m_database = SQLiteDatabase::own(path(folder));
    SQLiteStatement version = m_database.prepare("PRAGMA user_version");
    m_isUsable = m_database.run("PRAGMA query_only = ON; PRAGMA mmap_size = 1073741824")
                 && version.step() && version.integer(0) == kVersion;
}

QList<MailItem> MailIndex::search(const MailPredicate &predicate, int most, QDeadlineTimer deadline)
{
    QList<MailItem> items;
    if (!m_isUsable)
        return items;
    m_database.setDeadline(deadline);
    qint64 first = 0;
    qint64 last = number(static_cast<double>(kLastSecond), true);
    if (predicate.contentCreationDate) {
        // Second 0 is for those without a date.
        first = number(std::max(1.0, std::ceil(predicate.contentCreationDate->start.unixSeconds())),
                       false);
        last = number(std::floor(predicate.contentCreationDate->end.unixSeconds()), true);
    }
    Condition condition;
    condition.addText("subject body", searched(predicate.textOrSubject.value_or(QString())));
    condition.addText("addresses",
                      spaced(searched(predicate.authorEmailAddress.value_or(QString()))));
    const std::string sql = "SELECT m.id, m.subject, m.authors, m.beginning, f.path, m.name, "
                            "m.identity FROM words w CROSS JOIN message m ON m.id = w.rowid "
                            "CROSS JOIN folder f ON f.id = m.folder "
                            "WHERE w.rowid BETWEEN ? AND ?"
                            + condition.sql() + " ORDER BY w.rowid DESC";
    SQLiteStatement statement = m_database.prepare(sql.c_str());
    statement.bind(1, first);
    statement.bind(2, last);
    condition.bind(statement, 3);
    QSet<qint64> identities;
    while (items.size() < most && statement.step()) {
        const qint64 identity = statement.integer(6);
        if (identity != 0 && identities.contains(identity))
            continue;
        identities.insert(identity);
        items.append(itemOf(statement));
    }
    if (m_database.isDamaged())
        markDamaged(m_folder);
    return items;
}

MailIndex::Summary MailIndex::summary()
{
    Summary summary;
    if (!m_isUsable)
        return summary;
    SQLiteStatement counts =
        m_database.prepare("SELECT count(message), count(DISTINCT folder) FROM item");
    if (counts.step()) {
        summary.messages = counts.integer(0);
        summary.folders = counts.integer(1);
    }
    SQLiteStatement progress = m_database.prepare("SELECT done * 100 / total FROM progress");
    if (progress.step())
        summary.percent = static_cast<int>(std::clamp<qint64>(progress.integer(0), 0, 99));
    return summary;
}

std::string MailIndex::spaced(std::string_view utf8)
{
    std::string text;
    for (const char c : utf8) {
        if (!text.empty() && beginsCodePoint(c))
            text += '\n';
        text += c;
    }
    return text;
}

QString MailIndex::path(const QString &folder)
{
    return folder + "/mail.sqlite"_L1;
}

void MailIndex::markDamaged(const QString &folder)
{
    QFile mark(folder + kDamageMark);
    [[maybe_unused]] const bool isMade = mark.open(QFile::WriteOnly);
}

bool MailIndex::takeDamageMark(const QString &folder)
{
    return QFile::remove(folder + kDamageMark);
}

} // namespace dugwise
