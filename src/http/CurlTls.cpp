#include "http/CurlTls.h"

#include <openssl/bio.h>
#include <openssl/x509v3.h>

#include <memory>

namespace palvera {

namespace {

struct ExtensionDeleter {
    void operator()(GENERAL_NAMES* names) const { GENERAL_NAMES_free(names); }
};

/// Called for each certificate of the chain, from the authority's down to the server's, which has depth 0.
int requireAlternativeName(int isTrusted, X509_STORE_CTX* checking)
{
    if (!isTrusted || X509_STORE_CTX_get_error_depth(checking) != 0)
        return isTrusted;
    const auto* certificate = X509_STORE_CTX_get_current_cert(checking);
    const std::unique_ptr<GENERAL_NAMES, ExtensionDeleter> names(
        static_cast<GENERAL_NAMES*>(X509_get_ext_d2i(certificate, NID_subject_alt_name, nullptr, nullptr)));
    for (int i = 0; i < sk_GENERAL_NAME_num(names.get()); ++i) // none where there is no such extension
        if (auto type = sk_GENERAL_NAME_value(names.get(), i)->type; type == GEN_DNS || type == GEN_IPADD)
            return 1;
    X509_STORE_CTX_set_error(checking, X509_V_ERR_HOSTNAME_MISMATCH);
    return 0;
}

} // namespace

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

CURLcode refuseCommonNames(CURL* /*easy*/, void* context, void* /*data*/)
{
    SSL_CTX_set_verify(static_cast<SSL_CTX*>(context), SSL_VERIFY_PEER, &requireAlternativeName);
    return CURLE_OK;
}

} // namespace palvera
