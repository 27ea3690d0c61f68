#pragma once

#include "async/Failure.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QList>
#include <QMap>

#include <concepts>
#include <optional>

namespace palvera {

/// An answer or a stored record is not what it should be. Its text says what is wrong.
class DecodingError : public Failure {
public:
    DecodingError(const QString& key, const QString& text) : Failure(text), m_key(key) {}

    /// The member at fault, with the way to it, such as "orgs[2].name"; empty for the document itself.
    const QString& key() const { return m_key; }

private:
    QString m_key;
};

/// A record that decodes from a JSON object, or throws DecodingError.
template <class T>
concept JsonRecord = requires(const QJsonObject& object) {
    { T::fromJson(object) } -> std::same_as<T>;
};

namespace json {

/// The single object that `bytes` hold. Throws DecodingError, also where it nests deeper than 64 levels or has more
/// than two million values: nothing that is meant honestly does, and each takes some hundred bytes of memory.
QJsonObject parseObject(const QByteArray& bytes);

/// What `value` holds; nothing when it is of another type. A number is an integer when its fraction is zero and it
/// fits 64 bits.
template <class T>
std::optional<T> read(const QJsonValue& value) = delete;
template <>
std::optional<QString> read(const QJsonValue& value);
template <>
std::optional<bool> read(const QJsonValue& value);
template <>
std::optional<qint64> read(const QJsonValue& value);
template <>
std::optional<double> read(const QJsonValue& value);
template <>
std::optional<QJsonObject> read(const QJsonValue& value);
template <>
std::optional<QJsonArray> read(const QJsonValue& value);

/// The members of `object` that are texts; the others are left out.
QMap<QString, QString> textsOf(const QJsonObject& object);

/// A whole decimal integer with an optional sign; nothing for any other text or one that does not fit.
std::optional<qint64> parseInteger(const QString& text);

/// Puts `value` under `key`, unless it is absent.
template <class T>
void put(QJsonObject& object, const QString& key, const std::optional<T>& value)
{
    if (value)
        object.insert(key, *value);
}

} // namespace json

/// Reads the members of one JSON object and says which one failed.
class JsonReader {
public:
    /// `object` must outlive the reader.
    explicit JsonReader(const QJsonObject& object) : m_object(object) {}

    bool contains(const QString& key) const { return m_object.contains(key); }

    /// The member: a text, a boolean, a number, an object, a record or a list of one of these. Throws DecodingError
    /// when it is missing, null or of another type.
    template <class T>
    T required(const QString& key) const
    {
        return decode(key, m_object.value(key), Kind<T>{});
    }
    /// As `required`, but nothing when the member is missing or null.
    template <class T>
    std::optional<T> optional(const QString& key) const
    {
        const QJsonValue value = m_object.value(key);
        if (value.isUndefined() || value.isNull())
            return {};
        return decode(key, value, Kind<T>{});
    }
    /// The member, or nothing when it is missing or of another type.
    template <class T>
    std::optional<T> lenient(const QString& key) const
    {
        return json::read<T>(m_object.value(key));
    }
    /// The member's text, or "" when it is missing or no text.
    QString textOrEmpty(const QString& key) const { return m_object.value(key).toString(); }
    /// The member's integer, also when it is written as a text; nothing when it is neither.
    std::optional<qint64> byteCount(const QString& key) const
    {
        const QJsonValue value = m_object.value(key);
        return value.isString() ? json::parseInteger(value.toString()) : json::read<qint64>(value);
    }

private:
    template <class T>
    struct Kind {};

    [[noreturn]] static void fail(const QString& key, const QJsonValue& value);
    /// `inner`, seen from the object that holds it under `key`.
    static DecodingError within(const QString& key, const DecodingError& inner);

    template <class T>
    static T decode(const QString& key, const QJsonValue& value, Kind<T>)
    {
        if constexpr (JsonRecord<T>) {
            if (!value.isObject())
                fail(key, value);
            try {
                return T::fromJson(value.toObject());
            } catch (const DecodingError& inner) {
                throw within(key, inner);
            }
        } else {
            if (auto known = json::read<T>(value))
                return *std::move(known);
            fail(key, value);
        }
    }
    template <class T>
    static QList<T> decode(const QString& key, const QJsonValue& value, Kind<QList<T>>)
    {
        if (!value.isArray())
            fail(key, value);
        const QJsonArray array = value.toArray();
        QList<T> list;
        list.reserve(array.size());
        for (qsizetype index = 0; index < array.size(); ++index)
            list.append(decode(key + u'[' + QString::number(index) + u']', array.at(index), Kind<T>{}));
        return list;
    }

    const QJsonObject& m_object;
};

} // namespace palvera
