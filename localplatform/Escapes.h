#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace palvera::local {

/// The text that `escaped` stands for; nothing when an escape is cut short or is no UTF-8. A plus sign is a plus sign.
std::optional<QString> unescape(QByteArrayView escaped);

/// `text` with every byte but ASCII letters and digits as % and two upper-case hexadecimal digits.
QByteArray escapeAll(const QByteArray& text);

/// Whether `value` stands as a query value must: escaped by `escapeAll`, nothing else.
bool isQueryValue(const QByteArray& value);

/// Whether `segment` stands as a path segment may: escapes in upper case, for what a path cannot hold as it is.
bool isPathSegment(QByteArrayView segment);

/// How the session of a bin upload stands in a path: escaped once, all but letters, marks and digits of any script, of
/// which those that a path cannot hold are escaped as in any path.
QByteArray sessionSegment(const QString& session);

} // namespace palvera::local
