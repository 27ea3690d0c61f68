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
        deliverables();
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

    void deliverables()
    {
        start();
        m_desktop.openDeliverables();
        take("deliverables");
        screen().click(screen().find(QAccessible::ComboBox, "Status: All"));
        take("deliverables-filter");
        screen().press(Qt::Key_Escape);
        screen().click(screen().find(QAccessible::ComboBox, "Language: All"));
        take("deliverables-languages");
        screen().press(Qt::Key_Escape);
        m_desktop.enter("Find a deliverable", "nothing like it");
        m_desktop.waitForText("Nothing matches");
        take("deliverables-nothing-matches");
        screen().press(Qt::Key_Escape);
        openRow("Music and effects");
        take("deliverable");
        auto* zone = screen().find(QAccessible::Grouping, "Drop a file here");
        auto file = m_desktop.sparseFile("Salt_music_effects_v2.wav", 2'900'000'000);
        screen().drag(zone, {file});
        take("deliverable-drag");
        screen().drop(zone, {QUrl::fromLocalFile(m_desktop.disk.path())});
        m_desktop.waitForText("is a folder");
        take("deliverable-refused");
        screen().drop(zone, {file});
        letMove(3);
        m_desktop.goToMainWindow();
        take("deliverable-in-flight");
        back();
        openRow("Forced narrative");
        take("deliverable-filed");
        back();
        openRow("Textless elements");
        screen().drop(screen().find(QAccessible::Grouping, "Drop a file here"),
                      {m_desktop.sparseFile("Salt_feature_UHD.mov", 48'000'000'000)});
        m_desktop.waitForText("Send a full-length file");
        take("deliverable-doubtful");
        screen().press(Qt::Key_Escape);
        back();
        screen().press(Qt::Key_Escape); // which clears the search
        take("deliverables-transferring");
        panel();
    }
    void panel()
    {
        m_desktop.platform.faults().add(
            {.operation = Operation::start, .times = 2, .fault = {.kind = Fault::Kind::status, .status = 503}});
        send("Key art", "Salt_key_art_v4.tif", 940'000'000);
        send("Music cue sheet", "Salt_cues.pdf", 390'000'000);
        send("5.1 surround mix", "Salt_5-1_surround_v2.wav", 1'410'000'000);
        m_desktop.goToPanel();
        m_desktop.waitForText("Trying again in");
        letMove(6);
        take("transfers");
        screen().click(screen().all(QAccessible::Button, "Stop").first());
        m_desktop.waitForText("Stop this upload?");
        take("transfers-stop");
        screen().press(Qt::Key_Escape);
        screen().click(screen().find(QAccessible::PageTab, "Finished"));
        take("transfers-none-finished");
        for (const auto& item : m_desktop.transfers().inFlight())
            m_desktop.transfers().stop(item.id);
        m_desktop.goToMainWindow();
        send("Stills", "Salt_stills.zip", 30'000'000);
        screen().waitUntil([&] { return m_desktop.transfers().uploadsFinished() == 1; });
        fail(Operation::start, {.kind = Fault::Kind::status, .status = 403, .message = "This row takes no files."});
        send("Full subtitles", "Salt_de.srt", 80'000);
        screen().waitUntil([&] { return m_desktop.transfers().inFlightCount() == 0; });
        m_desktop.goToPanel();
        take("transfers-finished");
        screen().click(screen().find(QAccessible::PageTab, "Interrupted"));
        take("transfers-none-interrupted");
        m_desktop.goToMainWindow();
        send("Picture master", "Salt_feature_UHD.mov", 2'000'000'000);
        letMove(3);
        start();
        m_desktop.openDeliverables();
        m_desktop.transfers().setPanelOpen(true);
        m_desktop.goToPanel();
        screen().click(screen().find(QAccessible::PageTab, "Interrupted"));
        screen().find(QAccessible::Button, "Resume");
        take("transfers-interrupted");
        m_desktop.goToMainWindow();
        fail(Operation::complete, {.kind = Fault::Kind::status,
                                   .status = 409,
                                   .error = "delivery_doubt",
                                   .message = "This file is 30 MB. A stereo mix of this film would be about 900 MB."});
        send("Stereo mix", "Salt_stereo_v2.wav", 30'000'000);
        m_desktop.waitForText("Check this file before it goes");
        take("doubt");
    }
    void openRow(const QString& name)
    {
        m_desktop.enter("Find a deliverable", name);
        screen().waitUntil([&] {
            return screen().shows(QAccessible::ListItem, name) && screen().all(QAccessible::ListItem).size() < 4;
        });
        screen().click(screen().find(QAccessible::ListItem, name));
        screen().find(QAccessible::Heading, name);
    }
    void back()
    {
        screen().click(screen().find(QAccessible::Button, "Deliverables"));
        screen().find(QAccessible::EditableText, "Find a deliverable");
    }
    void send(const QString& row, const QString& name, qint64 bytes)
    {
        openRow(row);
        auto zones = screen().all(QAccessible::Grouping);
        screen().drop(zones.first(), {m_desktop.sparseFile(name, bytes)});
        back();
    }
    void letMove(int seconds)
    {
        QElapsedTimer passed;
        passed.start();
        screen().waitUntil([&] { return passed.hasExpired(seconds * 1000); });
    }

    const QString m_folder;
    const bool m_dark;
    Desktop m_desktop{5'000'000};
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
