#include "support/SimulatedNetwork.h"

#include "http/TransportError.h"

namespace palvera {

namespace {

using Kind = local::Fault::Kind;
using Moment = Clock::Moment;

constexpr qint64 largestSlice = 1 << 20;

[[noreturn]] void fail(TransportError::Kind kind, const QString& text)
{
    throw TransportError(kind, text);
}

[[noreturn]] void cut()
{
    fail(TransportError::Kind::broken, QStringLiteral("The connection was cut."));
}

/// When `most` is over, counted from `from`; no limit when it is zero.
Moment limit(Moment from, std::chrono::milliseconds most)
{
    return most.count() > 0 ? from + most : Moment::max();
}

} // namespace

/// One request on its way, with the limits on its time.
class SimulatedNetwork::Exchange {
public:
    Exchange(SimulatedNetwork& network, HttpRequest& request)
        : m_network(network), m_request(request), m_index(network.m_seen.size())
    {
        const auto host = request.url.indexOf("://") + 3, path = request.url.indexOf('/', host);
        m_head = {.method = request.method, .target = request.url.mid(path), .headers = request.headers};
        m_isCall = m_head.target.startsWith("/api/") || m_head.target.startsWith("/sign-in");
        m_head.headers.append({"Host", request.url.mid(host, path - host)});
        if (request.method != "GET")
            m_head.headers.append({"Content-Length", QByteArray::number(bodySize())});
        QByteArrayList cookies;
        for (const auto& [name, value] : network.m_cookies)
            cookies.append(name + '=' + value);
        if (m_isCall && !cookies.isEmpty())
            m_head.headers.append({"Cookie", cookies.join("; ")});

        network.m_seen.push_back({.method = m_head.method,
                                  .target = m_head.target,
                                  .operation = network.m_platform.operationOf(m_head),
                                  .part = network.m_platform.partOf(m_head),
                                  .body = request.source ? QByteArray() : request.body,
                                  .at = m_started,
                                  .ended = {}});
    }
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;
    ~Exchange()
    {
        auto& seen = m_network.m_seen[m_index];
        seen.ended = now();
        seen.inFlight = false;
    }

    Task<HttpResponse> run()
    {
        auto& platform = m_network.m_platform;
        if (m_network.conditions.listening)
            m_fault = platform.meet(m_head);
        if (!m_network.conditions.listening || m_fault.kind == Kind::refuse)
            fail(TransportError::Kind::connect, QStringLiteral("Nobody listens there."));
        if (m_fault.kind == Kind::resetBeforeReading)
            cut();
        if (m_isCall) {
            co_await sendBody(nullptr);
            auto reply = platform.serve(m_head, m_request.body, m_fault);
            m_network.keepCookies(reply.headers);
            co_return co_await answer(std::move(reply));
        }
        if (m_head.method != "PUT")
            throw std::logic_error("a simulated network brings no downloads");
        auto opening = platform.openPart(m_head, bodySize(), m_fault);
        co_await sendBody(opening.receiver.get());
        co_return co_await answer(opening.receiver ? opening.receiver->finish(m_fault) : opening.refusal);
    }

private:
    Moment now() const { return m_network.m_clock.now(); }
    qint64 bodySize() const { return m_request.source ? m_request.source->size() : m_request.body.size(); }

    /// Waits, and fails where a time-out comes first.
    Task<void> pass(Moment until)
    {
        const auto idle = limit(m_moved, m_request.idleTimeout), total = limit(m_started, m_request.totalTimeout);
        const auto end = std::min({until, idle, total});
        co_await m_network.m_clock.sleepUntil(end);
        if (end == until)
            co_return;
        if (end == idle)
            fail(TransportError::Kind::idle, QStringLiteral("The request timed out."));
        fail(TransportError::Kind::timedOut, QStringLiteral("The request took too long."));
    }

