#include "tests/support/Screen.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QTextLayout>

namespace palvera {
namespace {

struct ControlsTest : testing::Test {
    Screen screen;
};

TEST(PressableTest, isPressedByKeyboardMouseAndAssistantAndShowsThatItHasTheKeyboard)
{
    const std::tuple<const char*, const char*, QAccessible::Role> pressables[] = {
        {"Button", "AppButton { text: 'Go'; onClicked: presses += 1 }", QAccessible::Button},
        {"Link", "AppButton { kind: AppButton.Kind.Link; text: 'Go'; onClicked: presses += 1 }", QAccessible::Button},
        {"IconButton", "IconButton { symbol: 'trash'; text: 'Go'; onClicked: presses += 1 }", QAccessible::Button},
        {"ListRow", "ListRow { symbol: 'folder.fill'; text: 'Go'; onClicked: presses += 1 }", QAccessible::ListItem},
        {"Disclosure", "Disclosure { title: 'Go'; width: 200; onOpenChanged: presses += 1; Label { text: 'Inside' } }",
         QAccessible::Button},
    };
    for (const auto& [name, qml, role] : pressables) {
        SCOPED_TRACE(name);
        Screen screen;
        screen.showContent(
            QString("property int presses: 0\nItem { x: 20; y: 20; width: 400; height: 200\n%1}").arg(qml));
        const auto without = screen.window().grabWindow();
        auto* item = screen.tabTo(role, "Go");
        ASSERT_TRUE(item);
        EXPECT_NE(screen.window().grabWindow(), without);
        auto presses = [&] { return screen.window().property("presses"); };
        int expected = 0;
        for (auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
            screen.press(key);
            EXPECT_EQ(presses(), ++expected) << key;
        }
        screen.click(item);
        EXPECT_EQ(presses(), ++expected);
        Screen::activate(item);
        EXPECT_EQ(presses(), ++expected);
        const auto state = QAccessible::queryAccessibleInterface(item)->state();
        EXPECT_TRUE(state.focusable && state.focused);
        EXPECT_TRUE(state.expandable ? state.expanded && !state.checkable : name != QString("Disclosure"));
        item->setEnabled(false);
        Screen::activate(item);
        EXPECT_EQ(presses(), expected) << "it takes no press now";
    }
}

TEST_F(ControlsTest, aTipIsMadeWhenItIsFirstWanted)
{
    screen.showContent("Item { width: 200; height: 100\nIconButton { symbol: 'trash'; text: 'Discard' } }");
    EXPECT_FALSE(screen.shows(QAccessible::StaticText, "Discard"));
    screen.press(Qt::Key_Tab);
    screen.find(QAccessible::StaticText, "Discard");
}

TEST_F(ControlsTest, aSecretIsShownOnlyWhenAskedAndNeverToAnAssistant)
{
    screen.showContent("SecureField { label: 'Password'; width: 200 }");
    auto* field = screen.tabTo(QAccessible::EditableText, "Password");
    ASSERT_TRUE(field);
    screen.type("sesame");
    EXPECT_EQ(field->property("displayText").toString(), "••••••");
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(field)->state().passwordEdit);
    EXPECT_FALSE(screen.reads("sesame"));
    screen.press(Qt::Key_Tab);
    screen.press(Qt::Key_Space);
    EXPECT_EQ(field->property("displayText").toString(), "sesame");
}

TEST_F(ControlsTest, arrowsMoveAlongSegmentsAndStopAtTheEnds)
{
    screen.showContent("property string walked\n"
                       "Segmented { label: 'Platform'; options: ['Live', 'QA', 'Own'];"
                       " onChosen: index => { current = index; walked += index } }");
    ASSERT_TRUE(screen.tabTo(QAccessible::PageTabList, "Platform"));
    const auto state = QAccessible::queryAccessibleInterface(screen.find(QAccessible::PageTab, "Live"))->state();
    EXPECT_TRUE(state.selected && !state.checkable && !state.checked);
    for (auto key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Left})
        screen.press(key);
    EXPECT_EQ(screen.window().property("walked"), "121");
}

TEST_F(ControlsTest, aLongTextFromElsewhereNeitherCoversItsNeighboursNorPushesThemAway)
{
    screen.showContent("property QtObject theme: Theme\nColumn { Toolbar { title: 'client '.repeat(100); width: 400\n"
                       "trailing: AppButton { text: 'Account' } }\n"
                       "Message { icon: 'tray'; title: 'No'; detail: 'word '.repeat(500); action: 'Try again' } }");
    const auto edges = [this](QAccessible::Role role, const QString& name) {
        auto* item = screen.find(role, name);
        return item->mapRectToScene(item->boundingRect());
    };
    const auto account = edges(QAccessible::Button, "Account");
    EXPECT_LE(edges(QAccessible::StaticText, QString("client ").repeated(100)).right(), account.left());
    EXPECT_LT(account.right(), 401);
    EXPECT_LT(edges(QAccessible::Button, "Try again").bottom(), 420);
    screen.press(Qt::Key_Tab);
    screen.press(Qt::Key_Tab);
    for (auto key : {Qt::Key_PageDown, Qt::Key_Down, Qt::Key_Up})
        screen.press(key);
    EXPECT_EQ(screen.focused()->property("contentY"), screen.focused()->height());
    screen.window().property("theme").value<QObject*>()->setProperty("scale", 2.5);
    screen.waitForFrame();
    EXPECT_GE(edges(QAccessible::Button, "Account").top(),
              edges(QAccessible::StaticText, QString("client ").repeated(100)).bottom());
    EXPECT_LT(edges(QAccessible::Button, "Account").right(), 401);
}

TEST_F(ControlsTest, aTextFromElsewhereIsShownAndNeverObeyed)
{
    screen.showContent("Column { Label { text: '<b>bold</b><img src=\"file:///etc/passwd\">' }\n"
                       "ProgressLine { label: 'Master.mov'; value: 0.429 }"
                       "ProgressLine { label: 'Trailer.mov'; value: 0.29 } }");
    EXPECT_TRUE(screen.reads("<b>bold</b>"));
    EXPECT_TRUE(screen.shows(QAccessible::ProgressBar, "Master.mov, 42 percent"));
    EXPECT_TRUE(screen.shows(QAccessible::ProgressBar, "Trailer.mov, 29 percent"));
}

TEST(FiguresTest, haveDigitsOfOneWidthAndTakeWhatIsNotLatinFromTheFontOfTexts)
{
    const QFont font("Palvera Figures");
    for (auto digit : QStringLiteral("023456789"))
        EXPECT_EQ(QFontMetricsF(font).horizontalAdvance('1'), QFontMetricsF(font).horizontalAdvance(digit));
    for (const auto& [text, family] : {std::pair("Film", "Palvera Figures"), std::pair("Фильм", "Inter")}) {
        QTextLayout layout(text, font);
        layout.beginLayout();
        layout.createLine();
        layout.endLayout();
        EXPECT_EQ(layout.glyphRuns().value(0).rawFont().familyName(), family);
    }
}

} // namespace
} // namespace palvera
