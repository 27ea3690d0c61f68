#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <vector>

namespace palvera::local {

/// One member that a JSON body may hold.
struct Field {
    enum class Type {
        text,
        integer, ///< a number written without fraction and exponent
        number,
        yes,         ///< true; never false
        object,      ///< with exactly `members`
        emptyObject, ///< nothing in it
        list,        ///< of objects, each with exactly `members`
    };
    enum class Presence { required, optional };

    const char* name;
    Type type = Type::text;
    Presence presence = Presence::required;
    std::vector<Field> members = {};
};

using Shape = std::vector<Field>;

/// `body` as an object of exactly that shape. A key too many, a missing one or a wrong type is a violation.
QJsonObject readBody(const QByteArray& body, const Shape& shape);

} // namespace palvera::local