    std::span<const char> readSlice(qint64 offset, std::span<char> into)
    {
        if (m_request.source)
            return into.first(m_request.source->read(offset, into));
        std::copy_n(m_request.body.begin() + offset, into.size(), into.begin());
        return into;
    }

    /// Sends the body, or as much of it as the fault lets through, a twentieth of a second's bytes at a time: so that
    /// progress shows and no idle time-out fires in the middle of one.
    Task<void> sendBody(local::PartReceiver* receiver)
    {
        const bool cutShort = m_fault.kind == Kind::resetMidBody || m_fault.kind == Kind::stallMidBody;
        const auto end = cutShort ? std::min(bodySize(), m_fault.bytes) : bodySize();
        const auto began = now();
        const double rate =
            m_fault.bytesPerSecond > 0 ? double(m_fault.bytesPerSecond) : m_network.conditions.bytesPerSecond;
        std::vector<char> buffer(static_cast<std::size_t>(std::min(largestSlice, end)));
        for (qint64 sent = 0; sent < end;) {
            const auto most = rate > 0 ? std::clamp<qint64>(qint64(rate / 20), 1, largestSlice) : largestSlice;
            const auto slice =
                readSlice(sent, std::span(buffer).first(static_cast<std::size_t>(std::min(most, end - sent))));
            sent += static_cast<qint64>(slice.size());
            if (rate > 0)
                co_await pass(began +
                              std::chrono::round<Moment::duration>(std::chrono::duration<double>(double(sent) / rate)));
            m_moved = now();
            if (receiver)
                receiver->write(slice);
            if (m_request.onSent)
                m_request.onSent(sent, sent);
        }
        if (m_fault.kind == Kind::resetMidBody)
            cut();
        if (m_fault.kind == Kind::stallMidBody || m_fault.kind == Kind::stallAfterBody)
            co_await pass(Moment::max());
    }

    /// What was asked is done; the answer takes its way.
    Task<HttpResponse> answer(local::Reply reply)
    {
        co_await pass(now() + m_network.conditions.latency + m_fault.latency);
        if (m_fault.kind == Kind::loseAnswer)
            cut();
        HttpResponse answer{.status = reply.status, .headers = std::move(reply.headers), .body = std::move(reply.body)};
        if (!m_isCall && m_network.conditions.atStorage)
            m_network.conditions.atStorage(answer);
        co_return answer;
    }

    SimulatedNetwork& m_network;
    HttpRequest& m_request;
    std::size_t m_index;
    Moment m_started = now();
    Moment m_moved = m_started; // when a byte last crossed the connection
    local::RequestHead m_head;
    bool m_isCall = false;
    local::Fault m_fault;
};

std::unique_ptr<HttpClient> SimulatedNetwork::client()
{
    struct Client final : HttpClient {
        SimulatedNetwork& network;

        explicit Client(SimulatedNetwork& owner) : network(owner) {}
        Task<HttpResponse> send(HttpRequest request) override
        {
            Exchange exchange(network, request);
            co_return co_await exchange.run();
        }
    };
    return std::make_unique<Client>(*this);
}

void SimulatedNetwork::signIn(const QString& email)
{
    keepCookies({{"Set-Cookie", m_platform.signIn(email)}});
}

std::vector<SeenRequest> SimulatedNetwork::seen(local::Operation operation) const
{
    auto found = m_seen;
    std::erase_if(found, [&](const SeenRequest& request) { return request.operation != operation; });
    return found;
}

void SimulatedNetwork::keepCookies(const HttpHeaders& headers)
{
    for (const auto& [name, value] : headers) {
        if (name != "Set-Cookie")
            continue;
        const auto cookie = value.split(';').first();
        const auto key = cookie.left(cookie.indexOf('='));
        if (value.contains("Max-Age=0;"))
            m_cookies.erase(key);
        else
            m_cookies[key] = cookie.mid(key.size() + 1);
    }
}

} // namespace palvera
