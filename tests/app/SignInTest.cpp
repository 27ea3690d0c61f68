#include "tests/app/Desktop.h"
#include "tests/support/QtPrinting.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

using local::Fault;
using local::Operation;

/// Every way in that leads through the window itself, with the keyboard alone.
class SignInTest : public testing::Test {
protected:
    void SetUp() override
    {
        desktop.start();
        screen.find(QAccessible::EditableText, "Work email");
    }
    QString user() { return desktop.application().root().userEmail(); }

    Desktop desktop;
    Screen& screen = desktop.screen;
};

TEST_F(SignInTest, theWorkEmailLeadsToThePasswordAndToTheClients)
{
    screen.waitUntil([&] { return screen.focused() && Screen::nameOf(screen.focused()) == "Work email"; });
    screen.type("ada@northlight.example");
    screen.press(Qt::Key_Return);
    desktop.waitForText("ada@northlight.example");
    screen.waitUntil([&] { return screen.focused() && Screen::nameOf(screen.focused()) == "Password"; });
    screen.type("reel-one");
    screen.press(Qt::Key_Return);
    desktop.waitForText("Choose a client");
    EXPECT_EQ(user(), "ada@northlight.example");
}

TEST_F(SignInTest, aWrongPasswordIsSaidAndCanBeCorrected)
{
    desktop.signIn("ada@northlight.example", "wrong");
    screen.waitUntil([&] { return !screen.all(QAccessible::AlertMessage).isEmpty(); });
    EXPECT_FALSE(Screen::nameOf(screen.all(QAccessible::AlertMessage).first()).isEmpty());
    desktop.enter("Password", "reel-one");
    screen.press(Qt::Key_Return);
    desktop.waitForText("Choose a client");
}

TEST_F(SignInTest, anAccountThatMovesSignsInWithItsOldPassword)
{
    desktop.signIn("finn@harbour.example", "reel-six");
    desktop.waitForText("Choose a client");
    EXPECT_EQ(user(), "finn@harbour.example");
}

TEST_F(SignInTest, theCodeFromTheEmailCanBeAskedForAgain)
{
    desktop.signIn("ben@northlight.example", "reel-two");
    desktop.waitForText("Check your email");
    desktop.waitForText("We sent a six-digit code to ben@northlight.example.");
    screen.tabTo(QAccessible::Button, "Send another code");
    screen.press(Qt::Key_Return);
    desktop.waitForText("Another code is on its way.");
    desktop.enter("Code from the email", "246810");
    screen.press(Qt::Key_Return);
    desktop.waitForText("Choose a client");
}

TEST_F(SignInTest, theAuthenticatorsCodeIsAskedFor)
{
    desktop.signIn("cleo@northlight.example", "reel-three");
    desktop.waitForText("One more step");
    desktop.enter("Code from the app", "135790");
    screen.press(Qt::Key_Return);
    desktop.waitForText("Choose a client");
}

TEST_F(SignInTest, anAuthenticatorIsSetUpFromAPictureOrAKey)
{
    desktop.signIn("dov@northlight.example", "reel-four");
    desktop.waitForText("Add an authenticator");
    EXPECT_TRUE(screen.shows(QAccessible::Graphic, "QR code for your authenticator app"));
    EXPECT_FALSE(screen.shows(QAccessible::EditableText, "Key"));
    screen.tabTo(QAccessible::Button, "Cannot scan it? Enter this key instead");
    screen.press(Qt::Key_Space);
    auto* key = screen.find(QAccessible::EditableText, "Key");
    EXPECT_FALSE(key->property("text").toString().isEmpty());
    desktop.enter("Code from the app", "135790");
    screen.press(Qt::Key_Return);
    desktop.waitForText("Choose a client");
}

TEST_F(SignInTest, aForgottenPasswordIsResetByALink)
{
    desktop.enter("Work email", "ada@northlight.example");
    screen.press(Qt::Key_Return);
    screen.find(QAccessible::EditableText, "Password");
    screen.tabTo(QAccessible::Button, "Forgotten your password?");
    screen.press(Qt::Key_Return);
    desktop.waitForText("Give us the email address on your account");
    screen.tabTo(QAccessible::Button, "Send me a link");
    screen.press(Qt::Key_Return);
    desktop.waitForText("If ada@northlight.example has an account, a link is on its way.");
    EXPECT_TRUE(screen.reads("Nothing has changed yet."));
    EXPECT_FALSE(screen.shows(QAccessible::Button, "Send me a link"));
    screen.tabTo(QAccessible::Button, "Back to sign in");
    screen.press(Qt::Key_Return);
    screen.find(QAccessible::EditableText, "Work email");
}

TEST_F(SignInTest, aWayThroughTheBrowserThatDoesNotOpenIsSaid)
{
    screen.tabTo(QAccessible::Button, "Continue with Google, in a sign-in window.");
    screen.press(Qt::Key_Space);
    desktop.waitForText("Google did not finish. Try again, or sign in another way.");
}

TEST_F(SignInTest, whileARequestRunsItsButtonSaysSoAndTakesNoSecondPress)
{
    desktop.platform.faults().add({.operation = Operation::methods, .fault = {.kind = Fault::Kind::stallAfterBody}});
    desktop.enter("Work email", "ada@northlight.example");
    screen.press(Qt::Key_Return);
    screen.find(QAccessible::Button, "Signing in");
    screen.press(Qt::Key_Return);
    EXPECT_TRUE(desktop.application().root().login()->isBusy());
}

TEST(SignInDoorsTest, theAccessCodeDoorIsThereForWhoHoldsAlt)
{
    Desktop desktop;
    auto& screen = desktop.screen;
    desktop.isAltHeld = true;
    desktop.start();
    screen.find(QAccessible::Button, "Sign in with an access code");
    screen.tabTo(QAccessible::Button, "Sign in with an access code");
    screen.press(Qt::Key_Return);
    screen.find(QAccessible::Button, "Back to sign in");
    desktop.enter("Work email", "hana@kestrel.example");
    desktop.enter("Password", "open-sesame");
    screen.press(Qt::Key_Return);
    desktop.waitForText("Choose a client");
    EXPECT_EQ(desktop.application().root().userEmail(), "hana@kestrel.example");
}

TEST(SignInDoorsTest, whoTypesAheadOfANewFaceKeepsTheKeyboardWhereItIs)
{
    Desktop desktop;
    auto& screen = desktop.screen;
    desktop.isAltHeld = true;
    desktop.start();
    screen.find(QAccessible::Button, "Sign in with an access code");
    screen.tabTo(QAccessible::Button, "Sign in with an access code");
    bool moved = false;
    QObject::connect(desktop.application().root().login(), &LoginView::focusWanted, &screen.window(),
                     [&] { moved = true; });
    screen.press(Qt::Key_Return);
    desktop.enter("Work email", "hana@kestrel.example");
    desktop.enter("Password", "open-");
    screen.waitUntil([&] { return moved; });
    screen.type("sesame");
    screen.press(Qt::Key_Return);
    desktop.waitForText("Choose a client");
}

TEST(SignInDoorsTest, theAccessCodeDoorIsNowhereOtherwise)
{
    Desktop desktop;
    desktop.start();
    desktop.screen.find(QAccessible::EditableText, "Work email");
    EXPECT_FALSE(desktop.screen.shows(QAccessible::Button, "Sign in with an access code"));
    EXPECT_TRUE(desktop.screen.reads("Build 1.2.3 (45)"));
    EXPECT_TRUE(desktop.screen.reads("Secured by WorkOS"));
}

} // namespace
} // namespace palvera
