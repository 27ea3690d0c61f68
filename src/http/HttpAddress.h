#pragma once

#include <QByteArray>

#include <optional>

namespace palvera {

/// What a session must know of an address before it asks libcurl for it.
struct HttpAddress {
    QByteArray host;       ///< lower case; an IPv6 address in brackets
    bool loopback = false; ///< this machine itself, by name or by number
    bool encrypted = false;

    bool operator==(const HttpAddress&) const = default;
};

/// Nothing unless `url` is a well-formed http or https address.
std::optional<HttpAddress> parseHttpAddress(const QByteArray& url);

/// Whether anybody on the way to `url` can read along. Not so within this machine, nor where nothing would be sent
/// because the address is none.
bool isExposed(const QByteArray& url);

} // namespace palvera
