#include "http/CurlLibrary.h"

#include <curl/curl.h>
#include <openssl/crypto.h>

#include <new>

namespace palvera {

void startCurl()
{
    static const CURLcode started = [] {
        // When `main` has ended, threads may still be closing connections. OpenSSL's own clean-up at that moment would
        // take its locks away from them, and the program would crash after its work is done.
        OPENSSL_init_crypto(OPENSSL_INIT_NO_ATEXIT, nullptr);
        return curl_global_init(CURL_GLOBAL_DEFAULT);
    }();
    if (started != CURLE_OK)
        throw std::bad_alloc();
}

} // namespace palvera
