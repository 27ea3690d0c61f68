#include "tests/app/Desktop.h"

#include <QClipboard>
#include <QGuiApplication>

namespace palvera {
namespace {

using Face = LoginView::Face;
using local::Fault;
using local::Operation;

/// The ways in that lead through the window itself, with the keyboard alone.
struct SignInTest : DesktopTest {
    SignInTest()
    {
        isAltHeld = true;
        start();
        screen.find(QAccessible::EditableText, "Work email");
    }
};

TEST_F(SignInTest, eachFaceBeginsInItsFirstFieldSendsNothingIncompleteAndLeadsOn)
{
    using Text = const char*;
    const std::tuple<Face, Text, Text, Text, Text, Text, Text> cases[] = {
        // the face, the address and the password that lead to it, what it says, its first field, what is incomplete
        // there, and what leads to the clients
        {Face::Email, nullptr, nullptr, "Build 1.2.3 (45)", "Work email", " ", nullptr},
        {Face::Forgot, nullptr, nullptr, "Give us the email address on your account", "Work email", " ", nullptr},
        {Face::Login, nullptr, nullptr, "Back to sign in", "Work email", "hana@kestrel.example", nullptr},
        {Face::Password, "ada@northlight.example", nullptr, "Forgotten your password?", "Password", "", "reel-one"},
        {Face::Verify, "ben@northlight.example", "reel-two", "We sent a six-digit code to ben@northlight.example.",
         "Code from the email", " ", "246810"},
        {Face::Totp, "cleo@northlight.example", "reel-three", "One more step", "Code from the app", " ", "135790"},
        {Face::Enrol, "dov@northlight.example", "reel-four", "Add an authenticator", "Code from the app", " ",
         "135790"},
    };
    for (const auto& [face, email, password, said, field, incomplete, complete] : cases) {
        SCOPED_TRACE(said);
        login().open(true);
        screen.waitUntil([&] { return login().face() == Face::Email; });
        if (face == Face::Login)
            screen.choose(QAccessible::Button, "Sign in with an access code");
        if (face == Face::Forgot)
            login().forgotPassword();
        if (email)
            send("Work email", email);
        if (password)
            send("Password", password);
        screen.waitUntil([&] { return login().face() == face && !login().isBusy(); });
        waitForText(said);
        screen.waitForFocus(field);
        int sent = 0;
        auto watch = QObject::connect(&login(), &LoginView::busyChanged, [&] { ++sent; });
        screen.type(incomplete);
        screen.press(Qt::Key_Return); // at the access-code door to the password
        screen.press(Qt::Key_Return);
        EXPECT_EQ(sent, 0);
        QObject::disconnect(watch);
        if (!complete)
            continue;
        if (password) {
            send(field, "000000");
            screen.find(QAccessible::AlertMessage, "That code is not right.");
            EXPECT_EQ(login().code(), "000000") << "to be corrected";
            EXPECT_EQ(root().userEmail(), "");
        }
        send(field, complete);
        screen.waitUntil([&] { return root().userEmail() == email; });
        waitForText("Choose a client");
        root().signOut();
        screen.find(QAccessible::EditableText, "Work email");
    }
}

TEST_F(SignInTest, whileTheUserIsInTheBrowserTheScreenWaitsAndOffersWaysOut)
{
    const auto begin = [&] {
        screen.choose(QAccessible::Button, "Continue with Google, in a sign-in window.", Qt::Key_Space);
        screen.find(QAccessible::Heading, "Finish in your browser");
        waitForText("Your browser is open at the sign-in page. When it asks, choose Open Palvera.");
        EXPECT_FALSE(screen.shows(QAccessible::EditableText, "Work email"));
        EXPECT_FALSE(screen.shows(QAccessible::Button, "Sign in with an access code"));
    };
    begin();
    screen.waitForFocus("Open the browser again");
    screen.press(Qt::Key_Return);
    ASSERT_EQ(shownInBrowser.size(), 2);
    EXPECT_EQ(shownInBrowser[0], shownInBrowser[1]);
    screen.choose(QAccessible::Button, "Copy the address");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), shownInBrowser[0]);
    screen.find(QAccessible::Button, "The address is copied");
    screen.press(Qt::Key_Escape);
    screen.waitForFocus("Work email");
    EXPECT_TRUE(screen.all(QAccessible::AlertMessage).isEmpty());
    application().arrive({.addresses = {signInOnPage("ada%40northlight%2Eexample")}});
    screen.find(QAccessible::AlertMessage, "That sign-in was cancelled. Start it again to use it.");
    EXPECT_EQ(root().userEmail(), "");
    begin();
    EXPECT_TRUE(screen.all(QAccessible::AlertMessage).isEmpty());
    screen.choose(QAccessible::Button, "Cancel", Qt::Key_Space);
    screen.find(QAccessible::EditableText, "Work email");
    begin();
    application().arrive({.addresses = {signInOnPage("ada%40northlight%2Eexample")}});
    waitForText("Choose a client");
    EXPECT_EQ(root().userEmail(), "ada@northlight.example");
    screen.find(QAccessible::AlertMessage, "You are signed in as ada@northlight.example.");
    screen.takeWarnings(); // where there is no display, nothing can be put in front
}

