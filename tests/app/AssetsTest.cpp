#include "tests/app/Desktop.h"

#include "session/Session.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>

namespace palvera {
namespace {

using local::Fault;
using local::Operation;

constexpr auto listItem = QAccessible::ListItem;
constexpr auto button = QAccessible::Button;

/// The client's assets in the real window.
class AssetsTest : public DesktopTest {
protected:
    AssetsTest() { openAssets(); }

    void openAssets()
    {
        start();
        openClients();
        screen.click(listItem, "Northlight Pictures");
        screen.choose(listItem, "Assets");
        waitForRow("Uploads");
    }
    AssetsView& view() { return *root().assets(); }
    void waitForRow(const QString& name)
    {
        screen.find(listItem, name);
        screen.waitUntil([this] { return view().face() == AssetsView::Table; });
    }
    void openUploads()
    {
        screen.press(Qt::Key_Home);
        screen.press(Qt::Key_Return);
        waitForRow("Rushes 2025");
    }
    /// The names of what is selected, of the first rows.
    QString selected()
    {
        QStringList names;
        for (int row = 0; row < 10; ++row)
            if (view().isSelected(row))
                names.append(view().nameAt(row));
        return names.join(", ");
    }
    QAccessible::State stateOf(const QString& row)
    {
        return QAccessible::queryAccessibleInterface(screen.find(listItem, row))->state();
    }
    std::string descriptionOf(const QString& row)
    {
        auto* interface = QAccessible::queryAccessibleInterface(screen.find(listItem, row));
        return interface->text(QAccessible::Description).toStdString();
    }
    bool areAllDone()
    {
        return std::ranges::all_of(transfers().items(), [](const auto& item) { return nameOf(item.state) == "done"; });
    }
};

TEST_F(AssetsTest, theKeyboardAloneLeadsToAFolderADownloadAndBack)
{
    QDir(disk.path()).mkdir("Films");
    openUploads();
    screen.waitForFocus("Rushes 2025");
    EXPECT_TRUE(stateOf("Rushes 2025").focused);
    screen.press(Qt::Key_Return);
    waitForRow("Day 1.mov");
    screen.find(QAccessible::Heading, "Rushes 2025");
    screen.press(Qt::Key_Down); // past the folder within
    screen.press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "Day 1.mov, Day 2.mov");
    screen.choose(button, "Download 2 files");
    screen.waitUntil([this] { return view().isPickingFolder(); });
    view().pick({QUrl::fromLocalFile(disk.filePath("Films"))});
    screen.waitUntil([this] { return transfers().items().size() == 2 && areAllDone(); });
    EXPECT_EQ(QDir(disk.filePath("Films")).entryList(QDir::Files), QStringList({"Day 1.mov", "Day 2.mov"}));
    EXPECT_EQ(view().folder(), disk.filePath("Films"));

