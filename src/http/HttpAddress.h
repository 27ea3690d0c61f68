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

/// The absolute address that `reference`, which may be relative, stands for in what came from `base`. Nothing unless it
/// is a well-formed http or https address.
std::optional<QByteArray> resolveAddress(const QByteArray& base, const QByteArray& reference);

/// Whether anybody on the way to `url` can read along. Not so within this machine, nor where nothing would be sent
/// because the address is none.
bool isExposed(const QByteArray& url);

} // namespace palvera
