#include "tests/app/Desktop.h"

#include "http/RateLimit.h"

#include <QSettings>

namespace palvera {
namespace {

using Role = QAccessible::Role;

struct ShellTest : DesktopTest {
    QString stored(const char* key)
    {
        return QSettings(disk.filePath("palvera.conf"), QSettings::IniFormat).value(key, "nothing").toString();
    }
};

TEST_F(ShellTest, whatIsChosenHoldsAtOnceAndAtTheNextStart)
{
    start();
    screen.find(Role::EditableText, "Work email");
    screen.press(Qt::Key_Comma, Qt::ControlModifier);
    screen.waitForFocus("Close");
    const auto shares = this->shares();
    send("Upload limit, MB/s", "2.5");
    screen.waitUntil([&] { return shares.up->bytesPerSecond() == 2'500'000; });
    EXPECT_EQ(shares.down->bytesPerSecond(), 0);
    send("Download limit, MB/s", "fast");
    waitForText("Give MB/s, from 0.1 on, or leave it empty.");
    EXPECT_EQ(shares.down->bytesPerSecond(), 0);
    screen.choose(Role::CheckBox, "Limit only between");
    send("Limit from", "07:30");
    const std::tuple<const char*, const char*, const char*> toggles[] = {
        {"Keep the computer awake", "pv.keepAwake", "off"},
        {"Tell screen readers how far files are", "pv.announcements", "off"},
        {"Notify when the last one has ended", "pv.notifications", "off"}};
    for (const auto& [name, key, value] : toggles) {
        screen.choose(Role::CheckBox, name);
        EXPECT_EQ(stored(key), value);
    }
    EXPECT_EQ(stored("pv.uploadLimit"), "2500000");
    EXPECT_EQ(stored("pv.limitHours"), "07:30-19:00");
    screen.choose(Role::ComboBox, "Uploads at once: 3");
    screen.press(Qt::Key_Up);
    screen.press(Qt::Key_Return);
    EXPECT_EQ(stored("pv.uploadsAtOnce"), "2");
    screen.press(Qt::Key_Escape);
    screen.waitUntil([&] { return !screen.reads("Upload limit, MB/s"); });
    start();
    screen.find(Role::EditableText, "Work email");
    screen.press(Qt::Key_Comma, Qt::ControlModifier);
    screen.find(Role::ComboBox, "Uploads at once: 2");
    EXPECT_FALSE(root().shell()->settings()->keepsAwake());
    EXPECT_EQ(root().shell()->settings()->limitFrom(), "07:30");
}

TEST_F(ShellTest, theMenuAndItsShortcutsLeadWhereTheySayFromEveryScreen)
{
    fail(local::Operation::config, {.latency = std::chrono::milliseconds(300)});
    start();
    screen.waitUntil([&] { return root().key() == "login"; });
    screen.press(Qt::Key_F10);
    screen.find(Role::EditableText, "Work email"); // which wants the keyboard
    screen.settle();
    screen.choose(Role::MenuItem, "Help, F1");
    screen.waitForFocus("Help");
    screen.press(Qt::Key_Escape);
    screen.waitForFocus("Work email");
    const std::tuple<Qt::Key, Qt::KeyboardModifiers, const char*, const char*> sheets[] = {
        {Qt::Key_Comma, Qt::ControlModifier, "Settings…, Ctrl+,", "Uploads at once"},
        {Qt::Key_Question, Qt::ControlModifier, "Keyboard shortcuts, Ctrl+?", "Search the list"},
        {Qt::Key_F1, Qt::NoModifier, "Help, F1", "Sending a master"}};
    for (const bool isSignedIn : {false, true}) {
        if (isSignedIn)
            openClients();
        for (const auto& [key, modifiers, entry, text] : sheets) {
            screen.press(key, modifiers);
            waitForText(text);
            screen.press(Qt::Key_Escape);
            screen.waitUntil([&, shown = text] { return !screen.reads(shown); });
            screen.press(Qt::Key_F10);
            screen.choose(Role::MenuItem, entry);
            waitForText(text);
            screen.press(Qt::Key_Escape);
            screen.waitUntil([&, shown = text] { return !screen.reads(shown); });
        }
    }
    openDeliverables();
    EXPECT_TRUE(screen.window().title().startsWith("Salt"));
    bool isLoaded = false;
    QObject::connect(root().deliverables(), &DeliverablesView::loaded, &root(), [&] { isLoaded = true; });
    screen.press(Qt::Key_F5);
    screen.waitUntil([&] { return isLoaded; });
    for (const char* title : {"Projects", "Choose a client"}) {
        screen.press(Qt::Key_Left, Qt::AltModifier);
        waitForText(title);
    }
}

} // namespace
} // namespace palvera
