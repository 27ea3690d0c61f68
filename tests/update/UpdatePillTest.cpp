#include "update/UpdatePill.h"
#include "update/AboutView.h"

#include "UpdateHarness.h"
#include "transfers/TransfersHarness.h"

namespace palvera {
namespace {

/// A build that is ready, and transfers.
struct UpdatePillTest : TransfersTest {
    FakeWorkspace workspace;
    FakeInstaller installer;
    std::optional<Updater> updater;
    std::optional<UpdatePill> pill;

    UpdatePillTest()
    {
        client.handler = [](const HttpRequest& request) {
            return HttpResponse{.status = 200, .body = request.url.endsWith(".json") ? feedOf58 : "image"};
        };
        updater.emplace(Updater::Environment{.main = world.executor(),
                                             .disk = world.executor(),
                                             .clock = world.clock,
                                             .http = client,
                                             .workspace = workspace,
                                             .feed = "https://feed.test/latest.json",
                                             .build = "57",
                                             .caches = disk.filePath("caches"),
                                             .target = "/opt/palvera",
                                             .connect = [this] { return installer.connect(); }});
        pill.emplace(*updater, *model);
    }
    ~UpdatePillTest() override
    {
        world.run(updater->close());
        world.run(model->suspend());
        pill.reset();
        updater.reset();
    }
    void makeReady()
    {
        world.settle();
        pill->tap();
        world.settle();
        ASSERT_EQ(pill->text(), "Restart");
    }
};

TEST_F(UpdatePillTest, isThereOnceABuildIsKnownAndATapTakesItFurther)
{
    EXPECT_FALSE(pill->isShown()) << "while the feed is read";
    makeReady();
    EXPECT_TRUE(pill->isShown());
    pill->tap();
    world.settle();
    EXPECT_FALSE(pill->isConfirming()) << "nothing moves";
    EXPECT_EQ(workspace.terminated, 1);
    EXPECT_EQ(pill->text(), "Restarting");
    EXPECT_FALSE(pill->isTappable());
}

TEST_F(UpdatePillTest, aRestartThatCutsTransfersOffIsAskedFor)
{
    makeReady();
    addUpload("row-1");
    addUpload("row-2");
    world.settle();
    pill->tap();
    EXPECT_TRUE(pill->isConfirming());
    EXPECT_TRUE(pill->question().startsWith("2 transfers are still moving."));
    pill->cancel();
    EXPECT_FALSE(pill->isConfirming());
    EXPECT_EQ(pill->text(), "Restart");
    pill->tap();
    installer.answer.reset();
    pill->confirmRestart();
    pill->confirmRestart(); // when it is not ready any more
    world.settle();
    EXPECT_FALSE(pill->isConfirming());
    EXPECT_EQ(installer.calls.size(), 2u);
}

TEST_F(UpdatePillTest, aFailureIsSaidAndTriedAgainFromTheStart)
{
    installer.answer = "The update is damaged.";
    world.settle();
    pill->tap();
    world.settle();
    EXPECT_TRUE(pill->hasFailed());
    EXPECT_EQ(pill->tooltip(), "The update is damaged.");
    AboutView about(*updater);
    EXPECT_TRUE(about.failureText().endsWith(": The update is damaged."));
    pill->tap();
    EXPECT_EQ(pill->percent(), 0);
    EXPECT_FALSE(pill->isTappable());
    pill->tap(); // nothing
    world.settle();
    EXPECT_EQ(installer.calls.size(), 2u);
}

} // namespace
} // namespace palvera
