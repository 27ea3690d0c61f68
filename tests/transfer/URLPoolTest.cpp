#include "transfer/URLPool.h"
#include "TransferTest.h"

#include "support/FakeHttpClient.h"
#include "support/Json.h"

namespace palvera {
namespace {

struct URLPoolTest : testing::Test {
    Simulation world;
    FakeHttpClient client{world.clock};
    API api{{.client = client, .executor = world.executor()}};
    URLPool pool{world.executor(), world.clock, api, {.target = TransferTarget::Bin{}, .sessionId = "s"}, 100};
    std::optional<int> unsignedPart;
    std::vector<std::pair<int, int>> signings;

    void SetUp() override
    {
        client.handler = [this](const HttpRequest& request) {
            const auto body = jsonObject(request.body);
            auto [from, to] = signings.emplace_back(body["from"].toInt(), body["to"].toInt());
            QJsonArray urls;
            for (int part = from; part <= to; ++part)
                if (part != unsignedPart)
                    urls.append(QJsonObject{{"partNumber", part},
                                            {"url", QString("https://s/%1?try=%2").arg(part).arg(signings.size())}});
            return HttpResponse{.status = 200, .body = QJsonDocument(QJsonObject{{"urls", urls}}).toJson()};
        };
    }

    QByteArray urlFor(int part) { return world.run(pool.urlFor(part)); }
};

TEST_F(URLPoolTest, signsSixteenFromTheMissingOrForgottenPartOnAndNeverBeyondTheLast)
{
    EXPECT_EQ(urlFor(20), "https://s/20?try=1");
    EXPECT_EQ(urlFor(35), "https://s/35?try=1");
    EXPECT_EQ(urlFor(36), "https://s/36?try=2");
    EXPECT_EQ(urlFor(95), "https://s/95?try=3");
    world.run(pool.forget(22));
    EXPECT_EQ(urlFor(22), "https://s/22?try=4");
    EXPECT_EQ(urlFor(21), "https://s/21?try=1") << "which nobody forgot";
    EXPECT_THAT(signings, ElementsAre(std::pair(20, 35), std::pair(36, 51), std::pair(95, 100), std::pair(22, 37)));
}

TEST_F(URLPoolTest, trustsAnAddressForEightMinutesAndNoLongerThoughNoOtherIsSigned)
{
    urlFor(1);
    world.clock.advance(480s - 1ns);
    EXPECT_EQ(urlFor(7), "https://s/7?try=1");
    world.clock.advance(1ns);
    unsignedPart = 7;
    EXPECT_EQ(inWords(world.run(outcomeOf(pool.urlFor(7))).failure), "The platform did not sign part 7.");
    EXPECT_EQ(urlFor(8), "https://s/8?try=2");
}

} // namespace
} // namespace palvera
