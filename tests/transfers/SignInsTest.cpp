#include "TransfersHarness.h"

namespace palvera {
namespace {

const Account ada{.service = "https://service.test/api/", .userId = "ada"};
const Account hana{.service = "https://service.test/api/", .userId = "hana"};
const Account adaElsewhere{.service = "https://elsewhere.test/api/", .userId = "ada"};
const std::string waiting = "waiting: Waiting for you to sign in";

/// One transfer of each kind, of Ada's.
struct SignInsTest : TransfersTest {
    SignInsTest() { account = ada; }

    /// Begins one whose runs end so.
    QUuid begin(Item::Kind kind, std::deque<std::exception_ptr> ends)
    {
        (kind == Item::Kind::upload ? uploads.ends : downloads.ends) = std::move(ends);
        return kind == Item::Kind::upload ? addUpload() : addDownload();
    }
    std::string stateAfter(const QUuid& id, std::chrono::seconds time)
    {
        world.pass(time);
        return stateOf(id);
    }
};

constexpr auto kinds = {Item::Kind::upload, Item::Kind::download};

TEST_F(SignInsTest, whatIsRefusedWaitsForItsUserAtItsServiceAndGoesOnByItself)
{
    for (auto kind : kinds) {
        account = ada;
        const auto id = begin(kind, {platformSays(401), platformSays(401), nullptr});
        for (std::size_t times = 1; times <= 2; ++times) {
            EXPECT_EQ(stateAfter(id, 3s), waiting);
            for (const auto& other : {hana, adaElsewhere}) {
                account = other;
                EXPECT_EQ(stateAfter(id, 100s), waiting);
            }
            EXPECT_EQ(kind == Item::Kind::upload ? uploads.requests.size() : downloads.requests.size(), times);
            account = ada;
        }
        EXPECT_EQ(stateAfter(id, 5s), "done");
    }
    EXPECT_EQ(uploads.requests[2].key, "row-1");
    EXPECT_EQ(downloads.requests[2].destination, downloads.requests[0].destination) << "into another file";
}

TEST_F(SignInsTest, aRefusalStandsTheSecondTimeWhereThePlatformKnowsTheUserAndAtOnceWhereNobodyCanSignIn)
{
    isKnown = true;
    for (auto kind : kinds) {
        EXPECT_EQ(stateAfter(begin(kind, {platformSays(401), nullptr}), 5s), "done")
            << "it was asked before the sign-in";
        const auto refused = begin(kind, {platformSays(401), platformSays(401)});
        EXPECT_EQ(stateAfter(refused, 5s), "failed: The platform says 401.");
    }
    account.reset(); // nobody can sign in
    isKnown = false;
    for (auto kind : kinds)
        EXPECT_EQ(stateAfter(begin(kind, {platformSays(401)}), 2s), "failed: The platform says 401.");
}

TEST_F(SignInsTest, aWaitEndsWithAStopOrWithTheProgram)
{
    for (auto kind : kinds) {
        account = ada;
        const auto id = begin(kind, {platformSays(401)});
        EXPECT_EQ(stateAfter(id, 3s), waiting);
        model->stop(id);
        EXPECT_EQ(stateAfter(id, 0s), "stopped");
        account = ada;
        const auto other = begin(kind, {platformSays(401)});
        EXPECT_EQ(stateAfter(other, 3s), waiting);
        world.run(model->suspend());
        EXPECT_EQ(stateOf(other), waiting) << "so that it is gone on with";
    }
}

TEST_F(SignInsTest, aTransferKeepsToTheServiceWhereItBegan)
{
    begin(Item::Kind::upload, {});
    world.settle();
    const auto object = deliveredFile(*api, TransferTarget::Deliverable{"org", "salt", "row"}, "object");
    const ScopedVariable elsewhere("PV_API", "https://elsewhere.test/api");
    EXPECT_EQ(uploads.requests.at(0).api->makeURL("me"), "https://service.test/api/me");
    client.answer(200, R"({"url":"https://storage.test/x"})");
    world.run(object.address());
    EXPECT_TRUE(client.requests().back().url.startsWith("https://service.test/api/orgs/"));
}

} // namespace
} // namespace palvera
