#include "service/JsonReader.h"

#include <QJsonDocument>
#include <QObject>

#include <limits>

namespace palvera {

namespace json {

namespace {

constexpr int deepest = 64;
constexpr int mostValues = 2'000'000;

/// Whether `bytes`, which need not be JSON, would not be much more than that in memory.
bool isWithinBounds(const QByteArray& bytes)
{
    int depth = 0, values = 0;
    bool isInText = false;
    for (const char *at = bytes.begin(), *end = bytes.end(); at != end; ++at) {
        if (*at == '"')
            isInText = !isInText;
        else if (isInText)
            at += *at == '\\' && at + 1 != end; // and what it escapes
        else if (*at == ',')
            ++values;
        else if (*at == '[' || *at == '{')
            ++depth, ++values;
        else if (*at == ']' || *at == '}')
            --depth;
        if (depth > deepest || values > mostValues)
            return false;
    }
    return true;
}

} // namespace

QJsonObject parseObject(const QByteArray& bytes)
{
    if (!isWithinBounds(bytes))
        throw DecodingError({}, QObject::tr("The JSON is too large."));
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError)
        throw DecodingError({}, QObject::tr("The JSON does not parse: %1.").arg(error.errorString()));
    if (!document.isObject())
        throw DecodingError({}, QObject::tr("The JSON is not an object."));
    return document.object();
}

template <>
std::optional<QString> read(const QJsonValue& value)
{
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

template <>
std::optional<bool> read(const QJsonValue& value)
{
    return value.isBool() ? std::optional(value.toBool()) : std::nullopt;
}

template <>
std::optional<qint64> read(const QJsonValue& value)
{
    // The reader gives back the default for what is no integer: two different ones tell that apart from a value.
    const qint64 integer = value.toInteger(0);
    return integer == value.toInteger(1) ? std::optional(integer) : std::nullopt;
}

template <>
std::optional<double> read(const QJsonValue& value)
{
    return value.isDouble() ? std::optional(value.toDouble()) : std::nullopt;
}

template <>
std::optional<QJsonObject> read(const QJsonValue& value)
{
    return value.isObject() ? std::optional(value.toObject()) : std::nullopt;
}

template <>
std::optional<QJsonArray> read(const QJsonValue& value)
{
    return value.isArray() ? std::optional(value.toArray()) : std::nullopt;
}

QMap<QString, QString> textsOf(const QJsonObject& object)
{
    QMap<QString, QString> texts;
    for (auto member = object.begin(); member != object.end(); ++member)
        if (member.value().isString())
            texts.insert(member.key(), member.value().toString());
    return texts;
}

std::optional<qint64> parseInteger(const QString& text)
{
    const bool isSigned = text.startsWith(u'+') || text.startsWith(u'-');
    const QStringView digits = QStringView(text).sliced(isSigned ? 1 : 0);
    const bool plain = std::ranges::all_of(digits, [](QChar each) { return each >= u'0' && each <= u'9'; });
    bool fits = false;
    const qint64 value = text.toLongLong(&fits);
    return plain && fits ? std::optional(value) : std::nullopt;
}

} // namespace json

void JsonReader::fail(const QString& key, const QJsonValue& value)
{
    const bool missing = value.isUndefined() || value.isNull();
    throw DecodingError(key, missing ? QObject::tr("“%1” is missing.").arg(key)
                                     : QObject::tr("“%1” is not what it should be.").arg(key));
}

DecodingError JsonReader::within(const QString& key, const DecodingError& inner)
{
    return {inner.key().isEmpty() ? key : key + u'.' + inner.key(), inner.text()};
}

} // namespace palvera
