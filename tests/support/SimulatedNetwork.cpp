#include "support/SimulatedNetwork.h"

#include "http/TransportError.h"
#include "support/Delivered.h"

#include <boost/asio/steady_timer.hpp>
#include <boost/asio/this_coro.hpp>
#include <boost/asio/use_awaitable.hpp>

namespace palvera {

namespace asio = boost::asio;

namespace {

using Kind = local::Fault::Kind;

constexpr qint64 largestSlice = 1 << 20;

QByteArray targetOf(const QByteArray& url)
{
    auto host = url.indexOf("://");
    auto path = url.indexOf('/', host < 0 ? 0 : host + 3);
    return path < 0 ? QByteArray("/") : url.mid(path);
}

QByteArray hostOf(const QByteArray& url)
{
    auto from = url.indexOf("://") + 3;
    return url.mid(from, url.indexOf('/', from) - from);
}

bool isStorage(const QByteArray& target)
{
    return !target.startsWith("/api/") && !target.startsWith("/sign-in");
}

[[noreturn]] void cut()
{
    throw TransportError(TransportError::Kind::broken, QStringLiteral("The connection was cut."));
}

/// A few slices each tenth of a second, so that progress shows and idle time-outs do not fire in the middle of one.
qint64 sliceFor(double bytesPerSecond)
{
    return bytesPerSecond > 0 ? std::clamp(static_cast<qint64>(bytesPerSecond / 20), qint64{1}, largestSlice)
                              : largestSlice;
}

} // namespace

/// One request on its way, with the limits on its time.
class SimulatedNetwork::Exchange {
public:
    Exchange(SimulatedNetwork& network, HttpRequest& request)
        : m_network(network),
          m_request(request),
          m_started(network.m_clock.now()),
          m_moved(m_started),
          m_index(network.m_seen.size())
    {
        m_head = {.method = request.method, .target = targetOf(request.url), .headers = headers()};
        auto operation = network.m_platform.operationOf(m_head);
        network.m_seen.push_back({.method = m_head.method,
                                  .target = m_head.target,
                                  .operation = operation,
                                  .part = network.m_platform.partOf(m_head),
                                  .body = request.source ? QByteArray() : request.body,
                                  .at = m_started,
                                  .ended = {}});
        auto& most = network.m_mostInFlight[operation];
        most = std::max(most, ++network.m_inFlight[operation]);
    }
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;
    ~Exchange()
    {
        seen().ended = m_network.m_clock.now();
        seen().inFlight = false;
        --m_network.m_inFlight[seen().operation];
    }

    Task<HttpResponse> run()
    {
        if (!m_network.conditions.listening)
            throw TransportError(TransportError::Kind::connect, QStringLiteral("Nobody listens there."));
        m_fault = m_network.m_platform.meet(m_head);
        if (m_fault.kind == Kind::refuse)
            throw TransportError(TransportError::Kind::connect, QStringLiteral("Nobody listens there."));
        if (m_fault.kind == Kind::resetBeforeReading)
            cut();
        if (m_head.method == "PUT" && isStorage(m_head.target))
            co_return co_await put();
        if (isStorage(m_head.target))
            co_return co_await get();
        co_return co_await call();
    }

private:
    SeenRequest& seen() { return m_network.m_seen[m_index]; }
    Clock& clock() { return m_network.m_clock; }
    qint64 bodySize() const { return m_request.source ? m_request.source->size() : m_request.body.size(); }

    HttpHeaders headers() const
    {
        auto all = m_request.headers;
        all.append({"Host", hostOf(m_request.url)});
        if (m_request.method != "GET")
            all.append({"Content-Length", QByteArray::number(bodySize())});
        if (auto cookies = m_network.cookieHeader(); !cookies.isEmpty() && !isStorage(targetOf(m_request.url)))
            all.append({"Cookie", cookies});
        return all;
    }

    std::optional<Clock::Moment> limit(Clock::Moment from, std::chrono::milliseconds most) const
    {
        return most.count() > 0 ? std::optional(from + most) : std::nullopt;
    }

