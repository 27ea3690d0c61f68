#include "http/HttpAddress.h"

#include <curl/curl.h>

#include <memory>

namespace palvera {

namespace {

using AddressPointer = std::unique_ptr<CURLU, decltype(&curl_url_cleanup)>;

QByteArray part(CURLU* address, CURLUPart which)
{
    char* text = nullptr;
    if (curl_url_get(address, which, &text, 0) != CURLUE_OK)
        return {};
    QByteArray copy(text);
    curl_free(text);
    return copy.toLower();
}

bool isLoopback(const QByteArray& host)
{
    if (host == "localhost" || host.endsWith(".localhost") || host == "[::1]")
        return true;
    return host.startsWith("127.") &&
           std::ranges::all_of(host, [](char c) { return (c >= '0' && c <= '9') || c == '.'; });
}

} // namespace

std::optional<HttpAddress> parseHttpAddress(const QByteArray& url)
{
    if (url.contains('\0')) // libcurl would stop there
        return {};
    AddressPointer address(curl_url(), &curl_url_cleanup);
    if (!address || curl_url_set(address.get(), CURLUPART_URL, url.constData(), CURLU_PATH_AS_IS) != CURLUE_OK)
        return {};
    auto scheme = part(address.get(), CURLUPART_SCHEME);
    auto host = part(address.get(), CURLUPART_HOST);
    if ((scheme != "http" && scheme != "https") || host.isEmpty())
        return {};
    return HttpAddress{.host = host, .loopback = isLoopback(host), .encrypted = scheme == "https"};
}

std::optional<QByteArray> resolveAddress(const QByteArray& base, const QByteArray& reference)
{
    const AddressPointer address(curl_url(), &curl_url_cleanup);
    if (!address || reference.contains('\0') ||
        curl_url_set(address.get(), CURLUPART_URL, base.constData(), CURLU_PATH_AS_IS) != CURLUE_OK ||
        curl_url_set(address.get(), CURLUPART_URL, reference.constData(), CURLU_PATH_AS_IS) != CURLUE_OK)
        return {};
    curl_url_set(address.get(), CURLUPART_FRAGMENT, nullptr, 0); // is never sent
    char* text = nullptr;
    if (curl_url_get(address.get(), CURLUPART_URL, &text, 0) != CURLUE_OK)
        return {};
    QByteArray resolved(text);
    curl_free(text);
    return parseHttpAddress(resolved) ? std::optional(resolved) : std::nullopt;
}

bool isExposed(const QByteArray& url)
{
    const auto address = parseHttpAddress(url);
    return address && !address->encrypted && !address->loopback;
}

} // namespace palvera
