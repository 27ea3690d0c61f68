#pragma once

#include "async/Event.h"
#include "async/RunOn.h"
#include "http/HttpSession.h"
#include "http/NetworkPath.h"
#include "http/TransportError.h"
#include "support/Files.h"
#include "support/LoopbackServer.h"
#include "support/QtPrinting.h"

#include <boost/asio/bind_cancellation_slot.hpp>
#include <boost/asio/cancellation_signal.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/strand.hpp>
#include <boost/asio/thread_pool.hpp>
#include <boost/asio/use_future.hpp>

#include <future>

namespace palvera {

using namespace std::chrono_literals;

namespace asio = boost::asio;

/// A request under way that the test can cancel from its own thread.
class Sending {
public:
    Sending(asio::thread_pool& pool, HttpClient& client, HttpRequest request)
        : m_strand(pool.get_executor()),
          m_ended(asio::co_spawn(m_strand, client.send(std::move(request)),
                                 asio::bind_cancellation_slot(m_signal.slot(), asio::use_future)))
    {}
    ~Sending()
    {
        if (m_ended.valid()) {
            cancel();
            m_ended.wait();
        }
        asio::post(m_strand, asio::use_future([] {})).wait(); // nobody refers to the signal any more
    }

    void cancel()
    {
        asio::post(m_strand, [this] { m_signal.emit(asio::cancellation_type::terminal); });
    }
    /// How it ended; throws what the request threw. Fails the test when that takes ten seconds.
    HttpResponse wait()
    {
        if (m_ended.wait_for(10s) != std::future_status::ready)
            throw std::runtime_error("the request did not end");
        return m_ended.get();
    }
    bool wasCancelled()
    {
        try {
            wait();
            return false;
        } catch (...) {
            return isCancellation(std::current_exception());
        }
    }

private:
    asio::strand<asio::thread_pool::executor_type> m_strand;
    asio::cancellation_signal m_signal; // touched on m_strand only
    std::future<HttpResponse> m_ended;
};

/// A path to the network that a test may take away and bring up.
class FakeNetworkPath final : public NetworkPath {
public:
    explicit FakeNetworkPath(const Executor& executor) : m_strand(executor) {}
    bool isUsable() const override { return usable; }
    Task<void> untilUsable() override
    {
        waitedFor.release();
        return runOn(m_strand, m_change.wait());
    }
    void bringUp()
    {
        usable = true;
        asio::post(m_strand, [this] { m_change.set(); });
    }

    std::atomic<bool> usable = true;
    Gate waitedFor{0}; ///< opens when somebody waits for the path

private:
    asio::strand<Executor> m_strand;
    Event m_change{m_strand}; // m_strand only
};

/// Sessions on two real threads, against servers on loopback.
class HttpFixture : public testing::Test {
protected:
    ~HttpFixture() override { m_pool.join(); }

    Sending start(HttpClient& client, HttpRequest request) { return {m_pool, client, std::move(request)}; }
    HttpResponse send(HttpClient& client, HttpRequest request) { return start(client, std::move(request)).wait(); }
    /// Sends on a session of its own and waits.
    HttpResponse send(HttpRequest request, HttpSessionOptions options = {})
    {
        HttpSession session(executor(), std::move(options));
        return send(session, std::move(request));
    }
    void expectFailure(HttpRequest request, TransportError::Kind kind, const QString& text,
                       HttpSessionOptions options = {})
    {
        try {
            ADD_FAILURE() << "answered " << send(std::move(request), std::move(options)).status;
        } catch (const TransportError& error) {
            EXPECT_EQ(error.kind(), kind);
            EXPECT_EQ(error.text(), text);
        }
    }
    Executor executor() { return m_pool.get_executor(); }

    asio::thread_pool m_pool{2};
    std::shared_ptr<FakeNetworkPath> m_path = std::make_shared<FakeNetworkPath>(executor());
};

/// The time by which a session counts its time-outs. It passes as servers' scripts say. Any thread.
class PassingTime {
public:
    /// What `HttpSessionOptions::now` takes. Refers to this object.
    std::function<std::chrono::steady_clock::time_point()> clock()
    {
        return [this] {
            std::lock_guard guard(m_lock);
            ++m_count;
            m_asked.notify_all();
            return m_now;
        };
    }
    void pass(std::chrono::milliseconds duration)
    {
        std::lock_guard guard(m_lock);
        m_now += duration;
    }
    /// Waits until every session that uses this time must have compared it with its limits, which asks for it two or
    /// three times. Gives up after ten seconds, so that a failing test ends.
    void untilLookedAt()
    {
        std::unique_lock lock(m_lock);
        m_asked.wait_for(lock, 10s, [this, before = m_count] { return m_count >= before + 8; });
    }

private:
    std::mutex m_lock;
    std::condition_variable m_asked;
    std::chrono::steady_clock::time_point m_now{};
    int m_count = 0;
};

/// The machine's resolver as these tests have it knows no name that ends in ".test" and takes its time to say so of
/// "slow.test": until the second gate is opened, once for each that asks. The gates are never taken down, as nobody
/// waits for the thread on which curl asks: it may still be in one of them when the program's globals go.
inline Gate& slowNameAsked = *new Gate(0);
inline Gate& slowNameLetGo = *new Gate(0);

/// Lets so much time pass at once for whoever asks the machine's steady clock.
void elapse(std::chrono::seconds duration);

/// A body in memory, to send or to receive: it takes up to `most` bytes.
struct Bytes : BodySource, BodySink {
    explicit Bytes(QByteArray body, qint64 room = 0) : bytes(std::move(body)), most(room) {}
    qint64 size() const override { return bytes.size(); }
    std::size_t read(qint64 offset, std::span<char> into) override
    {
        return std::string_view(bytes.constData(), std::size_t(size()))
            .copy(into.data(), into.size(), std::size_t(offset));
    }
    qint64 room() const override { return most; }
    void take(std::span<const char> more) override { bytes.append(more.data(), qsizetype(more.size())); }

    QByteArray bytes;
    const qint64 most;
};

} // namespace palvera
