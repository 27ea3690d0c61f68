#include "tests/app/Desktop.h"
#include "tests/support/QtPrinting.h"

#include <QJsonArray>

#include <gmock/gmock.h>

namespace palvera {
namespace {

using local::Fault;
using local::Operation;
using testing::ElementsAre;

/// The clients and their projects, for somebody who is signed in.
class PickersTest : public testing::Test {
protected:
    void SetUp() override
    {
        desktop.start();
        desktop.signIn("ada@northlight.example", "reel-one");
        desktop.waitForText("Choose a client");
        screen.waitUntil([&] { return !rows().isEmpty(); });
    }
    QStringList rows()
    {
        QStringList names;
        for (auto* row : screen.all(QAccessible::ListItem))
            names.append(Screen::nameOf(row));
        return names;
    }
    /// Goes down to that row and presses Enter.
    void choose(const QString& name)
    {
        screen.tabTo(QAccessible::ListItem, rows().first());
        for (int i = 0; i < rows().size() && Screen::nameOf(screen.focused()) != name; ++i)
            screen.press(Qt::Key_Down);
        ASSERT_EQ(Screen::nameOf(screen.focused()), name);
        screen.press(Qt::Key_Return);
    }
    void openProjects()
    {
        choose(rows().first());
        screen.waitUntil([&] { return screen.shows(QAccessible::ListItem, "Assets") && rows().size() > 1; });
    }

    Desktop desktop;
    Screen& screen = desktop.screen;
};

TEST_F(PickersTest, aClientIsChosenAndLeftForAnother)
{
    auto clients = rows();
    openProjects();
    EXPECT_EQ(rows().first(), "Assets");
    EXPECT_TRUE(screen.window().title().startsWith(clients.first()));
    screen.tabTo(QAccessible::Button, "Clients");
    screen.press(Qt::Key_Return);
    desktop.waitForScreen("orgs");
    desktop.waitForText("Choose a client");
    screen.waitUntil([&] { return rows() == clients; });
}

TEST_F(PickersTest, theSearchFiltersAsOneTypes)
{
    openProjects();
    screen.waitUntil([&] { return screen.focused() && Screen::roleOf(screen.focused()) == QAccessible::ListItem; });
    screen.type("salt");
    screen.waitUntil([&] { return rows().size() == 1; });
    EXPECT_EQ(rows(), QStringList("Salt"));
    screen.press(Qt::Key_Escape);
    screen.waitUntil([&] { return rows().size() > 2; });
    screen.type("no such project");
    desktop.waitForText("Nothing matches");
    screen.tabTo(QAccessible::Button, "Clear the search");
    screen.press(Qt::Key_Return);
    screen.waitUntil([&] { return screen.shows(QAccessible::ListItem, "Assets"); });
}

TEST_F(PickersTest, projectsThatCannotBeLoadedAreAskedForAgain)
{
    desktop.platform.faults().add(
        {.operation = Operation::projects, .times = 1, .fault = {.kind = Fault::Kind::status, .status = 500}});
    choose(rows().first());
    desktop.waitForText("Could not load your projects");
    screen.tabTo(QAccessible::Button, "Try again");
    screen.press(Qt::Key_Return);
    screen.waitUntil([&] { return screen.shows(QAccessible::ListItem, "Salt"); });
    EXPECT_FALSE(screen.reads("Could not load your projects"));
}

TEST_F(PickersTest, whatFailedForOneClientIsNotSaidOfTheNext)
{
    auto clients = rows();
    desktop.platform.faults().add(
        {.operation = Operation::projects, .times = 1, .fault = {.kind = Fault::Kind::status, .status = 500}});
    choose(clients.first());
    desktop.waitForText("Could not load your projects");
    screen.press(Qt::Key_Escape);
    desktop.waitForText("Choose a client");
    screen.waitUntil([&] { return rows() == clients; });
    desktop.platform.faults().add({.operation = Operation::projects, .fault = {.kind = Fault::Kind::stallAfterBody}});
    choose(clients.last());
    desktop.waitForText(clients.last());
    screen.waitUntil([&] { return desktop.application().root().projects()->isLoading(); });
    EXPECT_EQ(desktop.application().root().projects()->error(), "");
    EXPECT_FALSE(screen.reads("Could not load your projects"));
}

TEST_F(PickersTest, aClientWithoutProjectsStillOffersItsAssets)
{
    desktop.platform.faults().add(
        {.operation = Operation::projects,
         .fault = {.kind = Fault::Kind::overwrite, .members = QJsonObject{{"projects", QJsonArray()}}}});
    choose(rows().first());
    desktop.waitForText("No projects");
    EXPECT_TRUE(screen.reads("Nothing has been shared with you in this client yet."));
    screen.waitUntil([&] { return rows() == QStringList("Assets"); });
}

TEST_F(PickersTest, signingOutAndInAgainComesToTheClients)
{
    openProjects();
    screen.tabTo(QAccessible::Button, "Account");
    screen.press(Qt::Key_Return);
    screen.find(QAccessible::MenuItem, "ada@northlight.example");
    screen.find(QAccessible::MenuItem, "Sign out");
    for (int i = 0; i < 4 && desktop.application().root().key() != "login"; ++i) {
        screen.press(Qt::Key_Down);
        screen.press(Qt::Key_Return);
        screen.waitUntil([&] { return true; });
    }
    desktop.waitForScreen("login");
    desktop.signIn("ada@northlight.example", "reel-one");
    desktop.waitForText("Choose a client");
}

} // namespace
} // namespace palvera
