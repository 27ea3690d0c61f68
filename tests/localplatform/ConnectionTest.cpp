#include "PlatformHarness.h"

#include "localplatform/Server.h"

#include <boost/asio/connect.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>

#include <future>

namespace palvera {
namespace {

namespace asio = boost::asio;
using namespace std::chrono_literals;
using Kind = local::Fault::Kind;

constexpr qint64 size = 400'000, half = 150'000;

/// How a client hears of the end of a part: not at all while it waits, by a lost connection or by an answer.
enum class End { none, cut, answer };

const std::tuple<const char*, local::Fault, End, int> cases[] = {
    // with how many parts are stored
    {"nothing", {}, End::answer, 1},
    {"refused", {.kind = Kind::refuse}, End::cut, 0},
    {"cut before reading", {.kind = Kind::resetBeforeReading}, End::cut, 0},
    {"cut in the middle", {.kind = Kind::resetMidBody, .bytes = half}, End::cut, 0},
    {"stalled in the middle", {.kind = Kind::stallMidBody, .bytes = half}, End::none, 0},
    {"stalled after the body", {.kind = Kind::stallAfterBody}, End::none, 0},
    {"the answer lost", {.kind = Kind::loseAnswer}, End::cut, 1},
    {"answered, but too late", {.latency = 90s}, End::none, 1},
    {"refused with a status", {.kind = Kind::status}, End::answer, 0},
    {"a page instead", {.kind = Kind::html}, End::answer, 0},
    {"expired", {.kind = Kind::expired}, End::answer, 0},
};

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

TEST(ConnectionTest, endsAsAskedAndNeverKeepsTheServerFromStopping)
{
    for (const auto& [about, fault, end, stored] : cases) {
        SCOPED_TRACE(about);
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
        if (end != End::none)
            heard.wait();
        server.reset();
        EXPECT_EQ(silent.get(), "");
        EXPECT_EQ(heard.get().starts_with("HTTP/1.1 "), end == End::answer);
        EXPECT_EQ(harness.partsStored(), stored);
    }
}

} // namespace
} // namespace palvera
