#include "tests/app/Desktop.h"

namespace palvera {
namespace {

constexpr auto button = QAccessible::Button;

/// Where the keyboard is, wherever one goes.
struct FocusTest : DesktopTest {
    FocusTest() : DesktopTest(4'000'000) { start(); }

    /// The name of what has the keyboard, once that is something that one sees.
    std::string place()
    {
        screen.waitUntil([this] {
            screen.waitForFrame();
            auto* item = screen.focused();
            return item && item->isVisible() && item->isEnabled() && !Screen::nameOf(item).isEmpty() &&
                   Screen::roleOf(item) != QAccessible::List; // but for a row of it
        });
        return Screen::nameOf(screen.focused()).toStdString();
    }
    /// The same, once it is there: a page that comes takes a moment.
    void walkFrom(const QString& name)
    {
        screen.waitForFocus(name);
        walk();
    }
    /// Tabs all the way round; where that begins.
    std::string walk()
    {
        const auto first = place();
        QList<QQuickItem*> stops;
        for (; !stops.contains(screen.focused()) && !HasFailure(); place()) {
            stops.append(screen.focused());
            screen.press(Qt::Key_Tab);
        }
        EXPECT_EQ(screen.focused(), stops.value(0)) << "from " << first << " round to " << place();
        EXPECT_GT(stops.size(), 2) << first;
        return first;
    }
};

TEST_F(FocusTest, isSeenAndNamedOnEveryScreenAllTheWayRound)
{
    screen.find(QAccessible::EditableText, "Work email");
    walkFrom("Work email");
    login().forgotPassword();
    screen.find(button, "Back to sign in");
    walkFrom("Work email");
    send("Work email", "ada@northlight.example");
    screen.waitForFocus("Back to sign in"); // the field and the button are gone
    screen.press(Qt::Key_Return);
    for (const auto& [account, password, field] :
         {std::tuple("ben", "reel-two", "Code from the email"), std::tuple("cleo", "reel-three", "Code from the app"),
          std::tuple("dov", "reel-four", "Code from the app")}) {
        screen.waitForFocus("Work email");
        signIn(QString(account) + "@northlight.example", password);
        walkFrom(field);
        screen.press(Qt::Key_Escape);
    }
    openClients();
    walkFrom("Northlight Pictures");
    screen.press(Qt::Key_Return);
    screen.find(QAccessible::ListItem, "Salt");
    walkFrom("Assets");
    screen.press(Qt::Key_Return);
    screen.find(QAccessible::ListItem, "Uploads");
    walkFrom("Uploads");
    screen.press(Qt::Key_Escape);
    screen.waitForFocus("Assets");
    for (const auto* row : {"Salt", "Picture master"}) {
        screen.find(QAccessible::ListItem, row);
        place();
        screen.type("nothing like it");
        waitForText("Nothing matches");
        for (auto key : {Qt::Key_Down, Qt::Key_Return})
            screen.press(key);
        EXPECT_TRUE(screen.focused()->property("text") == "nothing like it") << screen.focused();
        walk();
        screen.choose(button, "Clear the search");
        EXPECT_EQ(place(), QString("Find a %1").arg(row[0] == 'S' ? "project" : "deliverable").toStdString());
        screen.type(row);
        screen.waitUntil([&] { return screen.all(QAccessible::ListItem).value(0) && rows().first() == row; });
        screen.press(Qt::Key_Down);
        walkFrom(row);
        screen.press(Qt::Key_Return);
    }
    screen.find(button, "Choose a file");
    walkFrom("Choose a file");
    screen.press(Qt::Key_Escape);
    screen.waitForFocus("Picture master");
}

TEST_F(FocusTest, comesBackFromEveryQuestionAndFromWhatIsGone)
{
    const auto leave = [this](const QString& title) {
        waitForText(title);
        screen.waitForFrame();
        const auto dialogs = screen.all(QAccessible::Dialog);
        EXPECT_TRUE(title.startsWith("Choose") || // Qt's own
                    dialogs.size() == 1 && !Screen::nameOf(dialogs[0]).isEmpty() &&
                        QAccessible::queryAccessibleInterface(dialogs[0])->state().modal)
            << title.toStdString();
        screen.press(Qt::Key_Escape);
        screen.waitUntil([&] { return !screen.reads(title); });
        return place();
    };
    openDeliverable("Textless elements");
    drop({sparseFile("too long.mov", 4'000'000'001)});
    EXPECT_EQ(leave("Send a full-length file"), "Choose a file");
    screen.choose(button, "Menu");
    screen.choose(QAccessible::MenuItem, "About Palvera");
    EXPECT_EQ(leave("Version 1.2.3"), "Menu");
    for (const auto& [key, modifier, title] : {std::tuple(Qt::Key_Comma, Qt::ControlModifier, "Uploads at once"),
                                               std::tuple(Qt::Key_Question, Qt::ControlModifier, "Search the list"),
                                               std::tuple(Qt::Key_F1, Qt::NoModifier, "Sending a master")}) {
        screen.press(key, modifier);
        EXPECT_EQ(leave(title), "Menu");
    }
    screen.choose(button, "Choose a file");
    EXPECT_EQ(leave("Choose a file to send"), "Choose a file");
    drop({sparseFile("film.mov", 400'000'000)});
    screen.waitUntil([this] { return transfers().inFlightCount() == 1; });
    goToPanel();
    EXPECT_TRUE(walk().starts_with("Textless elements, film.mov"));
    goToMainWindow();
    place();
    screen.choose(button, "Stop film.mov");
    EXPECT_EQ(leave("Stop this upload?"), "Stop film.mov");
    screen.window().close();
    EXPECT_EQ(leave("Quit while files are moving?"), "Stop film.mov");
    screen.press(Qt::Key_Return);
    screen.waitForFocus("Keep going");
    screen.press(Qt::Key_Tab);
    screen.press(Qt::Key_Return);
    screen.waitForFocus("Choose a file");
}

} // namespace
} // namespace palvera
