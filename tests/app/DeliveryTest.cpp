#include "tests/app/Desktop.h"

#include "controls/SpinnerCanvas.h"
#include "controls/SymbolIcon.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonObject>

namespace palvera {
namespace {

using local::Fault;
using local::Operation;

/// The everyday path in the real windows: a project, a deliverable, a file and the panel.
class DeliveryTest : public DesktopTest {
protected:
    DeliveryTest() : DesktopTest(4'000'000) { start(); } // so that one sees a file move

    const Item& latest() { return transfers().items().back(); }
    bool isLatestDone() { return !transfers().items().empty() && nameOf(latest().state) == "done"; }
};

TEST_F(DeliveryTest, eachPickerSetsItsOwnFilter)
{
    const std::tuple<const char*, const char*, QString, const char*> cases[] = {
        // each with the last of its choices
        {"Family", "family", "video", "Video"},
        {"Status", "status", "re-delivery needed", "Re delivery needed"},
        {"Language", "language", "zxx", "Textless"},
        {"Files", "filled", "Empty", "Empty"},
    };
    openDeliverables();
    auto& view = *root().deliverables();
    for (const auto& [title, filter, value, label] : cases) {
        SCOPED_TRACE(title);
        const auto closed = QString("%1: All").arg(title);
        Screen::activate(screen.find(QAccessible::ComboBox, closed));
        screen.waitForFocus("All");
        screen.find(QAccessible::List, title);
        screen.press(Qt::Key_Escape);
        screen.waitForFocus(closed);
        screen.choose(QAccessible::ComboBox, closed, Qt::Key_Space);
        screen.find(QAccessible::ListItem, value == "zxx" ? "Textless, zxx" : QString(label));
        screen.press(Qt::Key_End);
        screen.press(Qt::Key_Return);
        screen.find(QAccessible::ComboBox, QString("%1: %2").arg(title, label));
        for (const auto* other : {"family", "status", "language", "filled"})
            EXPECT_EQ(view.property(other), other == QString(filter) ? value : "All") << other;
        EXPECT_LT(view.rowCount(), 21);
        screen.choose(QAccessible::Button, "Clear the filters");
        waitForText("21 of 21");
    }
    EXPECT_FALSE(screen.shows(QAccessible::Button, "Clear the filters"));
    screen.choose(QAccessible::ComboBox, "Order: Platform", Qt::Key_Space);
    screen.press(Qt::Key_End);
    screen.press(Qt::Key_Return);
    screen.find(QAccessible::ComboBox, "Order: Status");
    EXPECT_EQ(view.order(), DeliverableOrder::status);
}

TEST_F(DeliveryTest, theRowThatIsSeenIsTheRowThatIsOpenedAndComeBackTo)
{
    openDeliverables();
    auto places = [this] {
        std::map<double, QStringList> seen; // from the top
        for (auto* row : screen.all(QAccessible::ListItem))
            seen[row->mapToScene({}).y()].append(Screen::nameOf(row));
        return seen;
    };
    screen.waitUntil([&] { return places().begin()->second == QStringList("Picture master"); });
    const auto before = places();
    for (const QString word : {"stems", "key art", "trailer"}) { // of rows below those seen, and among them
        enter("Find a deliverable", word);
        screen.waitUntil([&] { return rows().size() < 5; });
        screen.press(Qt::Key_Escape);
        screen.waitUntil([&] { return rows().size() > 5; });
        screen.waitForFrame();
        EXPECT_EQ(places(), before) << word.toStdString();
        QStringList seen;
        for (const auto& [y, names] : before)
            seen.append(names);
        EXPECT_EQ(rows(), seen) << "read in this order";
        screen.press(Qt::Key_Down);
        EXPECT_EQ(Screen::nameOf(screen.focused()), "Picture master") << word.toStdString();
    }
    for (int i = 0; i < 4; ++i)
        screen.press(Qt::Key_Down);
    const auto name = Screen::nameOf(screen.focused());
    screen.press(Qt::Key_Return);
    screen.find(QAccessible::Heading, name);
    screen.press(Qt::Key_Escape);
    screen.waitUntil([&] { return Screen::roleOf(screen.focused()) == QAccessible::ListItem; });
    EXPECT_EQ(Screen::nameOf(screen.focused()), name) << "back where one was";
    screen.press(Qt::Key_Escape);
    screen.click(QAccessible::ListItem, "Salt");
    screen.tabTo(QAccessible::EditableText, "Find a deliverable");
    screen.press(Qt::Key_Escape); // of no use to an empty search
    screen.find(QAccessible::ListItem, "Assets");
}

TEST_F(DeliveryTest, aFileIsChosenOrDroppedAndSeenFiledAndWhatIsNoneIsRefused)
{
    openDeliverable("Picture master");
    screen.click(QAccessible::Button, "Choose a file");
    screen.waitUntil([&] { return root().deliverable()->isPicking(); });
    root().deliverable()->cancelPicking();
    screen.window().resize(720, 560);
    application().setAppearance({.textScale = 2}); // such that it comes below the window's edge
    drop({QUrl::fromLocalFile(disk.path())});
    screen.waitUntil([&] { return screen.all(QAccessible::AlertMessage).size() == 1; });
    EXPECT_TRUE(screen.reads("is a folder. Drop the file itself."));
    auto* refusal = screen.find(QAccessible::AlertMessage, {});
    screen.waitUntil([&] { return refusal->mapToScene({0, refusal->height()}).y() < screen.window().height(); });
    application().setAppearance({});
    isWatched = false;
    auto file = sparseFile("Salt – 100% ünïcode #1.mov", 3'000'000);
    // A program that hears of a move deletes the file.
    EXPECT_EQ(screen.drag(screen.find(QAccessible::Grouping, {}), {file}, Qt::MoveAction), Qt::CopyAction);
    EXPECT_EQ(drop({file}, Qt::MoveAction), Qt::CopyAction);
    screen.find(QAccessible::Notification, "“Salt – 100% ünïcode #1.mov” is done.");
    screen.find(QAccessible::Heading, "Filed against this deliverable");
    EXPECT_TRUE(screen.reads("Salt – 100% ünïcode #1.mov"));
    EXPECT_EQ(notices.shown, QStringList("Transfers finished: “Salt – 100% ünïcode #1.mov” is done."));
    EXPECT_TRUE(transfers().isPanelOpen()) << "it opens by itself";
    const auto& window = *application().window();
    EXPECT_GT(application().panel()->y(), window.y() + window.property("barHeight").toInt()) << "no button is covered";
}

TEST_F(DeliveryTest, aFileDroppedOnARowIsSentThereOnceItIsMeant)
{
    openDeliverables();
    const QList<QUrl> files = {sparseFile("a.mov", 3'000'000), sparseFile("b.mov", 1), sparseFile("c.mov", 1)};
    enter("Find a deliverable", "textless");
    screen.waitUntil([&] { return rows().size() == 2; });
    auto* row = screen.find(QAccessible::ListItem, "Textless elements");
    screen.waitForFrame();
    EXPECT_EQ(screen.drag(row, files, Qt::MoveAction), Qt::CopyAction) << "a move deletes the file";
    EXPECT_TRUE(row->property("aimedAt").toBool());
    EXPECT_EQ(screen.drop(screen.find(QAccessible::List, {}), files), Qt::IgnoreAction) << "beside the rows";
    EXPECT_FALSE(row->property("aimedAt").toBool());
    EXPECT_FALSE(screen.reads("Send “"));
    for (const auto key : {Qt::Key_Escape, Qt::Key_Return}) {
        EXPECT_EQ(screen.drop(row, files, Qt::MoveAction), Qt::CopyAction);
        waitForText("Send “a.mov” to Textless elements?");
        EXPECT_TRUE(screen.reads("Salt\nOne file goes to it. Left out: “b.mov” and “c.mov”."));
        screen.waitForFocus("Send");
        EXPECT_EQ(transfers().inFlightCount(), 0);
        screen.press(key);
        screen.waitUntil([&] { return !screen.reads("Send “"); });
    }
    screen.waitUntil([&] { return transfers().inFlightCount() == 1; });
    EXPECT_EQ(rows().size(), 2) << "the list stays as it is";
    screen.drop(row, files);
    waitForText("“a.mov” is on its way already.");
    screen.waitUntil([&] { return isLatestDone(); });
}

TEST_F(DeliveryTest, comingBackToTheProgramShowsADeliverableThatIsGoneUntilItIsBack)
{
    openDeliverable("Picture master");
    fail(Operation::deliverables, {.kind = Fault::Kind::overwrite, .members = {{"deliverables", QJsonArray()}}});
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    waitForText("The platform no longer has this deliverable");
    EXPECT_FALSE(screen.shows(QAccessible::Button, "Choose a file"));
    root().deliverables()->load();
    screen.find(QAccessible::Button, "Choose a file");
    EXPECT_FALSE(screen.reads("no longer has"));
}

TEST_F(DeliveryTest, thousandsOfRowsAreFilteredWithoutHoldingUpTheWindow)
{
    QJsonArray many;
    for (int i = 0; i < 2000; ++i)
        many.append(QJsonObject{{"id", QString::number(i)},
                                {"label", QString("Reel %1 of %2").arg(i).arg(i % 7)},
                                {"family", i % 2 ? "video" : "audio"},
                                {"status", "awaiting"}});
    fail(Operation::deliverables, {.kind = Fault::Kind::overwrite, .members = {{"deliverables", many}}}, 0);
    openDeliverables("Reel 0 of 0");
    enter("Find a deliverable", "of 3");
    waitForText("286 of 2000");
    screen.press(Qt::Key_Escape);
    waitForText("2000 of 2000");
    screen.tabTo(QAccessible::ListItem, "Reel 0 of 0");
    screen.press(Qt::Key_End);
    screen.waitForFocus("Reel 1999 of 4");
}

TEST_F(DeliveryTest, noQuestionIsAnsweredYesByEscapeOrCancelOrEnterAlone)
{
    const auto isMoving = [&] { return transfers().inFlightCount() == 1; };
    bool isPanelNext = false;
    struct Question {
        const char* title;
        const char* no;
        std::function<void()> ask;
        std::function<bool()> isDone; ///< what is asked about
    } questions[] = {
        {"Send a full-length file to Textless elements?", "Cancel",
         [&] { drop({sparseFile("too long.mov", 4'000'000'001)}); }, isMoving},
        {"Stop this upload?", "Keep going",
         [&] {
             if (std::exchange(isPanelNext, !isPanelNext)) // both ask
                 goToPanel();
             screen.click(QAccessible::Button, "Stop too long.mov");
         },
         [&] { return !isMoving() && transfers().interrupted().count() == 0; }},
        {"Check this file before it goes", "Cancel",
         [&] {
             drop({sparseFile("draft.mov", 1'000'000)});
             waitForText("Going to Salt · Textless elements\n\n\"draft.mov\" looks like a draft.");
         },
         [&] { return isLatestDone(); }},
        {"Quit while files are moving?", "Keep going",
         [&] {
             if (!isMoving())
                 drop({sparseFile("reel.mov", 4'000'000'000)}); // the longest that nobody asks about
             screen.waitUntil([&] { return isMoving() && latest().sent > 0; });
             EXPECT_TRUE(screen.window().title().contains("%"));
             screen.window().close();
         },
         [&] { return !application().window()->isVisible(); }},
    };
    openDeliverable("Textless elements");
    for (const auto& [title, no, ask, isDone] : questions) {
        SCOPED_TRACE(title);
        for (auto key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Space}) {
            goToMainWindow();
            ask();
            waitForText(title);
            screen.waitForFocus(no);
            EXPECT_FALSE(isDone());
            if (key == Qt::Key_Space) // at the other answer
                screen.press(Qt::Key_Tab);
            screen.press(key);
            screen.waitUntil([&] { return !screen.reads(title); });
            if (key == Qt::Key_Space)
                screen.waitUntil(isDone);
            else
                EXPECT_FALSE(isDone());
        }
        if (transfers().inFlightCount() == 0)
            transfers().clearFinished();
    }
}

TEST_F(DeliveryTest, aFailedUploadIsSaidWhereOneIsAndTriedAgain)
{
    fail(Operation::start, {.kind = Fault::Kind::status, .status = 422, .message = "The master is too old."});
    openDeliverable("Picture master");
    drop({sparseFile("film.mov", 3'000'000)});
    const auto said = QString("The last upload failed: The master is too old. (HTTP 422)");
    waitForText(said);
    goToMainWindow(); // from the panel
    EXPECT_TRUE(screen.reads("film.mov"));
    screen.tabTo(QAccessible::StaticText, said);
    screen.press(Qt::Key_A, Qt::ControlModifier);
    screen.press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), said);
    screen.press(Qt::Key_Escape);
    screen.waitUntil([&] {
        const auto found = screen.all(QAccessible::ListItem, "Picture master");
        return !found.isEmpty() && found.first()->property("badge") == "Upload failed";
    });
    screen.choose(QAccessible::ListItem, "Picture master");
    screen.choose(QAccessible::Button, "Try again film.mov");
    screen.waitUntil([&] { return isLatestDone() && !screen.reads("The last upload failed"); });
}

TEST(StatusBadgeTest, theSpinnerTakesThePlaceOfTheSymbol)
{
    Screen screen;
    screen.showContent("property alias badge: badge; StatusBadge { id: badge; text: '1' }",
                       "import Palvera.Deliverables");
    auto* badge = screen.window().property("badge").value<QQuickItem*>();
    const auto* mark = badge->findChild<SymbolIcon*>();
    EXPECT_FALSE(mark->isVisible());
    for (const auto& [standing, symbol] : {std::pair("filed", "checkmark"), std::pair("failed", "exclamationmark")}) {
        badge->setProperty(standing, true);
        EXPECT_TRUE(mark->isVisible() && mark->property("name").toString().startsWith(symbol)) << standing;
    }
    badge->setProperty("moving", true);
    EXPECT_FALSE(mark->isVisible());
    EXPECT_TRUE(badge->findChild<SpinnerCanvas*>()->isVisible());
}

} // namespace
} // namespace palvera
