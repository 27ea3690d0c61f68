#include "tests/support/Screen.h"

#include <gtest/gtest.h>

namespace palvera {
namespace {

struct Pressable {
    const char* name;
    const char* qml;
    QAccessible::Role role;
};

void PrintTo(const Pressable& pressable, std::ostream* out)
{
    *out << pressable.name;
}

const Pressable pressables[] = {
    {"Button", "AppButton { text: 'Go'; onClicked: presses += 1 }", QAccessible::Button},
    {"Link", "AppButton { kind: AppButton.Kind.Link; text: 'Go'; onClicked: presses += 1 }", QAccessible::Button},
    {"IconButton", "IconButton { symbol: 'trash'; text: 'Go'; onClicked: presses += 1 }", QAccessible::Button},
    {"ListRow", "ListRow { symbol: 'folder.fill'; text: 'Go'; onClicked: presses += 1 }", QAccessible::ListItem},
    {"Disclosure", "Disclosure { title: 'Go'; onOpenChanged: presses += 1; Label { text: 'Inside' } }",
     QAccessible::Button},
};

struct PressableTest : testing::TestWithParam<Pressable> {
    Screen screen;
};

INSTANTIATE_TEST_SUITE_P(Controls, PressableTest, testing::ValuesIn(pressables),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_P(PressableTest, isPressedByKeyboardMouseAndAssistant)
{
    screen.showContent(QString("property int presses: 0\n") + GetParam().qml);
    auto* item = screen.tabTo(GetParam().role, "Go");
    ASSERT_TRUE(item);
    auto presses = [this] { return screen.window().property("presses"); };
    int expected = 0;
    for (auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        screen.press(key);
        EXPECT_EQ(presses(), ++expected) << key;
    }
    screen.click(item);
    EXPECT_EQ(presses(), ++expected);
    Screen::activate(item);
    EXPECT_EQ(presses(), ++expected);
}

TEST_P(PressableTest, showsThatItHasTheKeyboard)
{
    screen.showContent(QString("property int presses: 0\nItem { x: 20; y: 20; width: 400; height: 200\n") +
                       GetParam().qml + "}");
    auto without = screen.window().grabWindow();
    ASSERT_TRUE(screen.tabTo(GetParam().role, "Go"));
    EXPECT_NE(screen.window().grabWindow(), without);
}

struct ControlsTest : testing::Test {
    Screen screen;

    QVariant property(const char* name) { return screen.window().property(name); }
    void waitUntilGone(QAccessible::Role role, const QString& name)
    {
        screen.waitUntil([&] { return !screen.shows(role, name); });
    }
};

TEST_F(ControlsTest, aBusyButtonSaysSoAndTakesNoPress)
{
    screen.showContent("property int presses: 0; property bool busy: false\n"
                       "AppButton { text: 'Continue'; busyText: 'Signing in'; busy: parent.Window.window.busy;"
                       " onClicked: presses += 1 }");
    auto* button = screen.find(QAccessible::Button, "Continue");
    screen.window().setProperty("busy", true);
    EXPECT_EQ(Screen::nameOf(button), "Signing in");
    screen.click(button);
    EXPECT_EQ(property("presses"), 0);
}

TEST_F(ControlsTest, escapeEmptiesASearchAndPassesOnWhenItIsEmpty)
{
    screen.showContent("property int escapes: 0\n"
                       "Item { focus: true; Keys.onEscapePressed: escapes += 1; width: 300; height: 40\n"
                       "SearchField { label: 'Find'; focus: true; width: 200 } }");
    ASSERT_TRUE(screen.tabTo(QAccessible::EditableText, "Find"));
    screen.type("salt");
    screen.press(Qt::Key_Escape);
    EXPECT_EQ(screen.focused()->property("text"), "");
    EXPECT_EQ(property("escapes"), 0);
    screen.press(Qt::Key_Escape);
    EXPECT_EQ(property("escapes"), 1);
    screen.type("x");
    screen.click(screen.find(QAccessible::Button, "Clear the search"));
    EXPECT_EQ(screen.focused()->property("text"), "");
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
    for (auto key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Left})
        screen.press(key);
    EXPECT_EQ(property("walked"), "121");
}

TEST_F(ControlsTest, aDialogIsAnsweredFromTheKeyboardAndBeginsAtTheSafeAnswer)
{
    screen.showContent("property int yes: 0; property int no: 0; property alias open: dialog.visible\n"
                       "property bool destroys\n"
                       "Item { anchors.fill: parent; ConfirmDialog { id: dialog; title: 'Check this file';"
                       " confirmText: 'Go on'; destructive: parent.Window.window.destroys; visible: false;"
                       " onAccepted: yes += 1; onRejected: no += 1 } }");
    for (auto [destroys, first, key] : {std::tuple(true, "Cancel", Qt::Key_Return),
                                        {false, "Go on", Qt::Key_Escape},
                                        {false, "Go on", Qt::Key_Space}}) {
        screen.window().setProperty("destroys", destroys);
        screen.window().setProperty("open", true);
        screen.waitForFocus(first);
        screen.press(key);
        waitUntilGone(QAccessible::Button, first);
    }
    EXPECT_EQ(property("no"), 2);
    EXPECT_EQ(property("yes"), 1);
}

TEST_F(ControlsTest, aMenuIsWalkedWithArrowsPastWhatOnlyTells)
{
    screen.showContent("property string done\n"
                       "IconButton { symbol: 'person.crop.circle'; text: 'Account'; onClicked: menu.open()\n"
                       "AppMenu { id: menu; y: 40\n"
                       "MenuRow { enabled: false; text: 'ada@northlight.example' }\n"
                       "MenuLine {}\n"
                       "MenuRow { text: 'Sign out'; onTriggered: done = text } } }");
    ASSERT_TRUE(screen.tabTo(QAccessible::Button, "Account"));
    for (auto keys : {QList{Qt::Key_Escape}, QList{Qt::Key_Down, Qt::Key_Return}}) {
        screen.press(Qt::Key_Return);
        screen.find(QAccessible::MenuItem, "Sign out");
        EXPECT_EQ(property("done"), "");
        for (auto key : keys)
            screen.press(key);
        waitUntilGone(QAccessible::MenuItem, "Sign out");
        EXPECT_EQ(Screen::nameOf(screen.focused()), "Account");
    }
    EXPECT_EQ(property("done"), "Sign out");
}

TEST_F(ControlsTest, aTextFromElsewhereIsShownAndNeverObeyed)
{
    screen.showContent("Column { Label { text: '<b>bold</b><img src=\"file:///etc/passwd\">' }\n"
                       "ProgressLine { label: 'Master.mov'; value: 0.429 } }");
    EXPECT_TRUE(screen.reads("<b>bold</b>"));
    EXPECT_TRUE(screen.shows(QAccessible::ProgressBar, "Master.mov, 42 percent"));
}

} // namespace
} // namespace palvera
