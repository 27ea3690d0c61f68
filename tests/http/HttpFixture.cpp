#include "HttpFixture.h"

#include "async/RunOn.h"

#include <boost/asio/redirect_error.hpp>

#include <dlfcn.h>
#include <netdb.h>

#include <cstring>

namespace palvera {

namespace asio = boost::asio;

Sending::Sending(asio::thread_pool& pool, HttpClient& client, HttpRequest request)
    : m_strand(pool.get_executor()), m_ended(m_state->promise.get_future())
{
    auto completion = [state = m_state](std::exception_ptr failure, HttpResponse response) {
        if (failure)
            state->promise.set_exception(failure);
        else
            state->promise.set_value(std::move(response));
    };
    asio::co_spawn(m_strand, client.send(std::move(request)),
                   asio::bind_cancellation_slot(m_state->signal.slot(), std::move(completion)));
}

void Sending::cancel()
{
    asio::post(m_strand, [state = m_state] { state->signal.emit(asio::cancellation_type::terminal); });
}

HttpResponse Sending::wait()
{
    if (m_ended.wait_for(std::chrono::seconds(10)) != std::future_status::ready)
        throw std::runtime_error("the request did not end");
    return m_ended.get();
}

bool Sending::wasCancelled()
{
    try {
        wait();
        return false;
    } catch (...) {
        return isCancellation(std::current_exception());
    }
}

HttpFixture::~HttpFixture()
{
    m_pool.join();
}

HttpResponse HttpFixture::send(HttpRequest request, HttpSessionOptions options)
{
    HttpSession session(executor(), std::move(options));
    return send(session, std::move(request));
}

void HttpFixture::expectFailure(HttpRequest request, TransportError::Kind kind, const QString& text,
                                HttpSessionOptions options)
{
    try {
        auto response = send(std::move(request), std::move(options));
        ADD_FAILURE() << "answered " << response.status;
    } catch (const TransportError& error) {
        EXPECT_EQ(error.kind(), kind) << error.what();
        EXPECT_EQ(error.text().toStdString(), text.toStdString());
    }
}

std::function<std::chrono::steady_clock::time_point()> PassingTime::clock()
{
    return [this] {
        std::lock_guard guard(m_lock);
        ++m_count;
        m_asked.notify_all();
        return m_now;
    };
}

void PassingTime::pass(std::chrono::milliseconds duration)
{
    std::lock_guard guard(m_lock);
    m_now += duration;
}

void PassingTime::untilLookedAt()
{
    std::unique_lock lock(m_lock);
    m_asked.wait_for(lock, std::chrono::seconds(10), [this, before = m_count] { return m_count >= before + 8; });
}

FakeNetworkPath::FakeNetworkPath(Executor executor)
    : m_strand(executor), m_change(m_strand, asio::steady_timer::time_point::max())
{}

Task<void> FakeNetworkPath::untilUsable()
{
    auto change = [](FakeNetworkPath& path) -> Task<void> {
        path.waitedFor.open();
        boost::system::error_code woken;
        if (!path.m_usable)
            co_await path.m_change.async_wait(asio::redirect_error(asio::use_awaitable, woken));
    };
    co_await runOn(m_strand, change(*this));
}

void FakeNetworkPath::bringUp()
{
    asio::post(m_strand, [this] {
        m_usable = true;
        m_change.cancel();
    });
}

namespace names {

Gate& asked()
{
    static Gate gate;
    return gate;
}

Gate& letGo()
{
    static Gate gate;
    return gate;
}

} // namespace names

QByteArray patternedBody(qint64 size)
{
    QByteArray body(size, Qt::Uninitialized);
    quint32 state = 12'345;
    for (auto& byte : body) {
        state = state * 1'664'525 + 1'013'904'223;
        byte = char(state >> 24);
    }
    return body;
}

std::size_t BytesSource::read(qint64 offset, std::span<char> into)
{
    auto count = std::min(into.size(), std::size_t(m_bytes.size() - offset));
    std::memcpy(into.data(), m_bytes.constData() + offset, count);
    return count;
}

} // namespace palvera

/// Stands in front of the C library's own, for every library of the program.
extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* hints, addrinfo** result)
{
    auto asked = QByteArrayView(name ? name : "");
    if (asked == "slow.test") {
        palvera::names::asked().open();
        palvera::names::letGo().wait();
        return EAI_NONAME;
    }
    if (asked.endsWith(".test"))
        return EAI_NONAME;
    static auto* real = reinterpret_cast<decltype(&::getaddrinfo)>(::dlsym(RTLD_NEXT, "getaddrinfo"));
    return real(name, service, hints, result);
}
