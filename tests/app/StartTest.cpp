#include "tests/app/Desktop.h"
#include "tests/support/QtPrinting.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

TEST(StartTest, offlineItComesToTheSignInScreen)
{
    Desktop desktop;
    desktop.server.reset();
    desktop.start();
    desktop.waitForScreen("login");
    desktop.screen.find(QAccessible::EditableText, "Work email");
}

TEST(StartTest, whoIsSignedInComesToTheClientsAndStaysSignedInForTheNextStart)
{
    Desktop desktop;
    desktop.start();
    desktop.signIn("ada@northlight.example", "reel-one");
    desktop.waitForText("Choose a client");
    desktop.start();
    desktop.waitForText("Choose a client");
    EXPECT_EQ(desktop.application().root().userEmail(), "ada@northlight.example");
}

TEST(StartTest, theWindowComesBackWhereItWas)
{
    Desktop desktop;
    desktop.start();
    desktop.screen.window().setGeometry(60, 50, 770, 590);
    desktop.screen.settle();
    desktop.start();
    EXPECT_EQ(desktop.screen.window().geometry(), QRect(60, 50, 770, 590));
}

} // namespace
} // namespace palvera
