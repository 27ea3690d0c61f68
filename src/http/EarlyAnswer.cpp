#include "http/EarlyAnswer.h"

#include "http/CurlTls.h"

#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>

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
    namespace beast = boost::beast::http;
    beast::response_parser<beast::string_body> parser;
    parser.eager(true);                // past the headers
    boost::system::error_code ignored; // of a body that is cut short
    parser.put(boost::asio::buffer(bytes.data(), std::size_t(bytes.size())), ignored);
    if (!parser.is_header_done() || parser.get().result_int() < 400)
        return {};
    HttpResponse refusal{.status = int(parser.get().result_int()),
                         .body = QByteArray::fromStdString(parser.get().body())};
    for (const auto& field : parser.get())
        refusal.headers.append({QByteArray(field.name_string().data(), qsizetype(field.name_string().size())),
                                QByteArray(field.value().data(), qsizetype(field.value().size()))});
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
