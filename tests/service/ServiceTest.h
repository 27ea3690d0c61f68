#pragma once

#include "async/TaskGroup.h"
#include "service/API.h"
#include "support/FakeHttpClient.h"
#include "support/Json.h"
#include "support/QtPrinting.h"
#include "support/ScopedVariable.h"
#include "support/Simulation.h"

namespace palvera {

/// Runs `operation`, whatever comes of it.
template <class T>
Task<void> ignore(Task<T> operation)
{
    co_await outcomeOf(std::move(operation));
}

/// An API whose service is at https://service.test/api, on a network in memory.
struct ServiceTest : testing::Test {
    ScopedVariable serviceAddress{"PV_API", "https://service.test/api"};
    Simulation simulation;
    FakeHttpClient client{simulation.clock};
    int cookiesCleared = 0;
    std::size_t requestsAtClear = 0; ///< so many had been sent
    QString cookieProblem;
    std::optional<API> api{std::in_place, API::Surroundings{.client = client,
                                                            .executor = simulation.executor(),
                                                            .clearCookies =
                                                                [this] {
                                                                    ++cookiesCleared;
                                                                    requestsAtClear = client.requests().size();
                                                                },
                                                            .cookieProblem = [this] { return cookieProblem; }}};

    /// What was asked for, such as "GET orgs".
    std::vector<std::string> asked() const
    {
        std::vector<std::string> all;
        for (auto request : client.requests())
            all.push_back((request.method + ' ' + request.url.replace("https://service.test/api/", "")).toStdString());
        return all;
    }
    std::string lastRequest() const { return asked().back(); }
    QByteArray lastBody() const { return client.requests().back().body; }

    /// The failure of type `Failure` with which `operation` ends; fails the test when it does not.
    template <class Failure, class T>
    Failure failureOf(Task<T> operation)
    {
        return failureAs<Failure>(simulation.run(outcomeOf(std::move(operation))).failure).value();
    }
};

} // namespace palvera
