#include "http/CurlTls.h"

#include <openssl/bio.h>

namespace palvera {

SSL* tlsOf(CURL* easy)
{
    const curl_tlssessioninfo* session = nullptr;
    bool isKnown = curl_easy_getinfo(easy, CURLINFO_TLS_SSL_PTR, &session) == CURLE_OK && session &&
                   session->backend == CURLSSLBACKEND_OPENSSL;
    return isKnown ? static_cast<SSL*>(session->internals) : nullptr;
}

void readAhead(CURL* easy, int bytes)
{
    auto* tls = tlsOf(easy);
    auto* stream = tls ? SSL_get_rbio(tls) : nullptr;
    if (!stream || BIO_method_type(stream) == BIO_TYPE_BUFFER)
        return;
    auto* buffer = BIO_new(BIO_f_buffer());
    if (!buffer || BIO_set_read_buffer_size(buffer, bytes) <= 0) { // for want of memory: it goes without
        BIO_free(buffer);
        return;
    }
    BIO_up_ref(stream); // the chain's, where it was the connection's own
    SSL_set0_rbio(tls, BIO_push(buffer, stream));
}

} // namespace palvera
