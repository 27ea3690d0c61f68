#pragma once

#include "localplatform/Wire.h"

namespace palvera::local {

/// Whether a call's body is announced by its headers.
enum class Body { none, json };

/// A service call bears exactly the headers it needs: anything else is a violation.
void checkServiceHeaders(const HttpHeaders& headers, Body body);

/// The same for a request to storage. `Range` is for downloads only.
void checkStorageHeaders(const HttpHeaders& headers, QByteArrayView method);

} // namespace palvera::local
