#include "tests/support/QtPrinting.h"
#include "tests/support/Screen.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

using testing::ElementsAre;

struct Pressable {
    const char* name;
    const char* qml;
    QAccessible::Role role;
};

void PrintTo(const Pressable& pressable, std::ostream* out)
{
    *out << pressable.name;
}

class PressableTest : public testing::TestWithParam<Pressable> {
protected:
    int presses() { return screen.window().property("presses").toInt(); }

    Screen screen;
};

INSTANTIATE_TEST_SUITE_P(
    Controls, PressableTest,
    testing::Values(Pressable{"Button", "AppButton { text: 'Go'; onClicked: presses += 1 }", QAccessible::Button},
                    Pressable{"Link", "AppButton { kind: AppButton.Kind.Link; text: 'Go'; onClicked: presses += 1 }",
                              QAccessible::Button},
                    Pressable{"IconButton", "IconButton { symbol: 'trash'; text: 'Go'; onClicked: presses += 1 }",
                              QAccessible::Button},
                    Pressable{"ListRow", "ListRow { symbol: 'folder.fill'; text: 'Go'; onClicked: presses += 1 }",
                              QAccessible::ListItem},
                    Pressable{"Disclosure",
                              "Disclosure { title: 'Go'; onOpenChanged: presses += 1; Label { text: 'Inside' } }",
                              QAccessible::Button}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_P(PressableTest, isPressedByKeyboardMouseAndAssistant)
{
    screen.showContent(QString("property int presses: 0\n") + GetParam().qml);
    auto* item = screen.tabTo(GetParam().role, "Go");
    ASSERT_TRUE(item);
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

class ControlsTest : public testing::Test {
protected:
    QVariant property(const char* name) { return screen.window().property(name); }

    Screen screen;
};

TEST_F(ControlsTest, aBusyButtonSaysSoAndTakesNoPress)
{
    screen.showContent("property int presses: 0; property bool busy: false\n"
                       "AppButton { text: 'Continue'; busyText: 'Signing in'; busy: parent.Window.window.busy;"
                       " onClicked: presses += 1 }");
    auto* button = screen.find(QAccessible::Button, "Continue");
    ASSERT_TRUE(button);
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
    EXPECT_EQ(screen.focused()->property("text"), "salt");
    screen.press(Qt::Key_Escape);
    EXPECT_EQ(screen.focused()->property("text"), "");
    EXPECT_EQ(property("escapes"), 0);
    screen.press(Qt::Key_Escape);
    EXPECT_EQ(property("escapes"), 1);
    screen.type("x");
    screen.click(screen.find(QAccessible::Button, "Clear the search"));
    EXPECT_EQ(screen.focused()->property("text"), "");
    EXPECT_FALSE(screen.shows(QAccessible::Button, "Clear the search"));
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
    EXPECT_TRUE(screen.shows(QAccessible::Button, "Hide what is entered"));
}

TEST_F(ControlsTest, arrowsMoveAlongSegmentsAndStopAtTheEnds)
{
    screen.showContent("property list<int> chosen\n"
                       "Segmented { label: 'Platform'; options: ['Live', 'QA', 'Own'];"
                       " onChosen: index => { current = index; parent.Window.window.chosen.push(index) } }");
    ASSERT_TRUE(screen.tabTo(QAccessible::PageTabList, "Platform"));
    for (auto key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Left})
        screen.press(key);
    EXPECT_THAT(property("chosen").value<QList<int>>(), ElementsAre(1, 2, 1));
    auto* own = screen.find(QAccessible::PageTab, "Own");
    Screen::activate(own);
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(own)->state().checked);
}

TEST_F(ControlsTest, aDialogThatDestroysBeginsAtTheSafeAnswer)
{
    screen.showContent("property int yes: 0; property int no: 0\n"
                       "Item { anchors.fill: parent; ConfirmDialog { title: 'Stop?'; confirmText: 'Stop it';"
                       " destructive: true; visible: true; onAccepted: yes += 1; onRejected: no += 1 } }");
    screen.find(QAccessible::Button, "Cancel");
    screen.waitUntil([&] { return screen.focused() && Screen::nameOf(screen.focused()) == "Cancel"; });
    screen.press(Qt::Key_Return);
    EXPECT_EQ(property("no"), 1);
    EXPECT_EQ(property("yes"), 0);
    screen.waitUntil([&] { return !screen.shows(QAccessible::Button, "Cancel"); });
}

TEST_F(ControlsTest, aDialogIsAnsweredFromTheKeyboard)
{
    screen.showContent("property int yes: 0; property int no: 0; property alias open: dialog.visible\n"
                       "Item { anchors.fill: parent; ConfirmDialog { id: dialog; title: 'Check this file';"
                       " confirmText: 'Send anyway'; visible: true; onAccepted: yes += 1; onRejected: no += 1 } }");
    screen.waitUntil([&] { return screen.focused() && Screen::nameOf(screen.focused()) == "Send anyway"; });
    screen.press(Qt::Key_Escape);
    EXPECT_EQ(property("no"), 1);
    screen.window().setProperty("open", true);
    screen.waitUntil([&] { return screen.focused() && Screen::nameOf(screen.focused()) == "Send anyway"; });
    screen.press(Qt::Key_Space);
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
    screen.press(Qt::Key_Return);
    screen.find(QAccessible::MenuItem, "Sign out");
    for (int i = 0; i < 3 && property("done").toString().isEmpty(); ++i) {
        screen.press(Qt::Key_Down);
        screen.press(Qt::Key_Return);
    }
    EXPECT_EQ(property("done"), "Sign out");
    screen.waitUntil([&] { return !screen.shows(QAccessible::MenuItem, "Sign out"); });
    EXPECT_EQ(Screen::nameOf(screen.focused()), "Account");
    screen.press(Qt::Key_Return);
    screen.find(QAccessible::MenuItem, "Sign out");
    screen.press(Qt::Key_Escape);
    screen.waitUntil([&] { return !screen.shows(QAccessible::MenuItem, "Sign out"); });
}

TEST_F(ControlsTest, aPickerIsOpenedAndChosenFromWithTheKeyboard)
{
    screen.showContent("property int chosen: -1\n"
                       "Picker { label: 'Language'; model: ['English', 'Deutsch', 'Suomi'];"
                       " onActivated: index => chosen = index }");
    ASSERT_TRUE(screen.tabTo(QAccessible::ComboBox, "Language: English"));
    screen.press(Qt::Key_Return);
    screen.find(QAccessible::MenuItem, "Suomi");
    screen.press(Qt::Key_Down);
    screen.press(Qt::Key_Down);
    screen.press(Qt::Key_Return);
    EXPECT_EQ(property("chosen"), 2);
    screen.waitUntil([&] { return !screen.shows(QAccessible::MenuItem, "Suomi"); });
    EXPECT_TRUE(screen.shows(QAccessible::ComboBox, "Language: Suomi"));
}

TEST_F(ControlsTest, aTextFromElsewhereIsShownAndNeverObeyed)
{
    screen.showContent("Label { text: '<b>bold</b><img src=\"file:///etc/passwd\">' }");
    EXPECT_TRUE(screen.reads("<b>bold</b>"));
}

TEST_F(ControlsTest, progressSaysHowFarItIs)
{
    screen.showContent("ProgressLine { label: 'Master.mov'; value: 0.429 }");
    EXPECT_TRUE(screen.shows(QAccessible::ProgressBar, "Master.mov, 42 percent"));
}

} // namespace
} // namespace palvera
