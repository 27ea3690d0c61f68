#pragma once

#include <QJsonDocument>
#include <QJsonObject>

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

} // namespace palvera
