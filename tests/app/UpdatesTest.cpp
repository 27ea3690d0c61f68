#include "tests/app/Desktop.h"

namespace palvera {
namespace {

using namespace std::chrono_literals;
using local::Operation;
constexpr auto button = QAccessible::Button;

/// Build 45, and 46 in the feed, whose image comes at 300,000 bytes in a second.
struct UpdatesTest : testing::Test, Desktop {
    UpdatesTest() : Desktop(300'000, {.image = imageFile(), .build = "46", .notes = "Faster."})
    {
        feed = server->serviceAddress() + "/updates/latest.json";
    }
    static QString imageFile()
    {
        static const QTemporaryDir folder;
        const auto path = folder.filePath("Palvera-1.3.dmg");
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.resize(200'000));
        return path;
    }
    /// What a menu's "Check for Updates…", or a press of its keys, leads to.
    void expectAlert(const QString& title)
    {
        waitForText(title);
        screen.waitForFocus("OK");
        screen.press(Qt::Key_Escape);
        screen.waitUntil([&] { return !screen.reads(title); });
    }
};

TEST_F(UpdatesTest, isSeenAndDrivenByThePillOnEveryScreen)
{
    installer.answer.reset();
    start();
    screen.find(button, "Install"); // beside the sign-in
    openClients();
    auto* pill = screen.tabTo(button, "Install");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(pill)->text(QAccessible::Description),
              "Palvera 1.3, build 46, is available.\n\nFaster.");
    screen.press(Qt::Key_Return);
    QSet<QString> seen;
    screen.waitUntil([&] {
        for (const auto& name : screen.names(button))
            if (name.endsWith('%'))
                seen.insert(name);
        return screen.shows(button, "Checking");
    });
    EXPECT_GT(seen.size(), 5) << "of a percent each";
    EXPECT_EQ(screen.focused(), pill) << Screen::nameOf(screen.focused()).toStdString();
    installer.calls.back().reply({});
    screen.find(button, "Restart");
    screen.click(QAccessible::ListItem, "Northlight Pictures");
    screen.find(QAccessible::ListItem, "Salt");
    screen.find(button, "Restart");
    screen.click(QAccessible::ListItem, "Salt");
    screen.find(QAccessible::ListItem, "Picture master");
    screen.find(button, "Restart");
    openRow("Picture master");
    screen.find(button, "Restart");

    drop({sparseFile("master.mov", 50'000'000)});
    screen.waitUntil([&] { return transfers().inFlightCount() == 1; });
    goToMainWindow();
    screen.choose(button, "Restart");
    waitForText("A transfer is still moving. Uploads stop and wait under Interrupted, and pick up from the part they "
                "reached.");
    screen.waitForFocus("Not yet");
    screen.press(Qt::Key_Escape);
    screen.waitUntil([&] { return !screen.reads("Restart Palvera now?"); });
    EXPECT_EQ(installer.calls.size(), 1u);
}

TEST_F(UpdatesTest, aFailureIsWarnedOfAndStaysReadableInTheSheetAboutTheProgram)
{
    installer.answer = "The update is damaged.";
    start();
    openClients();
    screen.choose(button, "Install");
    screen.find(button, "Retry update");
    fail(Operation::feed, {.kind = local::Fault::Kind::status}, 100);
    screen.choose(button, "Menu");
    screen.choose(QAccessible::MenuItem, "About Palvera");
    waitForText("Version 1.2.3 (45)");
    screen.waitForFocus("Close");
    EXPECT_TRUE(screen.reads("The update is damaged.")) << screen.texts().join('\n').toStdString();
    screen.choose(button, "Check for Updates…");
    screen.waitUntil([&] { return !screen.reads("Version 1.2.3 (45)"); });
    expectAlert("Could not check for updates");
}

TEST_F(UpdatesTest, ctrlUChecksWhereverOneIsAndSaysWhatCameOfIt)
{
    feed.replace("latest.json", "none.json");
    fail(Operation::config, {.latency = 700ms});
    start();
    screen.waitUntil([&] { return root().key() == "login"; });
    screen.press(Qt::Key_U, Qt::ControlModifier);
    screen.waitForFocus("OK");
    screen.find(QAccessible::EditableText, "Work email"); // which comes later, and wants the keyboard
    screen.settle();
    expectAlert("Could not check for updates");
    screen.choose(button, "Build 1.2.3 (45)"); // the sheet, for whoever is not signed in
    waitForText("None yet: the update feed does not answer.");
    screen.press(Qt::Key_Escape);
    feed.replace("none.json", "latest.json");
    fail(Operation::feed, {.latency = 10s}, 100);
    start();
    openClients();
    screen.press(Qt::Key_U, Qt::ControlModifier);
    waitForText("Checking for updates…");
    screen.choose(button, "Cancel");
    screen.waitUntil([&] { return !screen.reads("Checking for updates…"); });
    EXPECT_EQ(application().updater().alert(), std::nullopt);
    feed.clear();
    start();
    openClients();
    transfers().setPanelOpen(true);
    goToPanel();
    screen.press(Qt::Key_U, Qt::ControlModifier);
    goToMainWindow();
    expectAlert("Updates of this copy come with those of the system.");
}

} // namespace
} // namespace palvera
