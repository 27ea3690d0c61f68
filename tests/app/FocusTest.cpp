#include "tests/app/Desktop.h"

namespace palvera {
namespace {

constexpr auto button = QAccessible::Button;

/// Where the keyboard is, wherever one goes. That it is seen and named on each screen, and comes back from each
/// question, is looked at where each is shown.
struct FocusTest : DesktopTest {
    FocusTest() : DesktopTest(4'000'000) { start(); }
};

TEST_F(FocusTest, goesAlongFromPageToPageAndIntoLists)
{
    screen.find(QAccessible::EditableText, "Work email");
    login().forgotPassword();
    screen.find(button, "Back to sign in");
    send("Work email", "ada@northlight.example");
    screen.waitForFocus("Back to sign in"); // the field and the button are gone
    screen.press(Qt::Key_Return);
    screen.waitForFocus("Work email");
    signIn("ben@northlight.example", "reel-two");
    screen.waitForFocus("Code from the email");
    screen.press(Qt::Key_Escape);
    openClients();
    screen.waitForFocus("Northlight Pictures");
    screen.press(Qt::Key_Return);
    screen.waitForFocus("Assets");
    screen.press(Qt::Key_Return);
    screen.waitForFocus("Uploads");
    screen.press(Qt::Key_Escape);
    screen.waitForFocus("Assets");
    for (const auto* row : {"Salt", "Picture master"}) {
        screen.find(QAccessible::ListItem, row);
        screen.place();
        screen.type("nothing like it");
        waitForText("Nothing matches");
        for (auto key : {Qt::Key_Down, Qt::Key_Return})
            screen.press(key);
        EXPECT_TRUE(screen.focused()->property("text") == "nothing like it") << screen.focused();
        EXPECT_GT(screen.walk(), 4);
        screen.choose(button, "Clear the search");
        EXPECT_EQ(screen.place(), QString("Find a %1").arg(row[0] == 'S' ? "project" : "deliverable"));
        screen.type(row);
        screen.waitUntil([&] { return screen.all(QAccessible::ListItem).value(0) && rows().first() == row; });
        screen.press(Qt::Key_Down);
        screen.waitForFocus(row);
        screen.press(Qt::Key_Return);
    }
    screen.waitForFocus("Choose a file");
    screen.choose(button, "Deliverables");
    screen.waitForFocus("Picture master");
    screen.place();
    screen.press(Qt::Key_Return);
    screen.waitForFocus("Choose a file"); // not where the page was left
}

TEST_F(FocusTest, isInAMenuAndAListOfChoicesAsLongAsTheyAreOpen)
{
    fail(local::Operation::deliverables, {.latency = std::chrono::seconds(1)}); // the page is there before them
    openDeliverables();
    screen.waitUntil([this] { return screen.all(button, "Menu").size() == 1; }); // the page before has gone
    screen.click(button, "Menu");
    screen.find(QAccessible::MenuItem, "Help, F1");
    screen.waitForFocus("Menu");
    EXPECT_EQ(Screen::roleOf(screen.focused()), QAccessible::PopupMenu) << "the mouse chooses";
    screen.press(Qt::Key_Escape);
    screen.press(Qt::Key_F10);
    screen.waitForFocus("Settings…, Ctrl+,");
    screen.press(Qt::Key_Escape);
    screen.choose(button, "Account");
    screen.waitForFocus("Sign out");
    for (auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent held(type, Qt::Key_Return, Qt::NoModifier, {}, true);
        QCoreApplication::sendEvent(&screen.window(), &held);
    }
    EXPECT_EQ(screen.place(), "Sign out"); // which was not meant
    screen.press(Qt::Key_Escape);
    screen.choose(QAccessible::ComboBox, "Status: All", Qt::Key_Space);
    screen.find(QAccessible::List, "Status");
    screen.waitForFocus("All");
    screen.press(Qt::Key_Tab);
    EXPECT_EQ(screen.place(), "Language: All");
    screen.waitUntil([this] { return screen.all(QAccessible::List, "Status").isEmpty(); });
}

TEST_F(FocusTest, comesBackFromWhatIsGone)
{
    openDeliverable("Textless elements");
    screen.choose(button, "Choose a file");
    waitForText("Choose a file to send"); // in Qt's own dialog
    screen.press(Qt::Key_Escape);
    screen.waitForFocus("Choose a file");
    drop({sparseFile("film.mov", 400'000'000)});
    screen.waitUntil([this] { return transfers().inFlightCount() == 1; });
    goToMainWindow();
    screen.place();
    screen.choose(button, "Stop film.mov");
    screen.waitForFocus("Keep going");
    screen.press(Qt::Key_Tab);
    screen.press(Qt::Key_Return);
    screen.waitForFocus("Choose a file");
}

} // namespace
} // namespace palvera
