#include "http/HttpSession.h"

#include "async/Failure.h"
#include "async/RunOn.h"
#include "async/TaskGroup.h"
#include "http/CookieStore.h"
#include "http/CurlTransfer.h"
#include "http/NetworkPath.h"
#include "http/TransportError.h"

#include <QObject>

#include <set>

namespace palvera {

namespace asio = boost::asio;

/// What a session's requests share. Strand only.
class HttpSessionCore {
public:
    HttpSessionCore(const Executor& executor, HttpSessionOptions options)
        : strand(executor),
          closing(strand, StrandTimer::time_point::max()),
          cookies(options.sharedCookies),
          path(options.networkPath ? options.networkPath : std::make_shared<SystemNetworkPath>()),
          multi(std::make_shared<CurlMulti>(strand, long(options.maxConnectionsPerHost))),
          handles(std::move(options))
    {}

    const Strand strand;
    StrandTimer closing; // cancelled once `closed` is set
    const std::shared_ptr<CookieStore> cookies;
    const std::shared_ptr<NetworkPath> path;
    const std::shared_ptr<CurlMulti> multi;
    CurlHandles handles;
    std::set<CurlTransfer*> inFlight;
    bool closed = false;
};

namespace {

using Core = std::shared_ptr<HttpSessionCore>;

/// A transfer's stay in the session's list.
class Listed {
public:
    Listed(HttpSessionCore& core, CurlTransfer& transfer) : m_core(core), m_place(core.inFlight.insert(&transfer).first)
    {}
    ~Listed() { m_core.inFlight.erase(m_place); }
    Listed(const Listed&) = delete;
    Listed& operator=(const Listed&) = delete;

private:
    HttpSessionCore& m_core;
    std::set<CurlTransfer*>::iterator m_place;
};

/// Ends once the session closes, or after `limit` (0: not before).
Task<void> untilClosedOr(Core core, std::chrono::milliseconds limit)
{
    if (limit.count() == 0) {
        co_await core->closing.async_wait(asio::use_awaitable);
        co_return;
    }
    StrandTimer timer(core->strand, limit);
    auto timedOut = [](StrandTimer& waiting) -> Task<void> { co_await waiting.async_wait(asio::use_awaitable); };
    co_await firstOf(timedOut(core->closing), timedOut(timer));
}

Task<void> waitForPath(Core core, std::chrono::milliseconds limit)
{
    auto& path = *core->path;
    if (path.isUsable() || core->closed) // nobody wakes a wait that begins after the close
        co_return;
    auto ended = co_await firstOf(path.untilUsable(), untilClosedOr(core, limit));
    auto state = co_await asio::this_coro::cancellation_state;
    if (core->closed || state.cancelled() != asio::cancellation_type::none)
        throwCancelled();
    if (ended.index() == 1 || std::get<0>(ended).failure)
        throw TransportError(TransportError::Kind::noNetwork, QObject::tr("There is no network connection."));
}

/// Tells `transfer` of changes of the network. Ends only when cancelled.
Task<void> follow(Core core, CurlTransfer& transfer)
{
    co_await answerOf(core->path->follow([&] { transfer.networkChanged(*core->path); }));
    StrandTimer never(core->strand, StrandTimer::time_point::max()); // nothing is announced
    co_await never.async_wait(asio::use_awaitable);
}

Task<HttpResponse> perform(Core core, std::shared_ptr<CookieJar> jar, HttpRequest request)
{
    auto address = parseHttpAddress(request.url);
    if (!address)
        throw TransportError(TransportError::Kind::connect, QObject::tr("The address is not valid."));
    if (!address->loopback)
        co_await waitForPath(core, request.idleTimeout);
    if (core->closed)
        throwCancelled();
    CurlTransfer transfer(std::move(request), *address, jar, core->handles, *core->multi);
    Listed listed(*core, transfer);
    if (address->loopback) {
        co_await transfer.untilEnded();
    } else {
        auto ended = co_await firstOf(transfer.untilEnded(), follow(core, transfer));
        // A cancellation ends both, in either order.
        if (auto failure = std::visit([](const auto& outcome) { return outcome.failure; }, ended))
            std::rethrow_exception(failure);
    }
    auto answer = transfer.takeAnswer();
    if (jar && !answer.header("Set-Cookie").isNull())
        core->cookies->save();
    co_return answer;
}

} // namespace

HttpSessionOptions HttpSessionOptions::storage()
{
    return {.maxConnectionsPerHost = 2,
            .protocol = Protocol::http11,
            .uploadSlice = 512 << 10,
            .receiveSlice = 512 << 10,
            .tlsReadAhead = 128 << 10,
            .congestionControl = "bbr", // holds up where packets get lost far away
            .loopbackCongestionControl = "cubic"};
}

HttpSession::HttpSession(const Executor& executor, HttpSessionOptions options)
    : m_core(std::make_shared<HttpSessionCore>(executor, std::move(options)))
{}

HttpSession::~HttpSession()
{
    asio::post(m_core->strand, [core = m_core] {
        core->closed = true;
        core->closing.cancel();
        for (auto* transfer : core->inFlight)
            transfer->abandon();
    });
}

Task<HttpResponse> HttpSession::send(HttpRequest request)
{
    // Taken here: what is sent before the cookies are cleared goes with those of before, and what comes after without.
    auto jar = m_core->cookies ? m_core->cookies->jar() : nullptr;
    return runOn(m_core->strand, perform(m_core, std::move(jar), std::move(request)));
}

Executor HttpSession::strand() const
{
    return m_core->strand;
}

} // namespace palvera
