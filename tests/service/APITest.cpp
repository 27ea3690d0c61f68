#include "ServiceTest.h"

#include "http/TransportError.h"
#include "service/Organisations.h"
#include "service/SignInRecords.h"

#include <boost/asio/bind_cancellation_slot.hpp>
#include <boost/asio/cancellation_signal.hpp>

#include <thread>

namespace palvera {
namespace {

using namespace std::chrono_literals;

using APITest = ServiceTest;

TEST_F(APITest, servesTheSiteUnlessTheEnvironmentNamesAnAddress)
{
    for (const char* ignored : {"", "not an address", "ftp://host/api", "localhost:8080"}) {
        const ScopedVariable variable("PV_API", ignored);
        api.setSite(Site::live);
        EXPECT_EQ(api.makeURL("me"), baseURL(Site::live).toUtf8() + "/me") << ignored;
        api.setSite(Site::qa);
        EXPECT_EQ(api.makeURL("me"), baseURL(Site::qa).toUtf8() + "/me") << ignored;
    }
    {
        const ScopedVariable variable("PV_API", "http://127.0.0.1:8080/api");
        EXPECT_EQ(api.makeURL("me"), "http://127.0.0.1:8080/api/me");
        api.setSite(Site::live);
        EXPECT_EQ(api.makeURL("me"), "http://127.0.0.1:8080/api/me");
        EXPECT_EQ(api.site(), Site::live);
    }
    const ScopedVariable variable("PV_API", {});
    EXPECT_EQ(api.makeURL("me"), baseURL(Site::live).toUtf8() + "/me");
}

TEST_F(APITest, theSignInPageStandsAtTheHostOfTheService)
{
    const struct {
        const char* base;
        const char* page;
    } cases[] = {
        {"https://host/api", "https://host/sign-in?native=1"},
        {"http://127.0.0.1:8080", "http://127.0.0.1:8080/sign-in?native=1"},
        {"https://host/a/b/?c=d#e", "https://host/sign-in?native=1"},
    };
    for (const auto& each : cases) {
        const ScopedVariable variable("PV_API", each.base);
        EXPECT_EQ(api.signInPageURL(), each.page);
    }
}

TEST_F(APITest, asksForJsonAndSaysWhenItSendsSome)
{
    client.answer(200, "whatever it says");
    client.answer(204);
    EXPECT_EQ(simulation.run(api.send("a b", "GET")), "whatever it says");
    EXPECT_EQ(lastRequest(), "GET https://service.test/api/a%20b");
    EXPECT_EQ(client.requests().back().headers, HttpHeaders({{"Accept", "application/json"}}));
    EXPECT_EQ(lastBody(), "");
    EXPECT_EQ(client.requests().back().idleTimeout, 60s);

    EXPECT_EQ(simulation.run(api.send("a", "POST", QJsonObject{{"b", "c/d"}})), "");
    EXPECT_EQ(lastRequest(), "POST https://service.test/api/a");
    EXPECT_EQ(client.requests().back().headers,
              HttpHeaders({{"Accept", "application/json"}, {"Content-Type", "application/json"}}));
    EXPECT_EQ(lastBody(), R"({"b":"c/d"})");
}

TEST_F(APITest, everyOtherStatusIsAnError)
{
    const struct {
        int status;
        const char* body;
        const char* message;
        std::optional<QString> code;
    } cases[] = {
        {404, R"({"message":"Not found","error":"not_found"})", "Not found", "not_found"},
        {409, R"({"message":"Twice","other":"x"})", "Twice", {}},
        {500, "<html>", "The platform answered 500.", {}},
        {502, "", "The platform answered 502.", {}},
        {400, R"({"message":"Bad","error":"bad","line":1})", "The platform answered 400.", {}},
        {400, R"({"message":"Bad","detail":null})", "The platform answered 400.", {}},
        {400, R"({"error":"bad"})", "The platform answered 400.", "bad"},
        {400, R"({"message":""})", "", {}},
        {400, R"(["message"])", "The platform answered 400.", {}},
        {401, "{}", "The platform answered 401.", {}},
        {302, "", "The platform answered 302.", {}},
        {199, "", "The platform answered 199.", {}},
        {300, "", "The platform answered 300.", {}},
    };
    for (const auto& each : cases) {
        client.answer(each.status, each.body);
        const auto error = failureOf<APIError>(api.send("me", "GET"));
        EXPECT_EQ(error.status(), each.status);
        EXPECT_EQ(error.message(), each.message) << each.body;
        EXPECT_EQ(error.code(), each.code) << each.body;
    }
}

TEST_F(APITest, statusesFrom200To299AreAnswers)
{
    for (const int status : {200, 201, 299}) {
        client.answer(status, "{}");
        EXPECT_EQ(simulation.run(api.send("me", "GET")), "{}") << status;
    }
}

TEST_F(APITest, aTransportFailurePassesThrough)
{
    client.fail(std::make_exception_ptr(TransportError(TransportError::Kind::tls, "No trust.")));
    const auto error = failureOf<TransportError>(api.fetch<Orgs>("orgs"));
    EXPECT_EQ(error.kind(), TransportError::Kind::tls);
    EXPECT_EQ(error.text(), "No trust.");
}

TEST_F(APITest, fetchDecodesTheWholeAnswer)
{
    client.answer(200, R"({"orgs":[{"id":"o","name":"N"}]})");
    EXPECT_EQ(simulation.run(api.fetch<Orgs>("orgs")).orgs, QList<Org>({{.id = "o", .name = "N"}}));
    client.answer(200, R"({"orgs":[{"id":"o"}]})");
    EXPECT_EQ(failureOf<DecodingError>(api.fetch<Orgs>("orgs")).key(), "orgs[0].name");
    client.answer(200, "<html>");
    EXPECT_EQ(failureOf<DecodingError>(api.fetch<Orgs>("orgs")).key(), "");
}

TEST_F(APITest, postIgnoresWhatTheAnswerHoldsButNotItsStatus)
{
    client.answer(200, "<html>");
    simulation.run(api.post("auth/login"));
    EXPECT_EQ(lastRequest(), "POST https://service.test/api/auth/login");
    client.answer(403);
    EXPECT_EQ(failureOf<APIError>(api.post("auth/login")).status(), 403);
}

TEST_F(APITest, requestsOverlap)
{
    client.latency = 2s;
    client.handler = [](const HttpRequest&) { return HttpResponse{.status = 200}; };
    for (int count = 0; count < 3; ++count)
        simulation.start(api.post("a"));
    simulation.run(api.post("b"));
    simulation.settle();
    EXPECT_EQ(client.mostInFlight(), 4);
    EXPECT_EQ(simulation.clock.elapsed(), 2s);
}

TEST_F(APITest, cancellingCutsTheRequestOff)
{
    client.latency = 1h;
    boost::asio::cancellation_signal stop;
    std::exception_ptr failure;
    boost::asio::co_spawn(
        simulation.executor(), api.post("slow"),
        boost::asio::bind_cancellation_slot(stop.slot(), [&](std::exception_ptr ended) { failure = ended; }));
    simulation.runUntil([&] { return client.inFlight() == 1; });
    stop.emit(boost::asio::cancellation_type::terminal);
    simulation.settle();
    EXPECT_TRUE(isCancellation(failure));
    EXPECT_EQ(client.inFlight(), 0);
    EXPECT_EQ(simulation.clock.elapsed(), 0s);
}

/// Remembers on which thread it was decoded.
struct Witness {
    std::thread::id thread;

