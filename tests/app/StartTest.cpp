#include "app/Language.h"
#include "tests/app/Desktop.h"

#include <QQmlIncubationController>
#include <QSettings>

namespace palvera {
namespace {

using StartTest = DesktopTest;

TEST_F(StartTest, theNextStartKnowsWhoIsSignedInAndWhereTheWindowWasAndWarnsOfAnOpenService)
{
    start();
    screen.find(QAccessible::EditableText, "Work email");
    EXPECT_FALSE(screen.shows(QAccessible::Button, "Sign in with an access code")) << "nobody holds Alt";
    EXPECT_FALSE(screen.reads("Not encrypted"));
    signIn();
    waitForText("Choose a client");
    const auto stored = [this] {
        return QSettings(disk.filePath("palvera.conf"), QSettings::IniFormat).value("pv.window");
    };
    screen.window().setGeometry(60, 50, 770, 590);
    screen.waitUntil([&] { return stored() == "58,48,770,590"; }); // within its frame; a crash may come
    start();
    EXPECT_EQ(screen.window().geometry(), QRect(60, 50, 770, 590));
    waitForText("Choose a client");
    EXPECT_EQ(root().userEmail(), "ada@northlight.example");
    const ScopedVariable far("PV_API", "http://0.0.0.0:1/api"); // this machine, though it does not look it
    start();
    waitForText("Not encrypted");
}

TEST_F(StartTest, speaksTheFirstLanguageOfTheUserThatItKnows)
{
    for (const auto& [wanted, email] : {std::pair(QStringList{"ja-JP", "de-AT", "fr"}, "Geschäftliche E-Mail-Adresse"),
                                        std::pair(QStringList{"en-GB", "de"}, "Work email")}) {
        const Language language(wanted);
        start();
        screen.find(QAccessible::EditableText, email);
        finish();
    }
}

TEST_F(StartTest, aBrowserThatComesBackTooEarlyIsToldOfAndASecondStartBringsTheWindowBack)
{
    fail(local::Operation::me, {.latency = std::chrono::milliseconds(300)});
    start();
    ASSERT_EQ(root().key(), "loading");
    application().arrive({.addresses = {"palvera://sign-in?grant=unasked"}});
    screen.takeWarnings(); // where there is no display, nothing can be put in front
    screen.find(QAccessible::AlertMessage, "That sign-in was not started here, so it was not used.");
    screen.window().setWindowStates(Qt::WindowMinimized);
    application().arrive({});
    screen.takeWarnings();
    screen.waitUntil([&] { return screen.window().isActive(); });
    EXPECT_FALSE(screen.window().windowStates().testFlag(Qt::WindowMinimized));
}

TEST_F(StartTest, textsGrowWithTheDesktopAndByTheKeysOfBothWindowsAndAreAsLargeAtTheNextStart)
{
    start();
    const auto height = [this] { return screen.find(QAccessible::Heading, "Sign in")->height(); };
    const auto usual = height();
    const auto grows = [&](double times) {
        screen.waitUntil([&] { return std::abs(height() / usual - times) < 0.06; });
    };
    application().setAppearance({.textScale = 1.5});
    grows(1.5);
    transfers().setPanelOpen(true);
    goToPanel();
    for (int i = 0; i < 9; ++i)
        screen.press(i % 2 ? Qt::Key_Equal : Qt::Key_Plus, Qt::ControlModifier);
    screen.press(Qt::Key_Minus, Qt::ControlModifier);
    screen.takeWarnings(); // where there is no display, nobody hears of a window's limits
    EXPECT_GT(screen.window().width(), 700) << "or its tabs would be cut off";
    goToMainWindow();
    grows(1.5 * 1.75);
    start();
    grows(1.75);
    screen.press(Qt::Key_0, Qt::ControlModifier);
    grows(1);
    start();
    grows(1);
}

TEST_F(StartTest, canBeEndedWhileAPageIsStillBeingMade)
{
    QQmlIncubationController idle; // as a window's is while it is hidden
    start();
    openClients();
    screen.click(QAccessible::ListItem, "Northlight Pictures");
    screen.find(QAccessible::ListItem, "Salt");
    qmlEngine(&screen.window())->setIncubationController(&idle);
    screen.click(QAccessible::ListItem, "Salt");
    screen.waitUntil([&] { return idle.incubatingObjectCount() > 0; });
    idle.incubateFor(1);
    finish(); // Qt warns of what is left half made
}

TEST(PanelPlaceTest, itComesBackToWhereTheUserHasPutIt)
{
    Screen screen;
    screen.showContent("Item {}");
    QQuickWindow panel;
    panel.resize(300, 200);
    PanelPlace place(panel, screen.window(), [] { return 50; }, {});
    const auto openAgain = [&] {
        screen.settle();
        panel.hide();
        panel.show();
        screen.settle();
        return panel.framePosition();
    };
    const auto chosen = openAgain();
    panel.setFramePosition({10, 30});
    EXPECT_EQ(openAgain(), QPoint(10, 30));
    panel.setFramePosition({90'000, 30});
    EXPECT_EQ(openAgain(), chosen) << "nobody could reach it there";
}

} // namespace
} // namespace palvera
