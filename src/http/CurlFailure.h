#pragma once

#include "http/TransportError.h"

#include <curl/curl.h>

namespace palvera {

/// What the user is told when libcurl ends a transfer with `result`, which is not CURLE_OK. libcurl's own texts hold
/// addresses and are never shown.
TransportError transportError(CURLcode result);

} // namespace palvera
