#pragma once

#include "async/TaskGroup.h"
#include "service/API.h"
#include "support/FakeHttpClient.h"
#include "support/Json.h"
#include "support/QtPrinting.h"
#include "support/ScopedVariable.h"
#include "support/Simulation.h"

#include <gmock/gmock.h>

namespace palvera {

/// An API whose service is at https://service.test/api, on a network in memory.
struct ServiceTest : testing::Test {
    ScopedVariable serviceAddress{"PV_API", "https://service.test/api"};
    Simulation simulation;
    FakeHttpClient client{simulation.clock};
    int cookiesCleared = 0;
    API api{{.client = client, .executor = simulation.executor(), .clearCookies = [this] { ++cookiesCleared; }}};

    /// What the last request asked for, such as "GET orgs", and the body that it sent.
    std::string lastRequest() const
    {
        const auto& request = client.requests().back();
        return (request.method + ' ' + QByteArray(request.url).replace("https://service.test/api/", "")).toStdString();
    }
    QByteArray lastBody() const { return client.requests().back().body; }

    /// The failure of type `Failure` with which `operation` ends; fails the test when it does not.
    template <class Failure, class T>
    Failure failureOf(Task<T> operation)
    {
        return failureAs<Failure>(simulation.run(outcomeOf(std::move(operation))).failure).value();
    }
};

} // namespace palvera
