#pragma once

#include "async/Clock.h"
#include "http/HttpClient.h"

namespace palvera {

/// Where an answer to a request for `url` sends the client on to, as an absolute address; nothing when it does not, or
/// to what is no http or https address.
std::optional<QByteArray> redirectOf(const HttpResponse& answer, const QByteArray& url);

/// Sends a GET for something that everybody may read, and follows up to five redirects. `request.totalTimeout` bounds
/// all of it. Every address, the first one too, must be allowed by `isAllowed`. Throws TransportError, and what
/// `client` throws.
Task<HttpResponse> sendFollowing(HttpClient& client, Clock& clock, HttpRequest request,
                                 std::function<bool(const QByteArray& url)> isAllowed);

} // namespace palvera
