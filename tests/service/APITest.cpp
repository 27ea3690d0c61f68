#include "ServiceTest.h"

#include "http/TransportError.h"
#include "service/Organisations.h"

#include <boost/asio/use_future.hpp>

#include <thread>

namespace palvera {
namespace {

using namespace std::chrono_literals;

using APITest = ServiceTest;

TEST_F(APITest, servesTheSiteUnlessTheEnvironmentNamesAnAddress)
{
    const auto expectAddresses = [this](const QByteArray& me, const QByteArray& signInPage) {
        EXPECT_EQ(api->makeURL("me"), me);
        EXPECT_EQ(api->signInPageURL(), signInPage);
    };
    const std::optional<QByteArray> ignored[] = {{}, "", "not an address", "ftp://host/api", "localhost:8080"};
    EXPECT_NE(baseURL(Site::live), baseURL(Site::qa));
    for (const Site site : allSites) {
        api->setSite(site);
        const auto origin = baseAddress(site).origin;
        EXPECT_TRUE(origin.startsWith("https://")) << origin.toStdString();
        for (const auto& value : ignored) {
            const ScopedVariable variable("PV_API", value);
            expectAddresses(origin + "/api/me", origin + "/sign-in?native=1");
        }
        const ScopedVariable named("PV_API", "http://127.0.0.1:8080/a/b/?c=d#e");
        expectAddresses("http://127.0.0.1:8080/a/b/me?c=d", "http://127.0.0.1:8080/sign-in?native=1");
    }
}

TEST_F(APITest, anEncryptedServiceLeadsToNoUnencryptedStorageAndAnExposedOneSaysSo)
{
    const std::tuple<const char*, bool, bool> cases[] = {{"https://far.example/api", false, false},
                                                         {"http://far.example/api", true, true},
                                                         {"http://localhost:8700/api", false, true}};
    for (const auto& [service, isExposed, takesPlainStorage] : cases) {
        const ScopedVariable named("PV_API", service);
        EXPECT_EQ(api->isServiceExposed(), isExposed) << service;
        for (auto storage : {"https://storage.example/x", "http://127.0.0.1:9000/x", "http://[::1]/x", "no address"})
            EXPECT_NO_THROW(api->requireEncryption(storage)) << service << storage;
        if (takesPlainStorage)
            EXPECT_NO_THROW(api->requireEncryption("http://storage.example/x")) << service;
        else
            EXPECT_THROW(api->requireEncryption("http://storage.example/x"), TransportError) << service;
    }
}

TEST_F(APITest, asksForJsonAndSaysWhenItSendsSome)
{
    client.answer(200, "whatever it says");
    client.answer(204);
    EXPECT_EQ(simulation.run(api->send("a", "GET")), "whatever it says");
    EXPECT_EQ(simulation.run(api->send("a", "POST", QJsonObject())), "");
    const auto& asking = client.requests().front();
    EXPECT_EQ(asking.headers, HttpHeaders({{"Accept", "application/json"}}));
    EXPECT_EQ(asking.idleTimeout, 60s);
    EXPECT_EQ(asking.totalTimeout, 120s);
    EXPECT_TRUE(asking.asksForCompression);
    EXPECT_EQ(headerOf(client.requests().back().headers, "Content-Type"), "application/json");
}

TEST_F(APITest, everyStatusButFrom200To299IsAnError)
{
    const std::tuple<int, const char*, const char*, std::optional<QString>> cases[] = {
        {404, R"({"message":"Not found","error":"not_found"})", "Not found", "not_found"},
        {409, R"({"message":"Twice","other":"x"})", "Twice", {}},
        {500, "<html>", "The platform answered 500.", {}},
        {400, R"({"message":"Bad","error":"bad","line":1})", "The platform answered 400.", {}},
        {400, R"({"message":"Bad","detail":null})", "The platform answered 400.", {}},
        {400, R"({"error":"bad"})", "The platform answered 400.", "bad"},
        {400, R"({"message":""})", "", {}},
        {199, "", "The platform answered 199.", {}},
        {300, "", "The platform answered 300.", {}},
    };
    for (const auto& [status, body, message, code] : cases) {
        client.answer(status, body);
        const auto error = failureOf<APIError>(api->post("me"));
        EXPECT_EQ(error.status(), status);
        EXPECT_EQ(error.message(), message) << body;
        EXPECT_EQ(error.code(), code) << body;
    }
}

TEST_F(APITest, fetchDecodesTheWholeAnswerOrFails)
{
    client.answer(200, R"({"orgs":[{"id":"o","name":"N"}]})");
    EXPECT_EQ(simulation.run(api->fetch<Orgs>("orgs")).orgs, QList<Org>({{.id = "o", .name = "N"}}));
    client.answer(200, "<html>");
    EXPECT_EQ(failureOf<DecodingError>(api->fetch<Orgs>("orgs")).text(),
              "That was not an answer of the platform. A proxy or a sign-in page of the network may stand in between.");
    client.answer(200, R"({"orgs":[{"name":"N"}]})");
    EXPECT_EQ(failureOf<DecodingError>(api->fetch<Orgs>("orgs")).text(),
              "The platform's answer could not be read: “id” is missing.");
    client.fail(std::make_exception_ptr(TransportError(TransportError::Kind::tls, "No trust.")));
    EXPECT_EQ(failureOf<TransportError>(api->fetch<Orgs>("orgs")).kind(), TransportError::Kind::tls);
}

TEST_F(APITest, cancellingCutsTheRequestOff)
{
    client.latency = 1h;
    Outcome<void> end;
    simulation.run(firstOf(detail::keepOutcome(api->post("slow"), end), simulation.clock.sleep(1s)));
    EXPECT_TRUE(isCancellation(end.failure));
    EXPECT_EQ(simulation.clock.elapsed(), 1s);
    EXPECT_FALSE(simulation.clock.advanceToNextWake()) << "the request is under way still";
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
    auto witness = boost::asio::co_spawn(caller, elsewhere.fetch<Witness>("me"), boost::asio::use_future);
    caller.run();
    engine.join();
    EXPECT_NE(witness.get().thread, std::this_thread::get_id());
}

TEST_F(APITest, saysThatASignInIsNeededUnlessThatWasTheQuestionOrTheServiceIsAnother)
{
    int said = 0;
    api->onSignInNeeded([&] { ++said; });
    const auto saidAfter = [&](API& asked, const QString& path, int status) {
        said = 0;
        client.answer(status);
        EXPECT_THROW(simulation.run(asked.send(path, "GET")), APIError);
        return said;
    };
    EXPECT_EQ(saidAfter(*api, "orgs", 401), 1);
    EXPECT_EQ(saidAfter(*api, "orgs", 403), 0);
    EXPECT_EQ(saidAfter(*api, "me", 401), 0);
    EXPECT_EQ(saidAfter(*api, "auth/password", 401), 0);
    const auto pinned = api->pinned();
    EXPECT_EQ(saidAfter(*pinned, "orgs", 401), 1);
    const ScopedVariable elsewhere("PV_API", "https://elsewhere.test/api");
    EXPECT_EQ(saidAfter(*pinned, "orgs", 401), 0);
    EXPECT_EQ(client.requests().back().url, "https://service.test/api/orgs");
    EXPECT_EQ(saidAfter(*api, "orgs", 401), 1);
    api->onSignInNeeded({});
    EXPECT_EQ(saidAfter(*api, "orgs", 401), 0);
}

TEST_F(APITest, signingOutForgetsTheCookiesAtOnceAndTellsThePlatformWithThem)
{
    for (const int status : {200, 500, 0}) {
        const int before = cookiesCleared;
        client.handler = [&](const HttpRequest&) {
            EXPECT_EQ(cookiesCleared, before + 1) << "a platform that does not answer keeps nobody signed in";
            if (status == 0)
                throw TransportError(TransportError::Kind::noNetwork, "No network.");
            return HttpResponse{.status = status};
        };
        EXPECT_EQ(simulation.run(api->signOut()), status == 200);
        EXPECT_EQ(lastRequest(), "POST auth/logout");
        EXPECT_EQ(client.requests().back().totalTimeout, 5s);
        EXPECT_EQ(requestsAtClear, client.requests().size()) << "without its cookie it cannot end the session";
    }
}

} // namespace
} // namespace palvera
