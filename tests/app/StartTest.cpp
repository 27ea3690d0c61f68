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

TEST(StartTest, aSecondStartBringsTheWindowBack)
{
    Desktop desktop;
    desktop.start();
    desktop.screen.window().setWindowStates(Qt::WindowMinimized);
    desktop.application().raise();
    desktop.screen.takeWarnings(); // where there is no display, nothing can be put in front
    desktop.screen.waitUntil([&] { return desktop.screen.window().isActive(); });
    EXPECT_FALSE(desktop.screen.window().windowStates().testFlag(Qt::WindowMinimized));
}

TEST(FloatingWindowTest, keepsItsWindowAboveTheOthers)
{
    Screen screen;
    screen.showContent("FloatingWindow {}", "import Palvera.App");
    EXPECT_TRUE(screen.window().flags().testFlag(Qt::WindowStaysOnTopHint));
}

} // namespace
} // namespace palvera
