#include "tests/app/Desktop.h"
#include "tests/support/QtPrinting.h"

#include <QJsonArray>

#include <gmock/gmock.h>

namespace palvera {
namespace {

using local::Fault;
using local::Operation;

/// The everyday path in the real windows: a project, a deliverable, a file and the panel.
class DeliveryTest : public testing::Test {
protected:
    explicit DeliveryTest(qint64 bytesPerSecond = 0) : desktop(bytesPerSecond) {}
    void SetUp() override { desktop.start(); }

    QStringList rows() const
    {
        QStringList names;
        for (auto* row : screen.all(QAccessible::ListItem))
            names.append(Screen::nameOf(row));
        return names;
    }
    bool drop(const QUrl& file)
    {
        auto* zone = screen.find(QAccessible::Grouping, "Drop a file here");
        return zone && screen.drop(zone, {file});
    }
    const Item* item(std::size_t index) { return &desktop.transfers().items().at(index); }
    bool waitForState(const std::string& state)
    {
        return screen.waitUntil([&] {
            const auto& items = desktop.transfers().items();
            return !items.empty() && nameOf(items.back().state).toStdString() == state;
        });
    }

    Desktop desktop;
    Screen& screen = desktop.screen;
};

/// The same over connections that take their time.
class SlowDeliveryTest : public DeliveryTest {
protected:
    SlowDeliveryTest() : DeliveryTest(4'000'000) {}
};

TEST_F(DeliveryTest, theListIsNarrowedDownWithTheKeyboardAlone)
{
    desktop.openDeliverables();
    screen.waitUntil([&] { return screen.focused() && Screen::roleOf(screen.focused()) == QAccessible::ListItem; });
    screen.type("key art");
    screen.waitUntil([&] { return rows() == QStringList("Key art"); });
    EXPECT_TRUE(screen.reads("1 of 21"));
    screen.press(Qt::Key_Escape);
    screen.waitUntil([&] { return rows().size() > 5; });
    screen.tabTo(QAccessible::ComboBox, "Family: All");
    screen.press(Qt::Key_Space);
    screen.find(QAccessible::MenuItem, "Subtitles");
    screen.press(Qt::Key_End);
    screen.press(Qt::Key_Return);
    screen.find(QAccessible::ComboBox, "Family: Video");
    screen.waitUntil([&] { return rows().size() == 6; });
    screen.tabTo(QAccessible::Button, "Clear");
    screen.press(Qt::Key_Return);
    screen.waitUntil([&] { return screen.reads("21 of 21"); });
    EXPECT_FALSE(screen.shows(QAccessible::Button, "Clear"));
    desktop.enter("Find a deliverable", "nothing like it");
    desktop.waitForText("Nothing matches");
    EXPECT_TRUE(screen.reads("0 of 21"));
}

TEST_F(DeliveryTest, aRowIsOpenedWithEnterAndLeftWithEscapeToWhereOneWas)
{
    desktop.openDeliverables();
    screen.tabTo(QAccessible::ListItem, "Picture master");
    for (int i = 0; i < 4; ++i)
        screen.press(Qt::Key_Down);
    auto name = Screen::nameOf(screen.focused());
    screen.press(Qt::Key_Return);
    screen.find(QAccessible::Heading, name);
    screen.find(QAccessible::Button, "Choose a file");
    screen.press(Qt::Key_Escape);
    screen.waitUntil([&] { return screen.focused() && Screen::roleOf(screen.focused()) == QAccessible::ListItem; });
    EXPECT_EQ(Screen::nameOf(screen.focused()), name);
    screen.press(Qt::Key_Escape);
    screen.waitUntil([&] { return desktop.application().root().page() == RootView::Page::Projects; });
    screen.find(QAccessible::ListItem, "Assets");
}

TEST_F(DeliveryTest, aDroppedFileGoesUpAndIsSeenFiled)
{
    desktop.openDeliverable("Picture master");
    EXPECT_TRUE(drop(desktop.sparseFile("Salt – 100% ünïcode #1.mov", 3'000'000)));
    waitForState("done");
    screen.find(QAccessible::Heading, "Filed against this deliverable");
    EXPECT_TRUE(screen.reads("Salt – 100% ünïcode #1.mov"));
    EXPECT_TRUE(desktop.transfers().isPanelOpen()) << "it opens by itself";
    desktop.goToPanel();
    screen.click(screen.find(QAccessible::PageTab, "Finished"));
    screen.waitUntil([&] { return rows().size() == 1; });
    EXPECT_TRUE(rows().first().contains("done")) << rows().first().toStdString();
    EXPECT_TRUE(screen.reads("Clear"));
    screen.click(screen.find(QAccessible::Button, "Clear"));
    desktop.waitForText("Nothing finished yet");
}

TEST_F(DeliveryTest, whatIsNoFileIsRefusedInWords)
{
    desktop.openDeliverable("Picture master");
    drop(QUrl::fromLocalFile(desktop.disk.path()));
    screen.waitUntil([&] { return !screen.all(QAccessible::AlertMessage).isEmpty(); });
    EXPECT_TRUE(screen.reads("is a folder. Drop the file itself."));
    EXPECT_FALSE(screen.drop(screen.find(QAccessible::Grouping, "Drop a file here"), {}));
    desktop.waitForText("The file did not arrive from the other program.");
    EXPECT_TRUE(desktop.transfers().items().empty());
}

TEST_F(DeliveryTest, theFiledFileIsDownloadedIntoTheRememberedFolder)
{
    QDir(desktop.disk.path()).mkdir("downloads");
    desktop.run(desktop.application().session().setDownloadsFolder(desktop.disk.filePath("downloads")));
    desktop.openDeliverable("Forced narrative");
    screen.click(screen.find(QAccessible::Button, "Download"));
    waitForState("done");
    EXPECT_EQ(QFile(desktop.disk.filePath("downloads/salt_9 v2.srt")).size(), item(0)->total);
}

TEST_F(DeliveryTest, aFullLengthFileForTextlessElementsIsAskedAboutAtTheLimit)
{
    desktop.platform.faults().add(
        {.operation = Operation::start, .times = 0, .fault = {.latency = std::chrono::hours(1)}});
    desktop.openDeliverable("Textless elements");
    drop(desktop.sparseFile("too long.mov", 4'000'000'001));
    desktop.waitForText("Send a full-length file to Textless elements?");
    screen.waitUntil([&] { return screen.focused() && Screen::nameOf(screen.focused()) == "Cancel"; });
    screen.press(Qt::Key_Return);
    screen.waitUntil([&] { return !screen.reads("Send a full-length file"); });
    EXPECT_TRUE(desktop.transfers().items().empty());
    drop(desktop.sparseFile("long enough.mov", 4'000'000'000));
    screen.waitUntil([&] { return desktop.transfers().items().size() == 1; });
    EXPECT_FALSE(screen.reads("Send a full-length file"));
}

TEST_F(DeliveryTest, aDoubtIsAskedAboutAndConfirmed)
{
    desktop.platform.faults().add(
        {.operation = Operation::complete,
         .times = 1,
         .fault = {
             .kind = Fault::Kind::status, .status = 409, .error = "delivery_doubt", .message = "It is very short."}});
    desktop.openDeliverable("Picture master");
    drop(desktop.sparseFile("short.mov", 1'000'000));
    desktop.waitForText("Check this file before it goes");
    EXPECT_TRUE(screen.reads("Going to Salt · Picture master\n\nIt is very short."));
    EXPECT_TRUE(desktop.transfers().items().empty());
    desktop.goToMainWindow();
    screen.tabTo(QAccessible::Button, "Send anyway");
    screen.press(Qt::Key_Return);
    waitForState("done");
    EXPECT_FALSE(screen.reads("Check this file before it goes"));
}

TEST_F(DeliveryTest, theDesktopsDialogIsOpenedForAFile)
{
    desktop.openDeliverable("Picture master");
    screen.click(screen.find(QAccessible::Button, "Choose a file"));
    screen.waitUntil([&] { return desktop.application().root().deliverable()->isPicking(); });
    desktop.application().root().deliverable()->pick(desktop.sparseFile("chosen.mov", 1000));
    waitForState("done");
}

TEST_F(DeliveryTest, whoLooksElsewhereIsToldOfTheEnd)
{
    desktop.openDeliverable("Picture master");
    desktop.transfers().setPanelOpen(true);
    drop(desktop.sparseFile("watched.mov", 1000));
    waitForState("done");
    EXPECT_EQ(desktop.notices.titles, QStringList());
    desktop.isWatched = false;
    desktop.transfers().addUpload({.file = desktop.sparseFile("unseen.mov", 1000).toLocalFile(),
                                   .orgId = "org-northlight",
                                   .projectId = "salt",
                                   .deliverable = {.id = "salt-row-5"}});
    screen.waitUntil([&] { return !desktop.notices.titles.isEmpty(); });
    EXPECT_EQ(desktop.notices.titles, QStringList("Transfers finished"));
}

TEST_F(DeliveryTest, thousandsOfRowsAreFilteredWithoutHoldingUpTheWindow)
{
    QJsonArray many;
    for (int i = 0; i < 2000; ++i)
        many.append(QJsonObject{{"id", QString::number(i)},
                                {"label", QString("Reel %1 of %2").arg(i).arg(i % 7)},
                                {"family", i % 2 ? "video" : "audio"},
                                {"status", "awaiting"}});
    desktop.platform.faults().add(
        {.operation = Operation::deliverables,
         .times = 0,
         .fault = {.kind = Fault::Kind::overwrite, .members = QJsonObject{{"deliverables", many}}}});
    desktop.signIn("ada@northlight.example", "reel-one");
    desktop.waitForText("Choose a client");
    screen.click(screen.find(QAccessible::ListItem, "Northlight Pictures"));
    screen.click(screen.find(QAccessible::ListItem, "Salt"));
    desktop.waitForText("2000 of 2000");
    desktop.enter("Find a deliverable", "of 3");
    desktop.waitForText("286 of 2000");
    screen.press(Qt::Key_Escape);
    desktop.waitForText("2000 of 2000");
    screen.tabTo(QAccessible::ListItem, "Reel 0 of 0");
    screen.press(Qt::Key_End);
    screen.waitUntil([&] { return Screen::nameOf(screen.focused()) == "Reel 1999 of 4"; });
}

TEST_F(SlowDeliveryTest, stoppingIsAskedAboutAndLeavesNothing)
{
    desktop.openDeliverable("Picture master");
    drop(desktop.sparseFile("reel.mov", 600'000'000));
    screen.find(QAccessible::Button, "Stop");
    desktop.goToPanel();
    screen.click(screen.find(QAccessible::Button, "Stop"));
    desktop.waitForText("Stop this upload?");
    screen.press(Qt::Key_Escape);
    screen.waitUntil([&] { return !screen.reads("Stop this upload?"); });
    EXPECT_EQ(desktop.transfers().inFlightCount(), 1);
    screen.click(screen.find(QAccessible::Button, "Stop"));
    desktop.waitForText("Stop this upload?");
    screen.tabTo(QAccessible::Button, "Stop");
    for (auto* button : screen.all(QAccessible::Button, "Stop"))
        if (button->property("filled").toBool())
            screen.click(button);
    waitForState("stopped");
    desktop.waitForText("Nothing moving");
    EXPECT_TRUE(desktop.transfers().interruptedJournals().empty());
}

TEST_F(SlowDeliveryTest, anUploadThatWasCutOffIsResumedFromThePanelAfterTheNextStart)
{
    desktop.openDeliverable("Picture master");
    drop(desktop.sparseFile("reel.mov", 70'000'000));
    screen.waitUntil([&] { return !desktop.transfers().items().empty() && item(0)->sent > 0; });
    EXPECT_TRUE(screen.window().title().contains("%"));
    desktop.start();
    desktop.openDeliverables();
    screen.click(screen.find(QAccessible::Button, "Transfers"));
    desktop.goToPanel();
    screen.click(screen.find(QAccessible::PageTab, "Interrupted"));
    screen.click(screen.find(QAccessible::Button, "Resume"));
    desktop.waitForText("Nothing interrupted");
    waitForState("done");
}

TEST_F(SlowDeliveryTest, quittingIsAskedAboutWhileSomethingMoves)
{
    desktop.openDeliverable("Picture master");
    drop(desktop.sparseFile("reel.mov", 600'000'000));
    screen.find(QAccessible::Button, "Stop");
    EXPECT_FALSE(screen.window().close());
    desktop.waitForText("Quit while files are moving?");
    screen.press(Qt::Key_Escape);
    EXPECT_TRUE(screen.window().isVisible());
    desktop.application().root().deliverable()->stop();
    screen.waitUntil([&] { return desktop.transfers().inFlightCount() == 0; });
    EXPECT_TRUE(screen.window().close());
}

TEST(EndNoticeTest, saysWhatBecameOfAll)
{
    using Text = EndNotice::Text;
    EXPECT_EQ(EndNotice::textFor({}, "a.mov"), std::nullopt);
    EXPECT_EQ(EndNotice::textFor({.done = 1}, "a.mov"), (Text{"Transfers finished", "“a.mov” is done."}));
    EXPECT_EQ(EndNotice::textFor({.done = 3}, "a.mov"), (Text{"Transfers finished", "3 files are done."}));
    EXPECT_EQ(EndNotice::textFor({.failed = 1}, "a.mov"),
              (Text{"Transfers failed", "“a.mov” could not be transferred."}));
    EXPECT_EQ(EndNotice::textFor({.done = 2, .failed = 1}, "a.mov"),
              (Text{"Transfers finished, some failed", "Done: 2. Could not be transferred: 1."}));
}

} // namespace
} // namespace palvera
