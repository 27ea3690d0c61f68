#pragma once

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

    /// What the last request asked for, such as "GET https://service.test/api/orgs".
    QByteArray lastRequest() const
    {
        return client.requests().empty() ? "none"
                                         : client.requests().back().method + ' ' + client.requests().back().url;
    }
    QByteArray lastBody() const { return client.requests().empty() ? "none" : client.requests().back().body; }

    /// The failure of type `Failure` with which `operation` ends.
    template <class Failure, class T>
    Failure failureOf(Task<T> operation)
    {
        try {
            simulation.run(std::move(operation));
        } catch (const Failure& failure) {
            return failure;
        }
        throw std::logic_error("the operation did not fail");
    }
};

} // namespace palvera
