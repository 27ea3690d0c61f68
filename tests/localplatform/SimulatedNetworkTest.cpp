#include "support/SimulatedNetwork.h"

#include "PlatformHarness.h"
#include "support/Simulation.h"

#include "async/Failure.h"
#include "async/TaskGroup.h"
#include "http/TransportError.h"

#include <boost/asio/bind_cancellation_slot.hpp>
#include <boost/asio/cancellation_signal.hpp>

#include <gmock/gmock.h>

namespace palvera {
namespace {

using namespace std::chrono_literals;
using local::Fault;
using local::Operation;

/// 1000 bytes a second: a part of 4000 bytes takes four seconds, and its answer half a second more.
class SimulatedNetworkTest : public testing::Test {
protected:
    SimulatedNetworkTest() { network.signIn(); }

    HttpRequest post(const QByteArray& path, const QJsonObject& body)
    {
        return {.method = "POST",
                .url = "http://platform.test/api/" + path,
                .headers = {{"Accept", "application/json"}, {"Content-Type", "application/json"}},
                .body = QJsonDocument(body).toJson(QJsonDocument::Compact)};
    }

    QJsonObject ask(const QByteArray& path, const QJsonObject& body)
    {
        return QJsonDocument::fromJson(simulation.run(client->send(post(path, body))).body).object();
    }

    HttpRequest put()
    {
        const auto base = local::sampleRow + "/transfer";
        auto started = ask(base + "/start", {{QStringLiteral("filename"), QStringLiteral("a.mov")},
                                             {QStringLiteral("contentType"), QStringLiteral("video/quicktime")},
                                             {QStringLiteral("byteSize"), 4000}});
        started.remove(QStringLiteral("partSize"));
        started.remove(QStringLiteral("partCount"));
        started[QStringLiteral("from")] = 1;
        started[QStringLiteral("to")] = 1;
        auto url = ask(base + "/parts", started)[QStringLiteral("urls")][0][QStringLiteral("url")].toString();
        return {.method = "PUT", .url = url.toLatin1(), .body = QByteArray(4000, 'x')};
    }

