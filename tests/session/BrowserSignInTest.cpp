#include "session/BrowserSignIn.h"

#include "async/CancelFlag.h"
#include "async/TaskGroup.h"
#include "session/SignInDoorError.h"
#include "support/QtPrinting.h"
#include "support/Simulation.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using Taken = BrowserSignIn::Taken;

const QByteArray page = "https://platform.test/start";
const QString callback = "palvera://sign-in?grant=g";

struct BrowserSignInTest : testing::Test {
    Simulation world;
    bool hasBrowser = true;
    std::vector<QByteArray> shown;
    std::weak_ptr<int> listening;
    BrowserSignIn browser{{.clock = world.clock,
                           .show =
                               [this](const QByteArray& address) {
                                   EXPECT_FALSE(listening.expired()) << "the browser could be quicker";
                                   shown.push_back(address);
                                   return hasBrowser;
                               },
                           .listen =
                               [this] {
                                   auto listener = std::make_shared<int>();
                                   listening = listener;
                                   return listener;
                               }}};
    std::vector<std::string> ends;

    Task<void> attempt()
    {
        auto ended = co_await outcomeOf(browser.signIn(page));
        EXPECT_FALSE(browser.isWaiting());
        EXPECT_TRUE(listening.expired());
        const auto door = failureAs<SignInDoorError>(ended.failure);
        if (ended.value)
            ends.push_back(ended.value->toStdString());
        else if (isCancellation(ended.failure))
            ends.push_back("cut off");
        else
            ends.push_back(door->kind() == SignInDoorError::Kind::cancelled ? "cancelled" : door->text().toStdString());
    }
    void begin()
    {
        world.start(attempt());
        world.settle();
        EXPECT_TRUE(browser.isWaiting());
    }
};

TEST_F(BrowserSignInTest, endsOnceInOneWayAndKnowsWhatComesLater)
{
    const std::tuple<std::function<void()>, const char*, Taken> cases[] = {
        // what ends it, how, and what comes of the next callback
        {[&] { EXPECT_EQ(browser.take(callback), Taken::used); }, "palvera://sign-in?grant=g", Taken::again},
        {[&] { browser.cancel(); }, "cancelled", Taken::late},
        {[&] {
             world.pass(15min - 1s);
             browser.showAgain(); // which is no new beginning
             EXPECT_TRUE(browser.isWaiting());
             world.pass(1s);
         },
         "The sign-in window closed before it finished.", Taken::late},
    };
    EXPECT_EQ(browser.take(callback), Taken::unasked);
    for (const auto& [end, ended, next] : cases) {
        SCOPED_TRACE(ended);
        ends.clear();
        begin();
        EXPECT_EQ(browser.address(), page);
        end();
        EXPECT_EQ(browser.take("palvera://sign-in?grant=of-somebody-else"), next);
        browser.cancel();
        browser.showAgain();
        world.settle();
        EXPECT_THAT(ends, ElementsAre(ended));
        EXPECT_EQ(browser.address(), "");
        world.pass(10min - 1s);
        EXPECT_EQ(browser.take(callback), next);
        world.pass(1s);
        EXPECT_EQ(browser.take(callback), Taken::unasked) << "it was long ago";
    }
    EXPECT_EQ(shown.size(), 4u);
}

TEST_F(BrowserSignInTest, withoutABrowserItEndsAtOnceAndCutOffLeavesNobodyWaiting)
{
    hasBrowser = false;
    world.run(attempt());
    hasBrowser = true;
    auto flag = std::make_shared<CancelFlag>();
    world.start(runUntilStopped(flag, attempt()));
    world.settle();
    flag->stop();
    EXPECT_THROW(world.settle(), std::exception) << "the cancellation";
    EXPECT_THAT(ends, ElementsAre("The sign-in window could not open.", "cut off"));
    EXPECT_EQ(browser.take(callback), Taken::late);
}

} // namespace
} // namespace palvera