    goToMainWindow();
    screen.tabTo(listItem, "Day 2.mov");
    screen.press(Qt::Key_Backspace);
    waitForRow("Rushes 2025");
    screen.press(Qt::Key_Left, Qt::AltModifier);
    waitForRow("Uploads");
    screen.press(Qt::Key_Escape);
    screen.find(listItem, "Salt");
}

TEST_F(AssetsTest, keysAndClicksSelectAsInAFileManager)
{
    openUploads();
    const std::tuple<Qt::Key, Qt::KeyboardModifiers, const char*> cases[] = {
        {Qt::Key_Down, {}, "Örvar's films"},
        {Qt::Key_Down, Qt::ShiftModifier, "Örvar's films, Reel 001 of 230.mov"},
        {Qt::Key_Down, Qt::ControlModifier, "Örvar's films, Reel 001 of 230.mov"},
        {Qt::Key_Space, Qt::ControlModifier, "Örvar's films, Reel 001 of 230.mov, Reel 002 of 230.mov"},
        {Qt::Key_Space, Qt::ControlModifier, "Örvar's films, Reel 001 of 230.mov"},
        {Qt::Key_Up, {}, "Reel 001 of 230.mov"},
        {Qt::Key_Home, Qt::ShiftModifier, "Rushes 2025, Örvar's films, Reel 001 of 230.mov"},
        {Qt::Key_Down, Qt::ShiftModifier, "Örvar's films, Reel 001 of 230.mov"},
        {Qt::Key_End, {}, ""},
        {Qt::Key_Home, {}, "Rushes 2025"},
    };
    for (const auto& [key, modifiers, expected] : cases) {
        screen.press(key, modifiers);
        EXPECT_EQ(selected(), expected) << "key " << key;
    }
    screen.press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_GE(view().downloadCount(), 100);
    screen.click(listItem, "Reel 003 of 230.mov");
    EXPECT_EQ(selected(), "Reel 003 of 230.mov");
    EXPECT_TRUE(stateOf("Reel 003 of 230.mov").selected);
    EXPECT_FALSE(stateOf("Reel 001 of 230.mov").selected);
    EXPECT_EQ(descriptionOf("Reel 003 of 230.mov").substr(0, 44), "Deal: Uploads, Type: Video, Size: 231 KB, Da");
    EXPECT_TRUE(descriptionOf("Reel 003 of 230.mov").ends_with(", 5 of " + std::to_string(view().rowCount())));
}

TEST_F(AssetsTest, whatIsTypedGoesToTheSearchWhichKeepsTheKeyboard)
{
    screen.type("salt_18");
    screen.waitForFocus("Find an asset");
    screen.waitUntil([this] { return view().rowCount() == 1; });
    EXPECT_FALSE(screen.shows(listItem, "Uploads"));
    screen.waitForFocus("Find an asset");
    screen.press(Qt::Key_Escape);
    waitForRow("Uploads");
    screen.press(Qt::Key_Backspace); // of an empty field
    screen.press(Qt::Key_Down);
    screen.waitForFocus("Uploads");
    EXPECT_EQ(root().page(), RootView::Page::Assets);
    screen.choose(QAccessible::ComboBox, "Kind: All types", Qt::Key_Space);
    screen.waitForFocus("All types");
    screen.press(Qt::Key_End);
    screen.press(Qt::Key_Return);
    screen.find(QAccessible::ComboBox, "Kind: Documents");
    screen.waitUntil([this] { return view().face() == AssetsView::Table && view().query().family == "documents"; });
    EXPECT_FALSE(view().hasMore()) << "there are few of them";
    enter("Find an asset", "nothing like it");
    waitForText("Nothing matches");
    screen.click(button, "Show all");
    waitForRow("Uploads");
    screen.find(QAccessible::ComboBox, "Kind: All types");
}

TEST_F(AssetsTest, filesAreDroppedIntoTheFolderThatIsShownAndFoldersAreNot)
{
    openUploads();
    screen.press(Qt::Key_Return);
    waitForRow("Day 1.mov");
    QDir(disk.path()).mkdir("Stills");
    const auto folder = QUrl::fromLocalFile(disk.filePath("Stills"));
    const QList<QUrl> files{sparseFile("a.mov", 100'000), folder, sparseFile("b.mov", 200'000)};
    auto* target = screen.find(QAccessible::Heading, "Rushes 2025");
    EXPECT_EQ(screen.drag(target, files, Qt::MoveAction), Qt::CopyAction) << "what is dropped stays where it was";
    waitForText("Drop to add to Rushes 2025");
    EXPECT_EQ(screen.drop(target, files), Qt::CopyAction);
    waitForText("1 folder was left out: only files can be added. “Stills”");
    screen.waitUntil([this] { return transfers().items().size() == 2 && areAllDone(); });
    screen.click(button, "Dismiss: 1 folder was left out: only files can be added. “Stills”");
    EXPECT_FALSE(screen.reads("left out"));
    screen.click(button, "Upload");
    screen.waitUntil([this] { return view().isPicking() && !view().isPickingFolder(); });
    view().cancelPicking();
    fail(Operation::binStart, {.kind = Fault::Kind::status, .status = 403, .message = "Full."});
    screen.drop(target, {sparseFile("c.mov", 1000)});
    screen.click(button, "Try again c.mov");
    screen.waitUntil([this] { return areAllDone() || transfers().uploadsFinished() == 3; });
}

TEST_F(AssetsTest, theMenuOfARowOffersWhatTheKeysDo)
{
    openUploads();
    auto choose = [this](const QString& row, const QString& entry) {
        screen.click(listItem, row);
        screen.press(Qt::Key_F10, Qt::ShiftModifier);
        screen.click(QAccessible::MenuItem, entry);
    };
    choose("Reel 002 of 230.mov", "Copy name");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "Reel 002 of 230.mov");
    choose("Reel 002 of 230.mov", "Select all");
    EXPECT_EQ(view().downloadCount(), 100);
    const auto cancel = [this] {
        waitForText("Choose where downloads go");
        screen.press(Qt::Key_Escape);
        screen.waitUntil([this] { return !view().isPicking() && !screen.reads("Choose where downloads go"); });
    };
    choose("Reel 002 of 230.mov", "Download");
    cancel();
    screen.click(button, "Where downloads go");
    screen.click(QAccessible::MenuItem, "Choose another folder…");
    cancel();
    choose("Rushes 2025", "Open");
    waitForRow("Day 1.mov");
    choose("Day 1.mov", "Back");
    waitForRow("Reel 002 of 230.mov");
}

