#pragma once

#include "http/HttpClient.h"

#include <curl/curl.h>

#include <optional>

namespace palvera {

// A server that refuses a body half-way answers and closes. Bytes that are then still on their way to it reset the
// connection, and libcurl, whose write fails, gives up although the answer stands in the receive queue. These two see
// to it that the answer counts.

/// The refusal (a status from 400) that `bytes`, straight from the socket of an unencrypted connection, begin with;
/// nothing when its headers are not all there. Its body may be cut short.
std::optional<HttpResponse> parseRefusal(const QByteArray& bytes);

/// Makes the next write to the encrypted connection of `easy` that fails look like one to be tried again later. libcurl
/// then reads first and finds the answer, or the failure; the write after that fails for good. Nothing happens for an
/// unencrypted connection.
void readAfterFailedWrite(CURL* easy);

} // namespace palvera
