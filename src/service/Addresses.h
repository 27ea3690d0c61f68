#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace palvera {

// Addresses that go on the wire are bytes, already encoded, and are never passed through QUrl, which would decode
// escapes that are there on purpose.

/// The pieces of an address such as "https://host:1234/api?key=value".
struct Address {
    QByteArray origin; ///< the scheme, the host and what stands between the slashes: "https://host:1234"
    QByteArray path;   ///< empty, or from its first "/" on
    QByteArray query;  ///< without its "?"

    bool operator==(const Address&) const = default;
};

/// Takes an absolute http or https address with a host apart, leaving out its fragment. Nothing when `text` is not one.
std::optional<Address> parseAddress(const QString& text);

/// Joins `path`, relative and with a query after its first "?" if it has one, onto `base`. What a path may not hold is
/// escaped; escapes that it holds already and every "/" stay as they are. The query must be encoded already.
QByteArray joinAddress(const Address& base, const QString& path);

/// `identifier` as one segment of a path given to `joinAddress`: whatever it holds, it cannot end the segment.
QString pathSegment(const QString& identifier);

/// `value` as a value in a query: every character but ASCII letters and digits is escaped.
QString queryValue(const QString& value);

/// `value` as one segment in which only letters, combining marks and digits, of any script, stay as they are.
QString alphanumericSegment(const QString& value);

} // namespace palvera