    /// Waits, and fails where a time-out comes first.
    Task<void> pass(std::optional<Clock::Moment> until)
    {
        auto idle = limit(m_moved, m_request.idleTimeout), total = limit(m_started, m_request.totalTimeout);
        auto end = until;
        for (const auto& candidate : {idle, total})
            if (candidate && (!end || *candidate < *end))
                end = candidate;
        if (end) {
            co_await clock().sleepUntil(*end);
        } else {
            asio::steady_timer never(co_await asio::this_coro::executor, asio::steady_timer::time_point::max());
            co_await never.async_wait(asio::use_awaitable);
        }
        if (end == until)
            co_return;
        if (end == idle)
            throw TransportError(TransportError::Kind::idle, QStringLiteral("The request timed out."));
        throw TransportError(TransportError::Kind::timedOut, QStringLiteral("The request took too long."));
    }

    Task<void> stall() { co_await pass(std::nullopt); }

    /// Lets `count` bytes cross the connection, the last of `done + count` that began to at `began`.
    Task<void> move(Clock::Moment began, qint64 done, qint64 count)
    {
        if (auto rate = m_network.conditions.bytesPerSecond; rate > 0) {
            auto seconds = std::chrono::duration<double>(static_cast<double>(done + count) / rate);
            co_await pass(began + std::chrono::duration_cast<Clock::Moment::duration>(seconds));
        }
        m_moved = clock().now();
    }

    qint64 readSlice(qint64 offset, std::span<char> into)
    {
        if (m_request.source)
            return static_cast<qint64>(m_request.source->read(offset, into));
        auto slice = std::span<const char>(m_request.body).subspan(static_cast<std::size_t>(offset));
        auto count = std::min(slice.size(), into.size());
        std::copy_n(slice.begin(), count, into.begin());
        return static_cast<qint64>(count);
    }

    /// Sends the body, or as much of it as the fault lets through.
    Task<void> sendBody(local::PartReceiver* receiver)
    {
        const bool cutShort = m_fault.kind == Kind::resetMidBody || m_fault.kind == Kind::stallMidBody;
        const auto end = cutShort ? std::min(bodySize(), m_fault.bytes) : bodySize();
        const auto began = clock().now();
        std::vector<char> buffer(static_cast<std::size_t>(std::min(largestSlice, std::max<qint64>(end, 1))));
        for (qint64 sent = 0; sent < end;) {
            auto most = std::min(sliceFor(m_network.conditions.bytesPerSecond), end - sent);
            auto slice = std::span(buffer).first(static_cast<std::size_t>(most));
            auto count = readSlice(sent, slice);
            co_await move(began, sent, count);
            sent += count;
            if (receiver)
                receiver->write(slice.first(static_cast<std::size_t>(count)));
            if (m_request.onSent)
                m_request.onSent(sent);
        }
        if (m_fault.kind == Kind::resetMidBody)
            cut();
        if (m_fault.kind == Kind::stallMidBody || m_fault.kind == Kind::stallAfterBody)
            co_await stall();
    }

    Task<HttpResponse> put()
    {
        auto opening = m_network.m_platform.openPart(m_head, bodySize(), m_fault);
        co_await sendBody(opening.receiver.get());
        auto reply = opening.receiver ? opening.receiver->finish(m_fault) : opening.refusal;
        co_return co_await answer(std::move(reply));
    }

    Task<HttpResponse> call()
    {
        co_await sendBody(nullptr);
        auto body = m_request.body;
        if (m_request.source) {
            body.resize(bodySize());
            for (qint64 done = 0; done < body.size();)
                done += readSlice(done, std::span(body.data() + done, static_cast<std::size_t>(body.size() - done)));
        }
        auto reply = m_network.m_platform.serve(m_head, body, m_fault);
        m_network.keepCookies(reply.headers);
        co_return co_await answer(std::move(reply));
    }

