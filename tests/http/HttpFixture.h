#pragma once

#include "http/HttpSession.h"
#include "http/NetworkPath.h"
#include "http/TransportError.h"
#include "support/LoopbackServer.h"

#include <boost/asio/bind_cancellation_slot.hpp>
#include <boost/asio/cancellation_signal.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/strand.hpp>
#include <boost/asio/thread_pool.hpp>
#include <boost/asio/use_future.hpp>

#include <gmock/gmock.h>

#include <future>

namespace palvera {

/// A request under way that the test can cancel from its own thread.
class Sending {
public:
    Sending(boost::asio::thread_pool& pool, HttpClient& client, HttpRequest request);

    void cancel();
    /// How it ended; throws what the request threw. Fails the test when that takes ten seconds.
    HttpResponse wait();
    bool wasCancelled();

private:
    struct State {
        boost::asio::cancellation_signal signal;
        std::promise<HttpResponse> promise;
    };
    boost::asio::strand<boost::asio::thread_pool::executor_type> m_strand;
    std::shared_ptr<State> m_state = std::make_shared<State>(); // its signal is touched on m_strand only
    std::future<HttpResponse> m_ended;
};

/// Sessions on two real threads, against servers on loopback.
class HttpFixture : public testing::Test {
protected:
    ~HttpFixture() override;

    Sending start(HttpClient& client, HttpRequest request) { return {m_pool, client, std::move(request)}; }
    /// Sends on a session of its own and waits.
    HttpResponse send(HttpRequest request, HttpSessionOptions options = {});
    HttpResponse send(HttpClient& client, HttpRequest request) { return start(client, std::move(request)).wait(); }
    void expectFailure(HttpRequest request, TransportError::Kind kind, const QString& text,
                       HttpSessionOptions options = {});
    Executor executor() { return m_pool.get_executor(); }

    boost::asio::thread_pool m_pool{2};
};

/// The time by which a session counts its time-outs. It passes as servers' scripts say. Any thread.
class PassingTime {
public:
    /// What `HttpSessionOptions::now` takes. Refers to this object.
    std::function<std::chrono::steady_clock::time_point()> clock();
    void pass(std::chrono::milliseconds duration);
    /// Waits until every session that uses this time must have compared it with its limits, which asks for it two or
    /// three times. Gives up after ten seconds, so that a failing test ends.
    void untilLookedAt();

private:
    std::mutex m_lock;
    std::condition_variable m_asked;
    std::chrono::steady_clock::time_point m_now{};
    int m_count = 0;
};

/// A path that a test brings up.
class FakeNetworkPath final : public NetworkPath {
public:
    explicit FakeNetworkPath(Executor executor);
    bool isUsable() const override { return m_usable; }
    Task<void> untilUsable() override;
    void bringUp();
    Gate waitedFor; ///< opens when somebody waits for the path

private:
    std::atomic<bool> m_usable = false;
    boost::asio::strand<Executor> m_strand;
    boost::asio::steady_timer m_change; // m_strand only
};

/// What the machine's resolver does with names that end in ".test": "unknown.test" does not exist, and "slow.test" is
/// looked up until the test lets go. Anything else is looked up as ever.
namespace names {
/// Opens when somebody asks for "slow.test".
Gate& asked();
/// Lets the look-up of "slow.test" end, for this test and those after it.
Gate& letGo();
} // namespace names

/// A body of `size` bytes in which every position can be told by its neighbours.
QByteArray patternedBody(qint64 size);

/// A body source over bytes in memory.
class BytesSource : public BodySource {
public:
    explicit BytesSource(QByteArray bytes) : m_bytes(std::move(bytes)) {}
    qint64 size() const override { return m_bytes.size(); }
    std::size_t read(qint64 offset, std::span<char> into) override;

private:
    QByteArray m_bytes;
};

/// Keeps the first `room` bytes of a body in memory.
class BytesSink : public BodySink {
public:
    explicit BytesSink(qint64 room) : m_room(room) {}
    qint64 room() const override { return m_room; }
    void take(std::span<const char> more) override { bytes.append(more.data(), qsizetype(more.size())); }

    QByteArray bytes;

private:
    const qint64 m_room;
};

} // namespace palvera
