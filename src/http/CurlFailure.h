#pragma once

#include "http/TransportError.h"

#include <curl/curl.h>

#include <optional>

namespace palvera {

/// What the user is told when libcurl ends a transfer with `result`, which is not CURLE_OK. libcurl's own texts hold
/// addresses and are never shown.
TransportError transportError(CURLcode result);

/// The same where a proxy answered with `status` when it was asked for a way through to an encrypted server; nothing
/// when it gave one, or was not asked (0).
std::optional<TransportError> proxyRefusal(long status);

} // namespace palvera