    static Witness fromJson(const QJsonObject&) { return {.thread = std::this_thread::get_id()}; }
};

TEST_F(APITest, decodesOnItsOwnExecutor)
{
    boost::asio::thread_pool engine(1);
    API elsewhere({.client = client, .executor = engine.get_executor()});
    client.answer(200, "{}");
    boost::asio::io_context caller;
    std::thread::id decodedOn;
    std::thread::id resumedOn;
    boost::asio::co_spawn(caller, elsewhere.fetch<Witness>("me"), [&](std::exception_ptr failure, Witness witness) {
        EXPECT_EQ(failure, nullptr);
        decodedOn = witness.thread;
        resumedOn = std::this_thread::get_id();
    });
    caller.run();
    engine.join();
    EXPECT_EQ(resumedOn, std::this_thread::get_id());
    EXPECT_NE(decodedOn, std::this_thread::get_id());
    EXPECT_NE(decodedOn, std::thread::id());
}

TEST_F(APITest, signingOutForgetsTheCookiesWhateverThePlatformSays)
{
    client.answer(200);
    simulation.run(api.signOut());
    EXPECT_EQ(lastRequest(), "POST https://service.test/api/auth/logout");
    EXPECT_EQ(cookiesCleared, 1);

    client.answer(500);
    simulation.run(api.signOut());
    EXPECT_EQ(cookiesCleared, 2);

    client.fail(std::make_exception_ptr(TransportError(TransportError::Kind::noNetwork, "No network.")));
    simulation.run(api.signOut());
    EXPECT_EQ(cookiesCleared, 3);
}

TEST_F(APITest, signingOutForgetsTheCookiesAlsoWhenItIsCutShort)
{
    client.latency = 1h;
    boost::asio::cancellation_signal stop;
    bool ended = false;
    boost::asio::co_spawn(simulation.executor(), api.signOut(),
                          boost::asio::bind_cancellation_slot(stop.slot(), [&](std::exception_ptr) { ended = true; }));
    simulation.runUntil([&] { return client.inFlight() == 1; });
    EXPECT_EQ(cookiesCleared, 0);
    stop.emit(boost::asio::cancellation_type::terminal);
    simulation.settle();
    EXPECT_TRUE(ended);
    EXPECT_EQ(cookiesCleared, 1);
}

} // namespace
} // namespace palvera
