#pragma once

#include "service/JsonReader.h"

#include <QJsonDocument>

#include <stdexcept>

namespace palvera {

/// The object that `text` holds; fails the test when the text is not one.
inline QJsonObject jsonObject(const QByteArray& text)
{
    const auto document = QJsonDocument::fromJson(text);
    if (!document.isObject())
        throw std::invalid_argument("the test's own JSON is no object: " + text.toStdString());
    return document.object();
}

/// `text` decoded as a `Record`.
template <class Record>
Record decoded(const QByteArray& text)
{
    return Record::fromJson(jsonObject(text));
}

/// Which member keeps `text` from being a `Record`: the way to it, and what is wrong; "nothing" when it is one.
template <class Record>
std::string faultIn(const QByteArray& text)
{
    try {
        decoded<Record>(text);
    } catch (const DecodingError& error) {
        return (error.key() + QStringLiteral(": ") + error.text()).toStdString();
    }
    return "nothing";
}

} // namespace palvera
