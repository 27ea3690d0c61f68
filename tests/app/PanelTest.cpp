#include "tests/app/Desktop.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>

namespace palvera {
namespace {

Task<void> stayHalfWay(UploadRequest request)
{
    if (request.file.endsWith("refused.mov"))
        throw APIError(403, QStringLiteral("Ask for access under 4711."));
    request.onProgress({.sent = 50'000'000, .total = 100'000'000, .bytesPerSecond = 5e6});
    co_await untilStopped(request.flag);
    throwCancelled();
}

/// The panel in its real window, by keyboard, with an engine that moves nothing.
class PanelTest : public DesktopTest {
protected:
    PanelTest()
    {
        upload = stayHalfWay;
        start();
        openClients();
    }
    /// To a deliverable of that name, which the platform knows nothing of unless told.
    void add(const QString& label, const QString& file = {}, const QString& row = {})
    {
        transfers().addUpload({.file = sparseFile(file.isEmpty() ? label + ".mov" : file, 100'000'000).toLocalFile(),
                               .orgId = "org-northlight",
                               .projectId = "salt",
                               .deliverable = {.id = row.isEmpty() ? label : row, .label = label}});
        goToPanel();
    }
    /// The labels of the rows, from the top, with how they stand.
    QString rowsText()
    {
        screen.waitForFrame();
        auto items = screen.all(QAccessible::ListItem);
        std::ranges::sort(items, {}, [](const QQuickItem* item) { return item->y(); });
        QStringList texts;
        for (auto* item : items) {
            const auto name = Screen::nameOf(item);
            texts.append(name.section(", ", 0, 0) + " " + name.section(", ", 3, 3).section(' ', 0, 0).toLower());
        }
        return texts.join(", ");
    }
    void waitForRows(const QString& text)
    {
        screen.waitUntil([&] { return rowsText() == text; });
        EXPECT_EQ(rowsText(), text);
    }
    void tabToRow(const QString& label)
    {
        screen.waitForFrame(); // which makes the rows
        for (int i = 0; i < 30 && Screen::roleOf(screen.focused()) != QAccessible::ListItem; ++i)
            screen.press(Qt::Key_Tab);
        screen.press(Qt::Key_Home);
        for (int i = 0; i < 30 && !focusedName().startsWith(label + ","); ++i)
            screen.press(Qt::Key_Down);
    }
    QString focusedName() const { return screen.focused() ? Screen::nameOf(screen.focused()) : QString(); }
    void chooseInMenu(const QString& text)
    {
        screen.press(Qt::Key_Menu);
        screen.find(QAccessible::MenuItem, text);
        for (int i = 0; i < 12 && focusedName() != text; ++i)
            screen.press(Qt::Key_Down);
        screen.press(Qt::Key_Return);
        screen.waitUntil([&] { return !screen.shows(QAccessible::MenuItem, text); });
    }
};

TEST_F(PanelTest, theQueueIsSteeredByKeyboardAlone)
{
    for (const char* label : {"a", "b", "c", "d", "e"})
        add(label);
    EXPECT_TRUE(screen.window().flags().testFlag(Qt::WindowStaysOnTopHint));
    waitForRows("a running, b running, c running, d waiting, e waiting");
    waitForText("15.0 MB/s · 350.0 MB left");
    tabToRow("a");
    screen.press(Qt::Key_Tab);
    EXPECT_EQ(focusedName(), "Pause all") << "the list is one stop";
    screen.press(Qt::Key_Backtab);
    screen.press(Qt::Key_Down);
    screen.waitUntil([&] { return focusedName().startsWith("b,"); });
    screen.press(Qt::Key_Space);
    waitForRows("a running, b paused, c running, d running, e waiting");
    screen.press(Qt::Key_End);
    screen.press(Qt::Key_Up, Qt::ControlModifier);
    screen.press(Qt::Key_Up, Qt::ControlModifier);
    waitForRows("a running, b paused, e waiting, c running, d running");
    EXPECT_TRUE(focusedName().startsWith("e,")) << "the keyboard goes with it";
    chooseInMenu("Start now");
    waitForRows("a running, b paused, e running, c running, d running");
    EXPECT_TRUE(focusedName().startsWith("e,"));

    screen.press(Qt::Key_Delete);
    waitForText("Stop this upload?");
    screen.waitForFocus("Keep going");
    screen.press(Qt::Key_Tab);
    screen.press(Qt::Key_Return);
    waitForRows("a running, b paused, c running, d running");

    screen.choose(QAccessible::Button, "Pause all");
    waitForRows("a paused, b paused, c paused, d paused");
    screen.choose(QAccessible::Button, "Resume all");
    waitForRows("a running, b running, c running, d waiting");
    screen.choose(QAccessible::Button, "Stop all");
    waitForText("Stop all transfers?");
    screen.waitForFocus("Keep going");
    screen.press(Qt::Key_Escape);
    screen.waitUntil([&] { return !screen.reads("Stop all transfers?"); });
    EXPECT_EQ(transfers().inFlightCount(), 4);
    screen.choose(QAccessible::Button, "Stop all");
    screen.waitForFocus("Keep going");
    screen.press(Qt::Key_Tab);
    screen.press(Qt::Key_Return);
    waitForText("Nothing moving");
}

TEST_F(PanelTest, rowsAreDraggedByTheirSymbolsAndLeadToTheirDeliverables)
{
    for (const char* label : {"a", "b", "c"})
        add(label);
    waitForRows("a running, b running, c running");
    auto& window = screen.window();
    const auto inRow = [&](const QString& label, int x) {
        for (auto* item : screen.all(QAccessible::ListItem))
            if (Screen::nameOf(item).startsWith(label + ","))
                return item->mapToScene(QPointF(x, item->height() / 2)).toPoint();
        return QPoint();
    };
    constexpr int symbol = 20, figures = 200;
    for (const auto& [dragged, to, order] : {std::tuple("c", "a", "c running, a running, b running"),
                                             std::tuple("c", "b", "a running, b running, c running")}) {
        const auto from = inRow(dragged, symbol), end = inRow(to, symbol);
        QTest::mousePress(&window, Qt::LeftButton, {}, from);
        for (int step = 1; step <= 10; ++step) {
            QTest::mouseMove(&window, from + (end - from) * step / 10);
            screen.waitForFrame();
        }
        QTest::mouseRelease(&window, Qt::LeftButton, {}, end);
        waitForRows(order);
    }
    const auto second = inRow("b", figures);
    QTest::mouseClick(&window, Qt::RightButton, {}, second);
    screen.find(QAccessible::MenuItem, "Pause");
    screen.press(Qt::Key_Escape);
    screen.waitUntil([&] { return !screen.shows(QAccessible::MenuItem, "Pause"); });
    EXPECT_TRUE(focusedName().startsWith("b,"));
    QTest::mouseDClick(&window, Qt::LeftButton, {}, second);
    goToMainWindow();
    waitForText("The platform no longer has that deliverable.");
    add("Picture master", "film.mov", "salt-row-1");
    tabToRow("Picture master");
    screen.press(Qt::Key_Return);
    goToMainWindow();
    screen.find(QAccessible::Heading, "Picture master");
    EXPECT_EQ(root().page(), RootView::Page::Deliverable);
    screen.takeWarnings(); // the platform of the tests raises no windows
}

TEST_F(PanelTest, whatIsOverIsTriedAgainCopiedShownAndRemoved)
{
    add("a", "refused.mov");
    add("b");
    waitForText("Finished (1)");
    screen.choose(QAccessible::PageTabList, "Transfers", Qt::Key_Right);
    tabToRow("a");
    chooseInMenu("Copy error");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "Ask for access under 4711.");
    chooseInMenu("Show in folder");
    EXPECT_EQ(shownFiles, QStringList(disk.filePath("refused.mov")));
    screen.press(Qt::Key_Return); // tries again
    screen.waitUntil([&] { return transfers().items().size() == 2 && transfers().finished().size() == 1; });
    transfers().stopAll();
    waitForRows("b stopped, a failed");
    EXPECT_FALSE(focusedName().isEmpty());
    tabToRow("b");
    screen.press(Qt::Key_Delete);
    waitForRows("a failed");
    screen.choose(QAccessible::Button, "Clear");
    waitForText("Nothing finished yet");
}

} // namespace
} // namespace palvera
