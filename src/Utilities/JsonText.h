// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QStringList>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <optional>

namespace dugwise {

/// Writes a JSON text, UTF-8 on one line, whose members keep the order in which they are added.
class JsonText
{
public:
    void startObject() { m_json.StartObject(); }
    void endObject() { m_json.EndObject(); }
    void startArray() { m_json.StartArray(); }
    void endArray() { m_json.EndArray(); }

    void key(const QString &name) { string(name.toUtf8(), &Writer::Key); }

    void value(const QString &text) { string(text.toUtf8(), &Writer::String); }
    void value(double number) { m_json.Double(number); }
    void value(qint64 number) { m_json.Int64(number); }
    void value(bool isTrue) { m_json.Bool(isTrue); }
    void value(const QStringList &texts)
    {
        startArray();
        for (const QString &text : texts)
            value(text);
        endArray();
    }
    void null() { m_json.Null(); }
    /// Null where there is none.
    template <typename T>
    void value(const std::optional<T> &optional)
    {
        if (optional)
            value(*optional);
        else
            null();
    }

    /// A value that is JSON already.
    void raw(const QByteArray &json)
    {
        m_json.RawValue(
            json.constData(), static_cast<std::size_t>(json.size()), rapidjson::kNullType);
    }

    template <typename T>
    void member(const QString &name, const T &content)
    {
        key(name);
        value(content);
    }

    [[nodiscard]] QByteArray bytes() const
    {
        return {m_buffer.GetString(), static_cast<qsizetype>(m_buffer.GetSize())};
    }

private:
    using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

    void string(const QByteArray &utf8, bool (Writer::*write)(const char *, unsigned, bool))
    {
        (m_json.*write)(utf8.constData(), static_cast<unsigned>(utf8.size()), true);
    }

    rapidjson::StringBuffer m_buffer;
    Writer m_json{m_buffer};
};

} // namespace dugwise