TEST_F(SignInTest, whatTheSecurityKeyAsksForHasAFaceEach)
{
    using Kind = PasskeyPrompt::Kind;
    const ScopedVariable site("PV_API", server->serviceAddress().replace("127.0.0.1", "localhost") + "/api");
    start();
    waitForText("Opens the sign-in window; use your passkey there.");
    keys.plug(true);
    waitForText("With your security key.");
    const auto begin = [&] {
        const auto before = keys.requests.size();
        screen.choose(QAccessible::Button, "Sign in with a passkey");
        screen.waitUntil([&] { return keys.requests.size() > before; });
    };
    begin();
    const std::tuple<PasskeyPrompt, const char*, const char*> prompts[] = {
        {{.kind = Kind::insert}, "Put in your security key.", "Use the browser instead"},
        {{.kind = Kind::which}, "Touch the security key that you want to use.", "Use the browser instead"},
        {{.kind = Kind::pin, .triesLeft = 8}, "Enter your security key's PIN.", "PIN"},
        {{.kind = Kind::touch}, "Touch your security key.", "Use the browser instead"},
        {{.kind = Kind::account, .names = {"ada", "ben"}}, "Which account?", "ada"},
    };
    for (const auto& [prompt, text, focus] : prompts) {
        keys.ask(prompt);
        waitForText(text);
        screen.waitForFocus(focus);
        EXPECT_TRUE(screen.shows(QAccessible::Button, "Cancel")) << text;
        EXPECT_FALSE(screen.shows(QAccessible::EditableText, "Work email"));
    }
    screen.choose(QAccessible::Button, "ben");
    EXPECT_EQ(keys.accounts, std::vector{1});
    keys.ask({.kind = Kind::pin, .triesLeft = 1, .isWrong = true});
    screen.find(QAccessible::AlertMessage, "One try left. After that the security key locks.");
    screen.waitForFocus("PIN");
    screen.press(Qt::Key_Return);
    EXPECT_FALSE(screen.find(QAccessible::Button, "Continue")->isEnabled());
    send("PIN", "2468");
    EXPECT_EQ(keys.pins, std::vector<QByteArray>{"2468"});
    EXPECT_EQ(screen.find(QAccessible::EditableText, "PIN")->property("text"), "");
    screen.press(Qt::Key_Escape);
    screen.waitForFocus("Work email");
    begin();
    keys.ask({.kind = Kind::touch});
    screen.find(QAccessible::Notification, "Touch your security key.");
    screen.choose(QAccessible::Button, "Use the browser instead");
    screen.find(QAccessible::Heading, "Finish in your browser");
}

TEST_F(SignInTest, aSecondStepOffersAnotherCodeOrAKeyToEnter)
{
    signIn("ben@northlight.example", "reel-two");
    waitForText("Check your email");
    screen.choose(QAccessible::Button, "Send another code");
    waitForText("Nothing arrived? Another code is on its way.");
    screen.waitForFocus("Code from the email");
    screen.press(Qt::Key_Escape);
    screen.find(QAccessible::EditableText, "Work email");
    signIn("dov@northlight.example", "reel-four");
    waitForText("Add an authenticator");
    screen.find(QAccessible::Graphic, "QR code for your authenticator app");
    EXPECT_FALSE(screen.shows(QAccessible::EditableText, "Key"));
    screen.choose(QAccessible::Button, "Cannot scan it? Enter this key instead", Qt::Key_Space);
    EXPECT_EQ(screen.find(QAccessible::EditableText, "Key")->property("text"), login().secret());
}

TEST_F(SignInTest, aForgottenPasswordIsResetByALinkAndAWrongOneCorrected)
{
    send("Work email", "ada@northlight.example");
    screen.choose(QAccessible::Button, "Forgotten your password?");
    screen.choose(QAccessible::Button, "Send me a link");
    waitForText("If ada@northlight.example has an account, a link is on its way.");
    EXPECT_TRUE(screen.reads("Nothing has changed yet."));
    EXPECT_FALSE(screen.shows(QAccessible::Button, "Send me a link"));
    screen.waitForFocus("Back to sign in");
    screen.press(Qt::Key_Return);
    waitForText("Secured by WorkOS");
    signIn("ada@northlight.example", "wrong");
    screen.find(QAccessible::AlertMessage, "That email or password is not right.");
    fail(Operation::password, {.kind = Fault::Kind::stallAfterBody});
    send("Password", "reel-one");
    EXPECT_FALSE(screen.find(QAccessible::Button, "Signing in")->isEnabled());
    EXPECT_TRUE(screen.all(QAccessible::AlertMessage).isEmpty());
}

TEST_F(SignInTest, aFieldTakesNoLineBreaksAndSaysThatCapsLockIsOn)
{
    send("Work email", "ada@northlight.example");
    screen.waitForFocus("Password");
    QGuiApplication::clipboard()->setText("reel\n-one\r\n");
    screen.press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(login().password(), "reel-one");
    const std::tuple<const char*, Qt::KeyboardModifiers, bool> letters[] = {{"a", {}, false},
                                                                            {"A", {}, true},
                                                                            {"1", {}, true},
                                                                            {"a", Qt::ShiftModifier, true},
                                                                            {"A", Qt::ShiftModifier, false}};
    for (const auto& [letter, modifiers, isOn] : letters) {
        QKeyEvent press(QEvent::KeyPress, *letter, modifiers, letter);
        QGuiApplication::sendEvent(&screen.window(), &press);
        EXPECT_EQ(screen.reads("Caps Lock is on"), isOn) << letter << int(modifiers);
    }
}

TEST_F(SignInTest, whoTypesAheadAtTheAccessCodeDoorKeepsTheKeyboardWhereItIs)
{
    bool isLed = false;
    QObject listener;
    screen.waitForFocus("Work email");
    QObject::connect(&login(), &LoginView::focusWanted, &listener, [&] { isLed = true; });
    screen.choose(QAccessible::Button, "Sign in with an access code");
    enter("Work email", "hana@kestrel.example");
    enter("Password", "open-");
    screen.waitUntil([&] { return isLed; });
    screen.type("sesame");
    screen.press(Qt::Key_Return);
    waitForText("Choose a client");
    EXPECT_EQ(root().userEmail(), "hana@kestrel.example");
}

} // namespace
} // namespace palvera
