#include "transfer/URLPool.h"

#include "async/TaskGroup.h"
#include "http/TransportError.h"
#include "support/FakeHttpClient.h"
#include "support/QtPrinting.h"
#include "support/Simulation.h"

#include <QJsonDocument>

#include <gmock/gmock.h>

#include <set>

namespace palvera {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

struct URLPoolTest : testing::Test {
    Simulation world;
    FakeHttpClient client{world.clock};
    API api{{.client = client, .executor = world.executor()}};
    std::set<int> unsignedParts;
    int signings = 0;

    void SetUp() override
    {
        client.handler = [this](const HttpRequest& request) { return sign(request); };
    }

    HttpResponse sign(const HttpRequest& request)
    {
        ++signings;
        auto [from, to] = rangeOf(request);
        QJsonArray urls;
        for (int part = from; part <= to; ++part)
            if (!unsignedParts.contains(part))
                urls.append(
                    QJsonObject{{"partNumber", part}, {"url", QString("https://s/%1?try=%2").arg(part).arg(signings)}});
        return {.status = 200, .body = QJsonDocument(QJsonObject{{"urls", urls}}).toJson()};
    }

    static std::pair<int, int> rangeOf(const HttpRequest& request)
    {
        QJsonObject body = QJsonDocument::fromJson(request.body).object();
        EXPECT_EQ(body["object"], "key");
        EXPECT_EQ(body["uploadId"], "upload");
        return {body["from"].toInt(), body["to"].toInt()};
    }
    std::vector<std::pair<int, int>> asked() const
    {
        std::vector<std::pair<int, int>> ranges;
        for (const auto& request : client.requests())
            ranges.push_back(rangeOf(request));
        return ranges;
    }

    URLPool poolOf(int lastPart)
    {
        return URLPool(world.executor(), world.clock, api,
                       {.target = TransferTarget::Bin{.orgId = "O", .folder = {}},
                        .sessionId = "a b/c",
                        .object = "key",
                        .uploadId = "upload"},
                       lastPart);
    }
};

TEST_F(URLPoolTest, signsSixteenFromTheMissingPartOnAndNeverBeyondTheLast)
{
    auto pool = poolOf(100);
    EXPECT_EQ(world.run(pool.urlFor(20)), "https://s/20?try=1");
    EXPECT_EQ(world.run(pool.urlFor(35)), "https://s/35?try=1");
    EXPECT_EQ(world.run(pool.urlFor(36)), "https://s/36?try=2");
    EXPECT_EQ(world.run(pool.urlFor(95)), "https://s/95?try=3");
    auto small = poolOf(3);
    world.run(small.urlFor(1));
    EXPECT_THAT(asked(), ElementsAre(std::pair(20, 35), std::pair(36, 51), std::pair(95, 100), std::pair(1, 3)));
    EXPECT_TRUE(client.requests()[0].url.endsWith("/orgs/O/bin/uploads/a%20b%2Fc/parts"))
        << client.requests()[0].url.toStdString();
}

TEST_F(URLPoolTest, trustsAnAddressForEightMinutes)
{
    auto pool = poolOf(3);
    world.run(pool.urlFor(1));
    world.clock.advance(480s - 1ns);
    EXPECT_EQ(world.run(pool.urlFor(2)), "https://s/2?try=1");
    world.clock.advance(1ns);
    EXPECT_EQ(world.run(pool.urlFor(2)), "https://s/2?try=2");
}

TEST_F(URLPoolTest, aForgottenAddressIsSignedAfresh)
{
    auto pool = poolOf(100);
    world.run(pool.urlFor(1));
    world.run(pool.forget(5));
    world.run(pool.forget(77));
    EXPECT_EQ(world.run(pool.urlFor(5)), "https://s/5?try=2");
    EXPECT_EQ(world.run(pool.urlFor(4)), "https://s/4?try=1");
    EXPECT_THAT(asked(), ElementsAre(std::pair(1, 16), std::pair(5, 20)));
}

TEST_F(URLPoolTest, aPartLeftUnsignedFailsAloneAndOldAddressesDoNotStandIn)
{
    auto pool = poolOf(16);
    world.run(pool.urlFor(7));
    world.clock.advance(480s);
    unsignedParts = {7};
    auto refused = world.run(outcomeOf(pool.urlFor(7)));
    EXPECT_EQ(describe(refused.failure), "The platform did not sign part 7.");
    EXPECT_EQ(world.run(pool.urlFor(8)), "https://s/8?try=2");
}

TEST_F(URLPoolTest, lanesThatMissAtOnceEachAskAndAFailureClearsNothing)
{
    client.latency = 1s;
    auto pool = poolOf(100);
    std::vector<Task<void>> lanes;
    auto take = [](URLPool& from, int part) -> Task<void> { co_await from.urlFor(part); };
    for (int part : {1, 2, 3})
        lanes.push_back(take(pool, part));
    EXPECT_THAT(world.run(joinAll(std::move(lanes))), ElementsAre(nullptr, nullptr, nullptr));
    EXPECT_EQ(world.clock.elapsed(), 1s) << "side by side";
    EXPECT_EQ(signings, 3);
    client.fail(std::make_exception_ptr(TransportError(TransportError::Kind::broken, "lost")));
    EXPECT_EQ(describe(world.run(outcomeOf(pool.urlFor(50))).failure), "lost");
    EXPECT_EQ(world.run(pool.urlFor(10)), "https://s/10?try=3");
}

} // namespace
} // namespace palvera
