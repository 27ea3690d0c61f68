#include "platform/EarlyAnswer.h"

#include "platform/CurlTls.h"

#include <openssl/bio.h>

namespace palvera {

namespace {

/// Set as a stream's callback argument once a write to it has failed.
char failedBefore[] = "failed";

long retryFirstFailedWrite(BIO* stream, int operation, const char*, size_t, int, long, int result, size_t*)
{
    bool failed = operation == (BIO_CB_WRITE | BIO_CB_RETURN) && result <= 0 && !BIO_should_retry(stream);
    if (failed && !BIO_get_callback_arg(stream)) {
        BIO_set_callback_arg(stream, failedBefore);
        BIO_set_retry_write(stream);
    }
    return result;
}

} // namespace

std::optional<HttpResponse> parseRefusal(const QByteArray& bytes)
{
    auto end = bytes.indexOf("\r\n\r\n");
    auto status = bytes.startsWith("HTTP/1.") ? bytes.mid(9, 3).toInt() : 0;
    if (end < 0 || status < 400)
        return {};
    HttpResponse refusal{.status = status, .body = bytes.sliced(end + 4)};
    auto lines = bytes.first(end).split('\n');
    for (const auto& line : lines.sliced(1))
        if (auto colon = line.indexOf(':'); colon > 0)
            refusal.headers.append({line.first(colon), line.sliced(colon + 1).trimmed()});
    bool hasLength = false;
    auto length = refusal.header("Content-Length").toLongLong(&hasLength);
    if (hasLength)
        refusal.body.truncate(length);
    return refusal;
}

void readAfterFailedWrite(CURL* easy)
{
    auto* tls = tlsOf(easy);
    if (!tls)
        return;
    auto* stream = SSL_get_wbio(tls);
    BIO_set_callback_arg(stream, nullptr);
    BIO_set_callback_ex(stream, &retryFirstFailedWrite);
}

} // namespace palvera
