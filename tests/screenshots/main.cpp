// Drives the desktop application through its screens, without a display, and keeps a picture of each.
// Usage: palvera-screenshots FOLDER light|dark

#include "controls/Fonts.h"
#include "tests/app/Desktop.h"

#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QJsonArray>
#include <QTemporaryDir>

#include <iostream>

namespace palvera {
namespace {

using local::Fault;
using local::Operation;

class Photographer {
public:
    Photographer(const QString& folder, bool dark) : m_folder(folder), m_dark(dark) {}

    void takeAll()
    {
        waiting();
        signIn();
        signInSteps();
        pickers();
    }

private:
    void start()
    {
        m_desktop.start();
        m_desktop.application().setDark(m_dark);
    }
    /// Once nothing moves on the screen but what always does.
    void take(const QString& name)
    {
        QElapsedTimer still;
        still.start();
        screen().waitUntil([&] { return still.hasExpired(450); });
        auto path = QDir(m_folder).filePath(name + (m_dark ? "-dark.png" : "-light.png"));
        if (!m_desktop.screen.window().grabWindow().save(path))
            throw std::runtime_error("cannot write " + path.toStdString());
        std::cout << path.toStdString() << std::endl;
    }
    Screen& screen() { return m_desktop.screen; }
    void fail(Operation operation, Fault fault)
    {
        m_desktop.platform.faults().add({.operation = operation, .fault = std::move(fault)});
    }

    void waiting()
    {
        fail(Operation::me, {.kind = Fault::Kind::stallAfterBody});
        start();
        QElapsedTimer still;
        still.start();
        screen().waitUntil([&] { return still.hasExpired(3200); });
        take("loading");
    }
    void signIn()
    {
        start();
        screen().find(QAccessible::EditableText, "Work email");
        take("sign-in-email");
        m_desktop.signIn("ada@northlight.example", "wrong");
        screen().waitUntil([&] { return !screen().all(QAccessible::AlertMessage).isEmpty(); });
        take("sign-in-password-wrong");
        screen().click(screen().find(QAccessible::Button, "Forgotten your password?"));
        screen().find(QAccessible::Button, "Send me a link");
        take("sign-in-forgot");
        screen().click(screen().find(QAccessible::Button, "Send me a link"));
        m_desktop.waitForText("Nothing has changed yet.");
        take("sign-in-forgot-asked");
        m_desktop.isAltHeld = true;
        start();
        screen().click(screen().find(QAccessible::Button, "Sign in with an access code"));
        screen().find(QAccessible::Button, "Back to sign in");
        take("sign-in-access-code");
        m_desktop.isAltHeld = false;
    }
    void signInSteps()
    {
        start();
        m_desktop.signIn("ben@northlight.example", "reel-two");
        m_desktop.waitForText("Check your email");
        take("sign-in-email-code");
        start();
        m_desktop.signIn("cleo@northlight.example", "reel-three");
        m_desktop.waitForText("One more step");
        take("sign-in-authenticator");
        start();
        m_desktop.signIn("dov@northlight.example", "reel-four");
        m_desktop.waitForText("Add an authenticator");
        screen().click(screen().find(QAccessible::Button, "Cannot scan it? Enter this key instead"));
        take("sign-in-enrol");
    }
    void pickers()
    {
        start();
        m_desktop.signIn("ada@northlight.example", "reel-one");
        m_desktop.waitForText("Choose a client");
        take("clients");
        fail(Operation::projects, {.kind = Fault::Kind::status, .status = 500});
        screen().click(screen().find(QAccessible::ListItem, "Northlight Pictures"));
        m_desktop.waitForText("Could not load your projects");
        take("projects-failed");
        screen().click(screen().find(QAccessible::Button, "Try again"));
        screen().find(QAccessible::ListItem, "Salt");
        take("projects");
        screen().click(screen().find(QAccessible::Button, "Account"));
        screen().find(QAccessible::MenuItem, "Sign out");
        take("account-menu");
        screen().press(Qt::Key_Escape);
        m_desktop.enter("Find a project", "nothing like it");
        m_desktop.waitForText("Nothing matches");
        take("projects-nothing-matches");
        screen().click(screen().find(QAccessible::Button, "Clients"));
        m_desktop.waitForText("Choose a client");
        fail(Operation::projects, {.kind = Fault::Kind::overwrite, .members = {{"projects", QJsonArray()}}});
        screen().click(screen().find(QAccessible::ListItem, "Northlight Pictures"));
        m_desktop.waitForText("No projects");
        take("projects-none");
    }

    const QString m_folder;
    const bool m_dark;
    Desktop m_desktop;
};

} // namespace
} // namespace palvera

int main(int argc, char** argv)
{
    QTemporaryDir runtime;
    qputenv("XDG_RUNTIME_DIR", runtime.path().toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QGuiApplication application(argc, argv);
    palvera::loadFonts();
    if (argc != 3) {
        std::cerr << "usage: palvera-screenshots FOLDER light|dark\n";
        return 2;
    }
    testing::GTEST_FLAG(throw_on_failure) = true; // what a test would be told of ends the program
    testing::InitGoogleTest(&argc, argv);
    try {
        QDir().mkpath(QString::fromLocal8Bit(argv[1]));
        palvera::Photographer(QString::fromLocal8Bit(argv[1]), QByteArrayView(argv[2]) == "dark").takeAll();
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
    return 0;
}
