#include "PlatformHarness.h"

#include "http/TransportError.h"
#include "localplatform/Server.h"
#include "support/SimulatedNetwork.h"
#include "support/Simulation.h"

#include <boost/asio/connect.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>

#include <future>

namespace palvera {
namespace {

namespace asio = boost::asio;
using namespace std::chrono_literals;
using Kind = local::Fault::Kind;
using End = TransportError::Kind;

/// What a client meets that sends a part of 400,000 bytes at 100,000 a second, with half a second more to the answer.
struct Case {
    const char* about;
    local::Fault fault;
    std::optional<End> end; ///< none when an answer comes
    std::chrono::milliseconds after;
    int stored = 0;
    bool listening = true;
    std::chrono::milliseconds total = 0ms;
};
constexpr qint64 size = 400'000, half = 150'000;

const Case cases[] = {
    {"nothing", {}, {}, 4500ms, 1},
    {"refused", {.kind = Kind::refuse}, End::connect, 0ms},
    {"cut before reading", {.kind = Kind::resetBeforeReading}, End::broken, 0ms},
    {"cut in the middle", {.kind = Kind::resetMidBody, .bytes = half}, End::broken, 1500ms},
    {"stalled in the middle", {.kind = Kind::stallMidBody, .bytes = half}, End::idle, 61'500ms},
    {"stalled after the body", {.kind = Kind::stallAfterBody}, End::idle, 64'000ms},
    {"the answer lost", {.kind = Kind::loseAnswer}, End::broken, 4500ms, 1},
    {"answered, but too late", {.latency = 90s}, End::idle, 64'000ms, 1},
    {"refused with a status", {.kind = Kind::status}, {}, 4500ms},
    {"a page instead", {.kind = Kind::html}, {}, 4500ms},
    {"expired", {.kind = Kind::expired}, {}, 4500ms},
    {"nobody listens", {}, End::connect, 0ms, 0, false},
    {"too long in all", {}, End::timedOut, 2500ms, 0, true, 2500ms},
};

TEST(ConnectionTest, takesItsExactTimeInSimulation)
{
    for (const auto& expected : cases) {
        SCOPED_TRACE(expected.about);
        Simulation simulation;
        local::PlatformHarness harness({});
        SimulatedNetwork network(harness.platform, simulation.clock,
                                 {.latency = 500ms, .bytesPerSecond = 1e5, .listening = expected.listening});
        harness.start(QByteArray::number(size));
        harness.platform.faults().add({.operation = local::Operation::put, .fault = expected.fault});
        HttpRequest request{.method = "PUT",
                            .url = "http://storage.test" + harness.partTarget(1, 1),
                            .body = QByteArray(size, 'x'),
                            .totalTimeout = expected.total,
                            .onSent = [&](qint64 bytes) { EXPECT_EQ(simulation.clock.elapsed(), bytes * 10us); }};
        std::optional<End> end;
        try {
            simulation.run(network.client()->send(std::move(request)));
        } catch (const TransportError& error) {
            end = error.kind();
        }
        EXPECT_EQ(end, expected.end);
        EXPECT_EQ(simulation.clock.elapsed(), expected.after);
        EXPECT_EQ(harness.partsStored(), expected.stored);
        EXPECT_EQ(network.seen()[0].ended - network.seen()[0].at, expected.after);
        EXPECT_EQ(harness.platform.violations(), QStringList());
    }
}

asio::ip::tcp::socket connectTo(asio::io_context& io, const QByteArray& address)
{
    asio::ip::tcp::socket socket(io);
    socket.connect({asio::ip::address_v4::loopback(), address.mid(address.lastIndexOf(':') + 1).toUShort()});
    return socket;
}

/// Says `text`, then listens until the connection ends, and gives what it heard.
std::string talk(asio::ip::tcp::socket socket, const QByteArray& text)
{
    boost::system::error_code ignored; // cut while it was speaking or listening
    asio::write(socket, asio::buffer(text.constData(), std::size_t(text.size())), ignored);
    std::string heard;
    asio::read(socket, asio::dynamic_buffer(heard), ignored);
    return heard;
}

TEST(ConnectionTest, endsTheSameWayOnSocketsAndNeverKeepsTheServerFromStopping)
{
    for (const auto& [about, fault, end, after, stored, listening, total] : cases) {
        SCOPED_TRACE(about);
        if (!listening || total > 0ms) // the client's own affair
            continue;
        local::PlatformHarness harness({});
        harness.start(QByteArray::number(size));
        harness.platform.faults().add({.operation = local::Operation::put, .fault = fault});
        std::optional<local::Server> server{std::in_place, harness.platform, local::ServerOptions{}};
        asio::io_context io;
        auto silent = std::async(std::launch::async, talk, connectTo(io, server->storageAddress()), QByteArray());
        auto heard =
            std::async(std::launch::async, talk, connectTo(io, server->storageAddress()),
                       "PUT " + harness.partTarget(1, 1) +
                           " HTTP/1.1\r\nHost: x\r\nConnection: close\r\nContent-Length: " + QByteArray::number(size) +
                           "\r\n\r\n" + QByteArray(size, 'x'));
        while (harness.platform.state()["requests"].toObject()["put"].toInt() == 0 || harness.partsStored() < stored)
            std::this_thread::yield();
        if (end != End::idle) // which nobody here waits for
            heard.wait();
        server.reset();
        EXPECT_EQ(silent.get(), "");
        EXPECT_EQ(heard.get().starts_with("HTTP/1.1 "), !end);
        EXPECT_EQ(harness.partsStored(), stored);
    }
}

} // namespace
} // namespace palvera
