#pragma once

#include "localplatform/Operation.h"
#include "localplatform/Shape.h"
#include "localplatform/Wire.h"

#include <QHash>

#include <optional>
#include <vector>

namespace palvera::local {

/// One item that a query holds, at its place.
struct QueryItem {
    enum class Value {
        number,
        text,
        shownText, ///< which a browser may have unescaped where that makes no difference
        literal,
    };
    enum class Presence { required, whenNotEmpty };

    const char* name;
    Value value = Value::text;
    Presence presence = Presence::required;
    const char* literal = ""; ///< the escaped value of a literal
};

/// One call of the service.
struct Route {
    enum class Door { open, signedIn };

    Operation operation;
    const char* method;
    const char* path; ///< below /api/, with placeholders such as {org}
    Door door = Door::signedIn;
    std::optional<Shape> body = {};
    std::vector<QueryItem> query = {};
};

/// A call found, with what stood in its placeholders and its query, unescaped.
struct Call {
    const Route* route = nullptr;
    QHash<QByteArray, QString> values;

    QString value(QByteArrayView name) const { return values.value(name.toByteArray()); }
};

/// The route whose path `target` has, whatever its query; null when there is none.
const Route* findRoute(QByteArrayView method, QByteArrayView target);

/// The call that `head` makes. An unknown path, a wrong query or an improper escape is a violation.
Call readCall(const RequestHead& head);

} // namespace palvera::local
