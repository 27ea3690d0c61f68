#include "localplatform/Shape.h"

#include "localplatform/Wire.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QVariant>

namespace palvera::local {

namespace {

void checkObject(const QJsonObject& object, const Shape& shape, const QString& where);

[[noreturn]] void wrongType(const QString& where)
{
    violate(QStringLiteral("the body's \"%1\" has the wrong type").arg(where));
}

bool isInteger(const QJsonValue& value)
{
    return value.isDouble() && value.toVariant().typeId() == QMetaType::LongLong;
}

void checkList(const QJsonValue& value, const Shape& members, const QString& where)
{
    if (!value.isArray())
        wrongType(where);
    for (const auto& entry : value.toArray()) {
        if (!entry.isObject())
            wrongType(where);
        checkObject(entry.toObject(), members, where + u'.');
    }
}

void checkValue(const QJsonValue& value, const Field& field, const QString& where)
{
    bool fits = false;
    switch (field.type) {
    case Field::Type::text:
        fits = value.isString();
        break;
    case Field::Type::integer:
        fits = isInteger(value);
        break;
    case Field::Type::number:
        fits = value.isDouble();
        break;
    case Field::Type::yes:
        fits = value.isBool() && value.toBool();
        break;
    case Field::Type::object:
        fits = value.isObject();
        if (fits)
            checkObject(value.toObject(), field.members, where + u'.');
        break;
    case Field::Type::emptyObject:
        fits = value.isObject() && value.toObject().isEmpty();
        break;
    case Field::Type::list:
        checkList(value, field.members, where);
        fits = true;
        break;
    }
    if (!fits)
        wrongType(where);
}

void checkObject(const QJsonObject& object, const Shape& shape, const QString& where)
{
    for (const auto& key : object.keys()) {
        auto known = [&](const Field& field) { return key == QLatin1String(field.name); };
        if (std::none_of(shape.begin(), shape.end(), known))
            violate(QStringLiteral("the body holds an unexpected key \"%1%2\"").arg(where, key));
    }
    for (const auto& field : shape) {
        QString name = where + QLatin1String(field.name);
        auto found = object.find(QLatin1String(field.name));
        if (found != object.end())
            checkValue(*found, field, name);
        else if (field.presence == Field::Presence::required)
            violate(QStringLiteral("the body lacks the key \"%1\"").arg(name));
    }
}

} // namespace

QJsonObject readBody(const QByteArray& body, const Shape& shape)
{
    QJsonParseError failure;
    auto document = QJsonDocument::fromJson(body, &failure);
    if (failure.error != QJsonParseError::NoError || !document.isObject())
        violate(QStringLiteral("the body is not a JSON object"));
    checkObject(document.object(), shape, {});
    return document.object();
}

} // namespace palvera::local
