#pragma once

#include "async/Clock.h"
#include "http/HttpClient.h"
#include "http/TransportError.h"

#include <deque>
#include <stdexcept>
#include <variant>
#include <vector>

namespace palvera {

using namespace std::chrono_literals;

/// A network in memory: remembers what it was asked and answers from a script, else through `handler`.
class FakeHttpClient final : public HttpClient {
public:
    explicit FakeHttpClient(Clock& clock) : m_clock(clock) {}

    /// Answers what the script does not cover; may throw. Called when the request's latency is over.
    std::function<HttpResponse(const HttpRequest&)> handler = [](const HttpRequest& request) -> HttpResponse {
        throw std::logic_error("a request that nobody scripted: " + request.url.toStdString());
    };
    /// How long each answer takes.
    std::chrono::nanoseconds latency{0};
    bool isHeld = false;                  ///< by a limit, for all of that
    std::optional<qint64> mostBytes = {}; ///< of a body, before the connection breaks

    void answer(int status, QByteArray body = {})
    {
        m_script.push_back(HttpResponse{.status = status, .body = std::move(body)});
    }
    void fail(std::exception_ptr failure) { m_script.push_back(std::move(failure)); }

    /// Every request so far.
    const std::vector<HttpRequest>& requests() const { return m_requests; }

    /// Takes note of the request at the call, as a session takes its cookies then.
    Task<HttpResponse> send(HttpRequest request) override
    {
        m_requests.push_back(request);
        return perform(std::move(request));
    }

private:
    Task<HttpResponse> perform(HttpRequest request)
    {
        for (const auto end = m_clock.now() + latency; isHeld && request.onHeld && m_clock.now() + 200ms < end;) {
            request.onHeld();
            co_await m_clock.sleep(200ms);
        }
        co_await m_clock.sleep(isHeld ? 0ns : latency);
        co_return delivered(request, respond(request));
    }

    /// `response`, whose body is whole, as a session would hand it to whoever made `request`.
    HttpResponse delivered(const HttpRequest& request, HttpResponse response) const
    {
        if (response.body.isEmpty())
            return response;
        HttpResponse head{.status = response.status, .headers = response.headers};
        if (request.wantsBody && !request.wantsBody(head))
            return head;
        response.length = response.body.size();
        if (!request.sink || !response.isSuccess())
            return response;
        if (response.length > request.sink->room())
            throw TransportError(TransportError::Kind::tooLarge, QStringLiteral("The server's answer is too large."));
        constexpr std::size_t packet = 300;
        const bool isCut = response.length > mostBytes.value_or(response.length);
        for (auto rest = std::span(std::as_const(response.body)).first(isCut ? *mostBytes : response.length);
             !rest.empty();) {
            const auto bytes = rest.first(std::min(packet, rest.size()));
            request.sink->take(bytes);
            rest = rest.subspan(bytes.size());
        }
        if (isCut)
            throw TransportError(TransportError::Kind::broken, QStringLiteral("The connection was cut."));
        response.body.clear();
        return response;
    }

    HttpResponse respond(const HttpRequest& request)
    {
        if (m_script.empty())
            return handler(request);
        auto next = std::move(m_script.front());
        m_script.pop_front();
        if (auto* failure = std::get_if<std::exception_ptr>(&next))
            std::rethrow_exception(*failure);
        return std::get<HttpResponse>(std::move(next));
    }

    Clock& m_clock;
    std::deque<std::variant<HttpResponse, std::exception_ptr>> m_script;
    std::vector<HttpRequest> m_requests;
};

} // namespace palvera
