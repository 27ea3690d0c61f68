#include "tests/app/Desktop.h"

#include <QDir>
#include <QJsonArray>

namespace palvera {
namespace {

using local::Fault;
using local::Operation;

/// The clients and their projects.
class PickersTest : public DesktopTest {
protected:
    PickersTest() { start(); }

    void openProjects()
    {
        openClients();
        screen.choose(QAccessible::ListItem, "Northlight Pictures");
        screen.find(QAccessible::ListItem, "Salt");
    }
};

TEST_F(PickersTest, clientsThatAreOnTheirWayAreNotSaidToBeNoneNorASignInToBeKept)
{
    QDir(disk.path()).mkdir("cookies"); // where the file belongs
    fail(Operation::orgs, {.kind = Fault::Kind::stallAfterBody});
    openClients();
    waitForText("Loading your clients…");
    EXPECT_FALSE(screen.reads("No clients"));
    screen.find(QAccessible::AlertMessage, "Signed in, but only for now: “cookies” cannot be written: Is a directory.");
    screen.choose(QAccessible::Button,
                  "Dismiss: Signed in, but only for now: “cookies” cannot be written: Is a directory.");
    EXPECT_FALSE(screen.reads("only for now"));
}

TEST_F(PickersTest, aClientIsLeftForAnotherOrForTheSignIn)
{
    fail(Operation::projects, {.kind = Fault::Kind::overwrite, .members = {{"projects", QJsonArray()}}});
    openClients();
    screen.choose(QAccessible::ListItem, "Northlight Pictures");
    waitForText("Nothing has been shared with you in this client yet.");
    screen.waitUntil([&] { return rows() == QStringList("Assets"); });
    screen.choose(QAccessible::Button, "Clients");
    for (const auto* way : {"Clients", "Choose another client"}) {
        openProjects();
        EXPECT_EQ(rows().first(), "Assets");
        EXPECT_TRUE(screen.window().title().startsWith("Northlight Pictures"));
        screen.choose(QAccessible::Button, way);
        waitForText("Choose a client");
        screen.waitUntil([&] { return rows().contains("Northlight Pictures") && rows().size() > 1; });
    }
    openProjects();
    screen.choose(QAccessible::ComboBox, "Order: Platform", Qt::Key_Space);
    screen.waitForFocus("Platform");
    for (const auto key : {Qt::Key_Down, Qt::Key_Return})
        screen.press(key);
    screen.waitForFocus("Order: Name");
    const QStringList byName{"Assets", "Not yet begun", "Paper Moon Rising", "Salt", "The Long Tide"};
    screen.waitUntil([&] { return rows() == byName; });
    screen.choose(QAccessible::Button, "Account");
    screen.find(QAccessible::MenuItem, "ada@northlight.example");
    screen.press(Qt::Key_Escape);
    screen.waitForFocus("Account");
    screen.press(Qt::Key_Return);
    screen.find(QAccessible::MenuItem, "Sign out");
    for (int row = 0; row < 3; ++row) // past who is signed in, which only tells
        screen.press(Qt::Key_Down);
    screen.press(Qt::Key_Return);
    screen.find(QAccessible::EditableText, "Work email");
}

TEST_F(PickersTest, whatCannotBeLoadedIsAskedForAgain)
{
    const std::tuple<Operation, const char*, const char*> cases[] = {
        {Operation::orgs, "Could not load your clients", "Northlight Pictures"},
        {Operation::projects, "Could not load your projects", "Salt"},
        {Operation::deliverables, "Could not load the deliverables", "Picture master"},
    };
    for (const auto& [operation, said, row] : cases)
        fail(operation, {.kind = Fault::Kind::status, .status = 500});
    signIn();
    for (const auto& [operation, said, row] : cases) {
        waitForText(said);
        screen.choose(QAccessible::Button, "Try again");
        screen.click(QAccessible::ListItem, row);
        screen.waitUntil([&] { return !screen.reads(said); });
    }
}

} // namespace
} // namespace palvera