    Simulation simulation;
    local::Platform platform{{}, [this] { return simulation.clock.wallNow(); }};
    SimulatedNetwork network{platform, simulation.clock, {.latency = 500ms, .bytesPerSecond = 1000}};
    std::unique_ptr<HttpClient> client = network.client();
};

TEST_F(SimulatedNetworkTest, aBodyTakesTheTimeOfItsBytesAndReportsThem)
{
    auto request = put();
    auto began = simulation.clock.now();
    std::map<qint64, Clock::Moment> sent;
    request.onSent = [&](qint64 bytes) { sent[bytes] = simulation.clock.now(); };
    auto answer = simulation.run(client->send(std::move(request)));
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(simulation.clock.now() - began, 4500ms);
    EXPECT_EQ(sent.at(1000) - began, 1s);
    EXPECT_EQ(sent.at(4000) - began, 4s);
    auto seen = network.seen(Operation::put).back();
    EXPECT_EQ(seen.part, 1);
    EXPECT_EQ(seen.at, began);
    EXPECT_EQ(seen.status, 200);
    EXPECT_TRUE(platform.violations().isEmpty()) << platform.violations().join(u'\n').toStdString();
}

TEST_F(SimulatedNetworkTest, faultsOfAPartAreFeltAtTheirTime)
{
    struct Case {
        Fault fault;
        bool listening;
        TransportError::Kind kind;
        std::chrono::milliseconds after;
        int stored;
    };
    const Case cases[] = {
        {{}, false, TransportError::Kind::connect, 0ms, 0},
        {{.kind = Fault::Kind::refuse}, true, TransportError::Kind::connect, 0ms, 0},
        {{.kind = Fault::Kind::resetBeforeReading}, true, TransportError::Kind::broken, 0ms, 0},
        {{.kind = Fault::Kind::resetMidBody, .bytes = 1500}, true, TransportError::Kind::broken, 1500ms, 0},
        {{.kind = Fault::Kind::stallMidBody, .bytes = 1500}, true, TransportError::Kind::idle, 61'500ms, 0},
        {{.kind = Fault::Kind::stallAfterBody}, true, TransportError::Kind::idle, 64'000ms, 0},
        {{.kind = Fault::Kind::loseAnswer}, true, TransportError::Kind::broken, 4500ms, 1},
        {{.latency = 90s}, true, TransportError::Kind::idle, 64'000ms, 1},
    };
    for (const auto& [fault, listening, kind, after, stored] : cases) {
        auto request = put();
        platform.faults().replace({{.operation = Operation::put, .fault = fault}});
        network.conditions.listening = listening;
        auto began = simulation.clock.now();
        auto outcome = simulation.run(outcomeOf(client->send(std::move(request))));
        network.conditions.listening = true;
        try {
            ASSERT_TRUE(outcome.failure) << "fault " << static_cast<int>(fault.kind);
            std::rethrow_exception(outcome.failure);
        } catch (const TransportError& error) {
            EXPECT_EQ(error.kind(), kind) << "fault " << static_cast<int>(fault.kind);
        }
        EXPECT_EQ(simulation.clock.now() - began, after) << "fault " << static_cast<int>(fault.kind);
        auto upload = platform.state()[QStringLiteral("uploads")].toArray().last();
        EXPECT_EQ(upload[QStringLiteral("parts")].toObject().size(), stored);
    }
}

TEST_F(SimulatedNetworkTest, theTotalTimeOutCutsAMovingBody)
{
    auto request = put();
    request.totalTimeout = 2500ms;
    auto began = simulation.clock.now();
    auto outcome = simulation.run(outcomeOf(client->send(std::move(request))));
    EXPECT_THROW(std::rethrow_exception(outcome.failure), TransportError);
    EXPECT_EQ(simulation.clock.now() - began, 2500ms);
}

TEST_F(SimulatedNetworkTest, aStallWithoutTimeOutLastsUntilItIsCancelled)
{
    auto request = put();
    request.idleTimeout = 0ms;
    platform.faults().add({.operation = Operation::put, .fault = {.kind = Fault::Kind::stallMidBody, .bytes = 10}});
    boost::asio::cancellation_signal stop;
    std::exception_ptr failure;
    bool ended = false;
    boost::asio::co_spawn(simulation.executor(), client->send(std::move(request)),
                          boost::asio::bind_cancellation_slot(stop.slot(), [&](std::exception_ptr why, HttpResponse) {
                              failure = why;
                              ended = true;
                          }));
    EXPECT_THROW(simulation.runUntil([&] { return ended; }), std::runtime_error); // it waits for ever
    stop.emit(boost::asio::cancellation_type::terminal);
    simulation.runUntil([&] { return ended; });
    EXPECT_TRUE(isCancellation(failure));
    EXPECT_FALSE(network.seen(Operation::put).back().inFlight);
}

TEST_F(SimulatedNetworkTest, aDownloadTakesTimeAndHasItsOwnFaults)
{
    HttpRequest listing{.url =
                            "http://platform.test/api/orgs/org-northlight/bin/download?key=Reel%20001%20of%20230%2Emov",
                        .headers = {{"Accept", "application/json"}}};
    auto answer = simulation.run(client->send(listing)).body;
    HttpRequest get{.url = QJsonDocument::fromJson(answer)[QStringLiteral("url")].toString().toLatin1(),
                    .headers = {{"Range", "bytes=1000-2999"}}};
    auto began = simulation.clock.now();
    auto chunk = simulation.run(client->send(get));
    EXPECT_EQ(chunk.status, 206);
    EXPECT_EQ(chunk.header("content-range"), "bytes 1000-2999/100000");
    EXPECT_EQ(chunk.body.size(), 2000);
    EXPECT_EQ(simulation.clock.now() - began, 2500ms);

    platform.faults().replace(
        {{.operation = Operation::get, .fault = {.kind = Fault::Kind::resetMidBody, .bytes = 300}},
         {.operation = Operation::get, .fault = {.kind = Fault::Kind::shortBody, .bytes = 500}}});
    began = simulation.clock.now();
    EXPECT_TRUE(simulation.run(outcomeOf(client->send(get))).failure);
    EXPECT_EQ(simulation.clock.now() - began, 800ms);
    platform.faults().replace({{.operation = Operation::get, .fault = {.kind = Fault::Kind::shortBody, .bytes = 500}}});
    EXPECT_EQ(simulation.run(client->send(get)).body, chunk.body.left(1500));
    get.answerLimit = 100;
    EXPECT_TRUE(simulation.run(outcomeOf(client->send(get))).failure);
}

TEST_F(SimulatedNetworkTest, countsHowManyRequestsOverlapped)
{
    auto request = put();
    std::vector<Task<void>> sends;
    auto send = [](HttpClient& through, HttpRequest one) -> Task<void> { co_await through.send(std::move(one)); };
    for (int i = 0; i < 3; ++i)
        sends.push_back(send(*client, request));
    simulation.run(joinAll(std::move(sends)));
    EXPECT_EQ(network.mostInFlight(Operation::put), 3);
    EXPECT_EQ(network.mostInFlight(Operation::start), 1);
}

} // namespace
} // namespace palvera
