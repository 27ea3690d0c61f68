#include "http/Redirects.h"

#include "http/HttpAddress.h"
#include "http/TransportError.h"

#include <QObject>

#include <algorithm>
#include <array>

namespace palvera {

using namespace std::chrono_literals;

namespace {

constexpr int mostRedirects = 5;

/// What is left until `deadline`; never 0, which would be for ever.
std::chrono::milliseconds timeUntil(Clock::Moment deadline, Clock::Moment now)
{
    return std::max(1ms, std::chrono::duration_cast<std::chrono::milliseconds>(deadline - now));
}

} // namespace

std::optional<QByteArray> redirectOf(const HttpResponse& answer, const QByteArray& url)
{
    constexpr std::array redirects{301, 302, 303, 307, 308};
    const auto location = answer.header("Location");
    if (std::ranges::find(redirects, answer.status) == redirects.end() || location.isEmpty())
        return {};
    return resolveAddress(url, location);
}

Task<HttpResponse> sendFollowing(HttpClient& client, Clock& clock, HttpRequest request,
                                 std::function<bool(const QByteArray& url)> isAllowed)
{
    const auto deadline = clock.now() + request.totalTimeout;
    for (int redirects = 0; redirects <= mostRedirects; ++redirects) {
        if (!isAllowed(request.url))
            throw TransportError(TransportError::Kind::untrusted,
                                 QObject::tr("The server sends on to an address that is not encrypted."));
        auto answer = co_await client.send(request);
        auto next = redirectOf(answer, request.url);
        if (!next)
            co_return answer;
        request.url = *std::move(next);
        if (request.totalTimeout > 0ms)
            request.totalTimeout = timeUntil(deadline, clock.now());
    }
    throw TransportError(TransportError::Kind::broken, QObject::tr("The server sends on again and again."));
}

} // namespace palvera
