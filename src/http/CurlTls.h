#pragma once

#include <curl/curl.h>
#include <openssl/ssl.h>

namespace palvera {

/// The TLS connection of `easy`; null while it has none, where it is not encrypted and where libcurl does not stand on
/// OpenSSL.
SSL* tlsOf(CURL* easy);

/// From here on, has the encrypted connection of `easy` read up to `bytes` at a time from its socket. What was read
/// ahead raises no event: who waits for the socket must read on until nothing comes. A second call does nothing.
///
/// OpenSSL by itself reads twice for each record of 16 KiB. Its own reading ahead moves all that is left to the front
/// of its buffer for every record, which costs what it saves.
void readAhead(CURL* easy, int bytes);

/// For CURLOPT_SSL_CTX_FUNCTION. Has the handshake fail where the server's certificate names its hosts only as the
/// common name of its subject, by which libcurl would go where there is nothing better and which authorities have not
/// vouched for in years (RFC 9110, 4.3.4). `context` is an SSL_CTX.
CURLcode refuseCommonNames(CURL* easy, void* context, void*);

} // namespace palvera
