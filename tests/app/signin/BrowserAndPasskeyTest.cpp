#include "LoginViewHarness.h"

namespace palvera {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using BrowserAndPasskeyTest = LoginViewTest;

TEST_F(BrowserAndPasskeyTest, howTheBrowserComesBackIsToldOf)
{
    const QString tryAgain = "Google did not finish. Try again, or sign in another way.";
    const auto because = [](const QString& why) {
        return "Google did not finish (" + why + "). Try again, or sign in another way.";
    };
    const std::pair<QString, QString> cases[] = {
        {"palvera://done?error=access_denied", because("access_denied")},
        {"palvera://done?error=%1B%5B31m%20%E2%80%AEgone%0A", because("[31m gone")},
        {"palvera://done?error=" + QString(500, 'x'), because(QString(63, 'x') + "…")},
        {"palvera://done?error=%20", tryAgain},
        {"palvera://done", tryAgain},
        {"palvera:", tryAgain},
        {"palvera://done?grant=", tryAgain},
        {"palvera://done?grant=old&error=x", "That sign-in has expired. Try again."},
    };
    open();
    for (const auto& [callback, message] : cases) {
        view.signInWith("google");
        comeBack(callback);
        EXPECT_EQ(view.error(), message);
        EXPECT_FALSE(view.isBusy() || view.browser()->isWaiting());
        EXPECT_EQ(user(), "");
    }
    const auto callback = grantedTo("ada%40northlight%2Eexample");
    view.signInWith("google");
    network.conditions.listening = false;
    comeBack(callback);
    EXPECT_EQ(view.error(), tryAgain);
    network.conditions.listening = true;
    view.signInWith("google");
    world.pass(130s);
    comeBack(callback);
    EXPECT_EQ(view.error(), "That sign-in has expired. Try again.");
    hasBrowser = false;
    view.signInWith("google");
    world.pass(1s);
    EXPECT_EQ(view.error(), tryAgain);
    hasBrowser = true;
    view.setEmail(" eve@harbour.example\n"); // who has single sign-on
    view.submit();
    world.pass(1s);
    EXPECT_EQ(opened.back(), webStartURL(api, {}, "eve@harbour.example"));
    const auto granted = grantedTo("eve%40harbour%2Eexample");
    comeBack(granted);
    EXPECT_EQ(user(), "eve@harbour.example");
    view.refuse(browser.take(granted));
    EXPECT_EQ(view.notice(), "") << "the page offers it twice";
}

TEST_F(BrowserAndPasskeyTest, whileItWaitsForTheBrowserThereAreWaysOut)
{
    open();
    view.signInWith("google");
    world.pass(1s);
    view.signInWith("apple");
    EXPECT_THAT(opened, ElementsAre(webStartURL(api, "google", {})));
    view.browser()->becomeActive();
    world.pass(1900ms);
    EXPECT_FALSE(view.browser()->isUserBack()) << "it may just be on its way";
    world.pass(100ms);
    EXPECT_TRUE(view.browser()->isUserBack());
    world.pass(15min);
    EXPECT_EQ(view.error(), "Google did not finish. Try again, or sign in another way.");
    view.signInWith("google");
    world.pass(1s);
    EXPECT_FALSE(view.browser()->isUserBack()) << "not yet this time";
    view.open(false);
    EXPECT_FALSE(view.browser()->isWaiting() || view.isBusy()) << "at once: the next one may begin";
    view.signInWith("google");
    world.pass(1s);
    EXPECT_TRUE(view.browser()->isWaiting());
}

TEST_F(BrowserAndPasskeyTest, aSecurityKeyIsAskedFirstIfThereIsOneAndTheBrowserStaysOnePressAway)
{
    using Kind = PasskeyPrompt::Kind;
    qputenv("PV_API", "http://localhost/api"); // that of the passkeys
    open();
    EXPECT_EQ(keys.looks, 1);
    view.signInWithPasskey();
    comeBack("palvera://done");
    EXPECT_THAT(std::exchange(opened, {}), ElementsAre("http://localhost/sign-in?native=1"));
    EXPECT_EQ(view.error(), "The passkey sign-in did not finish. Try again, or sign in another way.");
    keys.plug(true);
    const auto begin = [&] {
        view.signInWithPasskey();
        world.pass(1s);
        EXPECT_TRUE(view.isBusy());
        EXPECT_FALSE(view.passkey()->isAsking()) << "there is nothing to ask yet";
        keys.ask({.kind = Kind::touch});
        EXPECT_TRUE(view.passkey()->isAsking());
    };
    const auto end = [&] {
        world.pass(1s);
        EXPECT_FALSE(view.isBusy() || view.passkey()->isAsking());
        return view.error();
    };
    begin();
    keys.ask({});
    EXPECT_TRUE(view.passkey()->isAsking()) << "the key is at work";
    keys.fail(PasskeyFailure("This security key holds no passkey for Palvera."));
    EXPECT_EQ(end(), "This security key holds no passkey for Palvera.");
    begin();
    keys.answer({.credential = "unknown"});
    EXPECT_EQ(end(), "That passkey is not known here.");
    begin();
    network.conditions.listening = false;
    keys.answer({.credential = "unsent"});
    EXPECT_EQ(end(), "That passkey did not work. Sign in another way.");
    network.conditions.listening = true;
    begin();
    EXPECT_THAT(opened, IsEmpty());
    view.passkey()->useBrowser();
    world.pass(1s);
    EXPECT_FALSE(view.passkey()->isAsking());
    keys.ask({.kind = Kind::touch});
    EXPECT_FALSE(view.passkey()->isAsking()) << "nobody signs in";
}

} // namespace
} // namespace palvera