TEST_F(AssetsTest, moreIsLoadedAtTheEndOfTheListAndAfterAFailureByTheButton)
{
    waitForText("60 of 158");
    fail(Operation::assets, {.kind = Fault::Kind::status, .status = 503});
    screen.press(Qt::Key_End);
    waitForText("The platform is having trouble.");
    EXPECT_EQ(view().face(), AssetsView::Table);
    screen.press(Qt::Key_Up);
    screen.press(Qt::Key_End);
    EXPECT_FALSE(view().isLoadingMore());
    screen.click(button, "Load more");
    waitForText("120 of 158");
    EXPECT_FALSE(screen.reads("having trouble"));
    screen.waitForFrame();
    auto* list = screen.find(QAccessible::List, "Assets");
    list->setProperty("contentY", list->property("contentHeight").toDouble() - list->height()); // as the wheel does
    screen.waitUntil([this] { return view().rowCount() == 159; });
    screen.waitUntil([this] { return !screen.shows(button, "Load more"); });
    fail(Operation::assets, {.kind = Fault::Kind::status, .status = 503});
    view().load();
    waitForText("Could not load Assets");
    EXPECT_TRUE(screen.reads("The platform is having trouble."));
    screen.click(button, "Try again");
    waitForRow("Uploads");
}

TEST_F(AssetsTest, eachColumnIsDrawnWiderByItselfAndStaysSo)
{
    auto widths = [this] {
        const auto& columns = *view().columns();
        return AssetColumns::Widths{columns.deal(), columns.type(), columns.size(), columns.date()};
    };
    const char* titles[] = {"Deal", "Type", "Size", "Date"};
    auto expected = widths();
    for (std::size_t i = 0; i < expected.size(); ++i) {
        screen.waitForFrame();
        auto* title = screen.find(QAccessible::StaticText, titles[i]);
        const auto edge = title->mapToScene({-8, title->height() / 2}).toPoint(); // its margin ends at the line before
        QTest::mousePress(&screen.window(), Qt::LeftButton, {}, edge);
        for (int step = 1; step <= 3; ++step)
            QTest::mouseMove(&screen.window(), edge - QPoint(5 * step, 0));
        QTest::mouseRelease(&screen.window(), Qt::LeftButton, {}, edge - QPoint(15, 0));
        expected[i] += 15;
        EXPECT_THAT(widths(), testing::Pointwise(testing::DoubleNear(1), expected)) << titles[i];
    }
    openAssets();
    EXPECT_THAT(widths(), testing::Pointwise(testing::DoubleNear(1), expected));
}

} // namespace
} // namespace palvera
