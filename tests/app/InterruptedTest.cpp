#include "tests/app/Desktop.h"

#include <QDir>
#include <QJsonArray>

namespace palvera {
namespace {

/// What becomes of a transfer that is cut off, in the real windows.
class InterruptedTest : public DesktopTest {
protected:
    InterruptedTest() : DesktopTest(4'000'000) { start(); } // so that one sees a file move

    /// Begins to send a file to a deliverable that is open.
    void beginTo(const QString& row, const QString& file)
    {
        openDeliverable(row);
        drop({sparseFile(file, 100'000'000)});
        screen.waitUntil([&] { return !transfers().items().empty() && transfers().items().back().sent > 0; });
        goToMainWindow(); // the panel has opened
    }
    void askToSignOut()
    {
        screen.choose(QAccessible::Button, "Account");
        screen.click(QAccessible::MenuItem, "Sign out");
        waitForText("One file is moving.");
        screen.waitForFocus("Stay signed in");
    }
    void expectItGoesOn()
    {
        screen.waitUntil([&] { return transfers().inFlightCount() == 1 && transfers().items().back().sent > 0; });
        EXPECT_EQ(platform.state()["uploads"].toArray().size(), 1) << "it was begun anew";
    }
};

TEST_F(InterruptedTest, signingOutAsksWhileFilesMoveAndWhoSignsInAgainGoesOn)
{
    beginTo("Picture master", "film.mov");
    askToSignOut();
    screen.press(Qt::Key_Escape);
    screen.waitUntil([&] { return !screen.reads("One file is moving."); });
    EXPECT_EQ(transfers().inFlightCount(), 1);
    askToSignOut();
    screen.press(Qt::Key_Tab);
    screen.press(Qt::Key_Return);
    screen.find(QAccessible::EditableText, "Work email");
    EXPECT_FALSE(transfers().isPanelOpen());
    EXPECT_TRUE(transfers().items().empty());
    signIn();
    screen.find(QAccessible::AlertMessage, "1 upload was cut off.");
    transfers().setPanelOpen(true);
    goToPanel();
    root().transfers()->setTab(TransfersView::Interrupted);
    screen.choose(QAccessible::ListItem, Screen::nameOf(screen.find(QAccessible::ListItem, {})));
    expectItGoesOn();
    goToMainWindow();
    EXPECT_FALSE(screen.reads("was cut off"));
}

TEST_F(InterruptedTest, anUploadThatWasCutOffIsAnnouncedAndKeptAndGoesOnOnceItsFileIsLocated)
{
    beginTo("Picture master", "film.mov");
    start();
    openClients();
    screen.find(QAccessible::AlertMessage, "1 upload was cut off.");
    screen.find(QAccessible::Button, "Transfers, 1 cut off");
    EXPECT_FALSE(transfers().isPanelOpen());
    screen.choose(QAccessible::Button, "Show");
    goToPanel();
    const QString row = "film.mov, Picture master · Northlight Pictures, 0 of 3 parts done";
    screen.choose(QAccessible::ListItem, row, Qt::Key_Delete);
    waitForText("Discard this upload?");
    screen.waitForFocus("Keep");
    screen.press(Qt::Key_Return);
    screen.waitForFocus(row);
    EXPECT_EQ(transfers().interrupted().count(), 1);
    goToMainWindow();
    QDir().mkdir(disk.filePath("folder")); // beside it, it would be found
    QFile::rename(disk.filePath("film.mov"), disk.filePath("folder/moved.mov"));
    openDeliverable("Picture master");
    screen.find(QAccessible::AlertMessage, {});
    screen.choose(QAccessible::Button, "Locate… film.mov"); // as of the last reading it need not be gone
    auto& interrupted = *root().transfers()->interrupted();
    interrupted.locate("salt-row-1", QUrl("https://elsewhere.test/film.mov"));
    waitForText("That is not a file on this computer.");
    screen.press(Qt::Key_Return);
    screen.waitUntil([&] { return !screen.reads("That did not work"); });
    screen.choose(QAccessible::Button, "Locate… film.mov");
    interrupted.locate("salt-row-1", sparseFile("another.mov", 5));
    waitForText("That is another file");
    screen.waitForFocus("Cancel");
    screen.press(Qt::Key_Escape);
    screen.choose(QAccessible::Button, "Locate… film.mov");
    interrupted.locate("salt-row-1", QUrl::fromLocalFile(disk.filePath("folder/moved.mov")));
    waitForText("Is this the same file?");
    screen.press(Qt::Key_Return);
    waitForText("Uploading");
    expectItGoesOn();
}

} // namespace
} // namespace palvera
