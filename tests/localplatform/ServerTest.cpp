#include "localplatform/Server.h"

#include "PlatformHarness.h"

#include <boost/asio/connect.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/write.hpp>

#include <gmock/gmock.h>

#include <chrono>

namespace palvera::local {
namespace {

namespace asio = boost::asio;
using asio::ip::tcp;
using testing::HasSubstr;
using testing::StartsWith;

/// A blocking client that says exactly what it is told.
class RawClient {
public:
    explicit RawClient(const QByteArray& address) : m_socket(m_io)
    {
        auto port = address.mid(address.lastIndexOf(':') + 1).toUShort();
        m_socket.connect({asio::ip::address_v4::loopback(), port});
    }

    void say(const QByteArray& text)
    {
        asio::write(m_socket, asio::buffer(text.constData(), std::size_t(text.size())));
    }

    /// The head and the body of the next answer; empty when the connection ends instead.
    std::string answer()
    {
        boost::system::error_code problem;
        auto head = asio::read_until(m_socket, asio::dynamic_buffer(m_received), "\r\n\r\n", problem);
        if (problem)
            return {};
        auto lengthAt = m_received.find("Content-Length: ") + 16;
        auto whole = head + std::stoul(m_received.substr(lengthAt));
        if (m_received.size() < whole)
            asio::read(m_socket, asio::dynamic_buffer(m_received), asio::transfer_exactly(whole - m_received.size()),
                       problem);
        auto text = m_received.substr(0, whole);
        m_received.erase(0, whole);
        return text;
    }

private:
    asio::io_context m_io;
    tcp::socket m_socket;
    std::string m_received;
};

class ServerTest : public testing::Test {
protected:
    /// Starts an upload of three parts of `partSize` bytes.
    UploadSteps started()
    {
        auto upload = rowUpload(harness, QStringLiteral("a.mov"), QByteArray(3 * partSize, 'x'));
        upload.start();
        return upload;
    }

    QByteArray put(const UploadSteps& upload, int part)
    {
        return "PUT " + PlatformHarness::targetOf(upload.urlOf(part)) +
               " HTTP/1.1\r\nHost: x\r\nContent-Length: " + QByteArray::number(partSize) + "\r\n\r\n";
    }

    static constexpr int partSize = 300'000; // more than one read brings
    PlatformHarness harness{{.partSize = partSize}};
    std::optional<Server> server{std::in_place, harness.platform, ServerOptions{}};
};

TEST_F(ServerTest, partsGoUpAndTheFileComesDownOnOneConnection)
{
    auto upload = started();
    RawClient storage(server->storageAddress());
    for (int part = 1; part <= 3; ++part) {
        storage.say(put(upload, part) + upload.bytesOf(part));
        auto answer = storage.answer();
        ASSERT_THAT(answer, AllOf(StartsWith("HTTP/1.1 200 OK\r\n"), HasSubstr("\r\nETag: \"")));
        auto from = answer.find('"') + 1;
        upload.tags[part] = QByteArray::fromStdString(answer.substr(from, answer.find('"', from) - from));
    }
    upload.complete();
    upload.file(sampleRow);
    auto url = harness.get(sampleRow + "/asset-url?object=" + escapeAll(upload.object.toUtf8())).text("url");
    storage.say("GET " + PlatformHarness::targetOf(url) + " HTTP/1.1\r\nHost: x\r\nRange: bytes=299999-600000\r\n\r\n");
    EXPECT_THAT(storage.answer(), AllOf(StartsWith("HTTP/1.1 206"), HasSubstr("bytes 299999-600000/900000\r\n"),
                                        testing::EndsWith("\r\n\r\n" + std::string(300'002, 'x'))));
    EXPECT_EQ(violationsOf(harness), "");
}

TEST_F(ServerTest, theServiceAnswersAndKeepsTheConnection)
{
    RawClient service(server->serviceAddress());
    for (int i = 0; i < 2; ++i) {
        service.say("GET /api/auth/config HTTP/1.1\r\nHost: x\r\nAccept: application/json\r\n\r\n");
        EXPECT_THAT(service.answer(), AllOf(StartsWith("HTTP/1.1 200"), HasSubstr("\"environment\":\"local\"")));
    }
    service.say("GET /local/state HTTP/1.1\r\nHost: x\r\n\r\n");
    EXPECT_THAT(service.answer(), HasSubstr("\"config\": 2"));
    service.say("GET /sign-in?native=1 HTTP/1.1\r\nHost: x\r\nConnection: close\r\n\r\n");
    EXPECT_THAT(service.answer(), HasSubstr("text/html"));
    EXPECT_EQ(service.answer(), "");
    EXPECT_EQ(violationsOf(harness), "");
}

TEST_F(ServerTest, cutsEndTheConnectionAndLostAnswersAreActedOn)
{
    struct Case {
        Fault fault;
        int stored;
    };
    const Case cases[] = {{{.kind = Fault::Kind::resetBeforeReading}, 0},
                          {{.kind = Fault::Kind::resetMidBody, .bytes = partSize / 2}, 0},
                          {{.kind = Fault::Kind::loseAnswer}, 1}};
    for (const auto& [fault, stored] : cases) {
        auto upload = started();
        harness.platform.faults().replace({{.operation = Operation::put, .fault = fault}});
        RawClient storage(server->storageAddress());
        try {
            storage.say(put(upload, 1) + upload.bytesOf(1));
        } catch (const boost::system::system_error&) { // cut while it was sending
        }
        EXPECT_EQ(storage.answer(), "");
        auto state = harness.platform.state()[QStringLiteral("uploads")].toArray().last();
        EXPECT_EQ(state[QStringLiteral("parts")].toObject().size(), stored);
    }
}

TEST_F(ServerTest, stopsAtOnceWhileConnectionsAreStalled)
{
    harness.platform.faults().add({.operation = Operation::put, .fault = {.kind = Fault::Kind::stallMidBody}});
    harness.platform.faults().add({.operation = Operation::me, .fault = {.latency = std::chrono::hours(1)}});
    auto upload = started();
    RawClient stalled(server->storageAddress()), waiting(server->serviceAddress()), silent(server->storageAddress());
    stalled.say(put(upload, 1) + upload.bytesOf(1));
    waiting.say("GET /api/me HTTP/1.1\r\nHost: x\r\nAccept: application/json\r\n\r\n");
    while (harness.platform.state()[QStringLiteral("requests")].toObject().size() < 4) // until both have been met
        std::this_thread::yield();
    auto began = std::chrono::steady_clock::now();
    server.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(2));
    EXPECT_EQ(stalled.answer(), "");
    EXPECT_EQ(waiting.answer(), "");
    EXPECT_EQ(silent.answer(), "");
}

} // namespace
} // namespace palvera::local