    Task<HttpResponse> get()
    {
        if (m_head.method != "GET")
            co_return co_await answer(m_network.m_platform.refuseStorage(m_head));
        if (m_fault.kind == Kind::stallAfterBody)
            co_await stall();
        auto download = m_network.m_platform.download(m_head, m_fault);
        auto response = co_await answer(std::move(download.reply));
        if (!download.object)
            co_return response;
        response.headers.append({"Content-Length", QByteArray::number(download.length)});
        if (m_request.wantsBody && download.length > 0 && !m_request.wantsBody(response))
            co_return response;
        co_await receive(download, response.body);
        co_return delivered(m_request, std::move(response));
    }

    Task<void> receive(const local::Download& download, QByteArray& into)
    {
        const bool cutShort = m_fault.kind == Kind::resetMidBody || m_fault.kind == Kind::stallMidBody;
        const auto end = cutShort ? std::min(download.length, m_fault.bytes) : download.length;
        if (!m_request.sink && end > m_request.answerLimit)
            throw TransportError(TransportError::Kind::tooLarge, QStringLiteral("The answer is too large."));
        const auto began = clock().now();
        into.resize(end);
        for (qint64 done = 0; done < end;) {
            auto count = std::min(sliceFor(m_network.conditions.bytesPerSecond), end - done);
            co_await move(began, done, count);
            download.object->read(download.offset + done,
                                  std::span(into.data() + done, static_cast<std::size_t>(count)));
            done += count;
        }
        if (m_fault.kind == Kind::resetMidBody)
            cut();
        if (m_fault.kind == Kind::stallMidBody)
            co_await stall();
    }

    /// What was asked is done; the answer takes its way.
    Task<HttpResponse> answer(local::Reply reply)
    {
        co_await pass(clock().now() + m_network.conditions.latency + m_fault.latency);
        m_moved = clock().now();
        if (m_fault.kind == Kind::loseAnswer)
            cut();
        seen().status = reply.status;
        co_return HttpResponse{
            .status = reply.status, .headers = std::move(reply.headers), .body = std::move(reply.body)};
    }

    SimulatedNetwork& m_network;
    HttpRequest& m_request;
    Clock::Moment m_started;
    Clock::Moment m_moved; // when a byte last crossed the connection
    std::size_t m_index;
    local::RequestHead m_head;
    local::Fault m_fault;
};

class SimulatedNetwork::Client final : public HttpClient {
public:
    explicit Client(SimulatedNetwork& network) : m_network(network) {}

    Task<HttpResponse> send(HttpRequest request) override
    {
        Exchange exchange(m_network, request);
        co_return co_await exchange.run();
    }

private:
    SimulatedNetwork& m_network;
};

std::unique_ptr<HttpClient> SimulatedNetwork::client()
{
    return std::make_unique<Client>(*this);
}

HttpClientFactory SimulatedNetwork::factory()
{
    return [this] { return client(); };
}

void SimulatedNetwork::signIn(const QString& email)
{
    keepCookies({{"Set-Cookie", m_platform.signIn(email)}});
}

std::vector<SeenRequest> SimulatedNetwork::seen(local::Operation operation) const
{
    std::vector<SeenRequest> found;
    for (const auto& request : m_seen)
        if (request.operation == operation)
            found.push_back(request);
    return found;
}

int SimulatedNetwork::mostInFlight(local::Operation operation) const
{
    auto most = m_mostInFlight.find(operation);
    return most == m_mostInFlight.end() ? 0 : most->second;
}

QByteArray SimulatedNetwork::cookieHeader() const
{
    QByteArrayList cookies;
    for (const auto& [name, value] : m_cookies)
        cookies.append(name + '=' + value);
    return cookies.join("; ");
}

void SimulatedNetwork::keepCookies(const HttpHeaders& headers)
{
    for (const auto& [name, value] : headers) {
        if (name != "Set-Cookie")
            continue;
        auto cookie = value.left(value.indexOf(';') < 0 ? value.size() : value.indexOf(';'));
        auto key = cookie.left(cookie.indexOf('='));
        if (value.contains("Max-Age=0;"))
            m_cookies.erase(key);
        else
            m_cookies[key] = cookie.mid(key.size() + 1);
    }
}

} // namespace palvera
