// Drives the desktop application through its screens, without a display, and
// keeps a picture of each. Usage: palvera-screenshots FOLDER light|dark [PERCENT [LANGUAGE]]
// PERCENT is the size of texts, 100 unless given; LANGUAGE one of translations/, such as "de".
// With --read in the place of all, on a display, it shows each screen until a line comes on its input: tells the name
// of each on its output, for whoever reads it over the accessibility bus; then goes round it by Tab, and fails where
// the keyboard is nowhere.

#include "app/Language.h"
#include "controls/Fonts.h"
#include "controls/SpokenStates.h"
#include "gallery/screenshots/Words.h"
#include "tests/app/Desktop.h"

#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QJsonArray>
#include <QTemporaryDir>

#include <poll.h>
#include <unistd.h>

#include <iostream>

namespace palvera {
namespace {

using local::Fault;
using local::Operation;

using namespace std::chrono_literals;
constexpr auto button = QAccessible::Button;
constexpr auto listItem = QAccessible::ListItem;
constexpr auto menuItem = QAccessible::MenuItem;

class Photographer : public Desktop {
public:
    /// Without a folder, each screen is shown until it has been read.
    Photographer(const QString& folder, const Appearance& appearance)
        : Desktop(folder.isNull() ? slow : usual,
                  {.image = imageFile(folder.isNull() ? 4 * slow : 4 * usual),
                   .build = "46",
                   .notes = "Uploads go on by themselves after the machine has slept.\nThe list of deliverables "
                            "opens twice as fast."}),
          m_folder(folder),
          m_appearance(appearance)
    {}

    void takeAll()
    {
        waiting();
        signInScreens();
        pickers();
        assets();
        deliverables();
        panel();
        updates();
    }

private:
    // Bytes per second on each connection.
    static constexpr qint64 usual = 5'000'000;
    static constexpr qint64 slow = 1'000'000; // nothing is done before it has been read

    static QString imageFile(qint64 bytes)
    {
        static const QTemporaryDir folder;
        QFile file(folder.filePath("Palvera-1.3.dmg"));
        if (!file.open(QIODevice::WriteOnly) || !file.resize(bytes))
            throw std::runtime_error("cannot write an image");
        return file.fileName();
    }
    void begin()
    {
        start();
        application().setAppearance(m_appearance);
    }
    void letPass(std::chrono::milliseconds time)
    {
        QElapsedTimer passed;
        passed.start();
        screen.waitUntil([&] { return passed.hasExpired(time.count()); });
    }
    /// Once the screen reads `text` and nothing moves there but what always does.
    void take(const QString& name, const QString& text = {})
    {
        waitForText(text);
        if (m_folder.isNull())
            return show(name);
        letPass(450ms);
        auto path = QDir(m_folder).filePath(name + (m_appearance.dark ? "-dark.png" : "-light.png"));
        if (!screen.window().grabWindow().save(path))
            throw std::runtime_error("cannot write " + path.toStdString());
        std::cout << path.toStdString() << std::endl;
    }
    void show(const QString& name)
    {
        std::cout << name.toStdString() << std::endl;
        const auto isRead = [] {
            pollfd input{.fd = STDIN_FILENO, .events = POLLIN};
            return poll(&input, 1, 0) == 1;
        };
        screen.waitUntil(isRead, 1min);
        std::string line;
        std::getline(std::cin, line);
        if (name != "loading") // where there is only a wait
            screen.walk();
    }
    /// Escape leads out of a question, and the keyboard back to what is called `place`, and maybe more.
    void leave(const QString& place)
    {
        screen.press(Qt::Key_Escape);
        screen.waitUntil([&] {
            return screen.all(QAccessible::Dialog).isEmpty() &&
                   std::ranges::any_of(screen.words(place),
                                       [&](const QString& name) { return screen.place().startsWith(name); });
        });
    }

    void waiting()
    {
        fail(Operation::me, {.kind = Fault::Kind::stallAfterBody});
        begin();
        letPass(3200ms);
        take("loading");
    }
    void signInScreens()
    {
        fail(Operation::config, {.kind = Fault::Kind::stallAfterBody});
        begin();
        take("sign-in-waiting", "Waiting for Palvera to answer…");
        begin();
        take("sign-in-email", "Work email");
        screen.click(button, "Continue with Google, in a sign-in window.");
        take("sign-in-browser", "Finish in your browser");
        login().browser()->becomeActive();
        letPass(2200ms);
        take("sign-in-browser-back", "Finished there?");
        screen.click(button, "Cancel");
        application().arrive({.addresses = {"palvera://sign-in?grant=late"}});
        screen.takeWarnings();
        take("sign-in-browser-late", "That sign-in was cancelled.");
        passkeyScreens();
        signIn("ada@northlight.example", "wrong");
        take("sign-in-password-wrong", "That email or password is not right.");
        screen.click(button, "Forgotten your password?");
        take("sign-in-forgot", "Send me a link");
        screen.click(button, "Send me a link");
        take("sign-in-forgot-asked", "Nothing has changed yet.");
        isAltHeld = true;
        begin();
        screen.click(button, "Sign in with an access code");
        take("sign-in-access-code", "Back to sign in");
        isAltHeld = false;
        const std::tuple<const char*, const char*, const char*, const char*> steps[] = {
            {"ben@northlight.example", "reel-two", "Check your email", "sign-in-email-code"},
            {"cleo@northlight.example", "reel-three", "One more step", "sign-in-authenticator"},
            {"dov@northlight.example", "reel-four", "Add an authenticator", "sign-in-enrol"},
        };
        for (const auto& [email, password, title, name] : steps) {
            begin();
            signIn(email, password);
            waitForText(title);
            if (screen.shows(button, "Cannot scan it? Enter this key instead"))
                screen.click(button, "Cannot scan it? Enter this key instead");
            take(name);
        }
    }
    void passkeyScreens()
    {
        using Kind = PasskeyPrompt::Kind;
        const ScopedVariable site("PV_API", server->serviceAddress().replace("127.0.0.1", "localhost") + "/api");
        begin();
        keys.plug(true);
        take("sign-in-key", "With your security key.");
        screen.click(button, "Sign in with a passkey");
        screen.waitUntil([&] { return !keys.requests.empty(); });
        const std::pair<const char*, PasskeyPrompt> prompts[] = {
            {"insert", {.kind = Kind::insert}},
            {"which", {.kind = Kind::which}},
            {"pin", {.kind = Kind::pin, .triesLeft = 8}},
            {"pin-wrong", {.kind = Kind::pin, .triesLeft = 7, .isWrong = true}},
            {"pin-last", {.kind = Kind::pin, .triesLeft = 1, .isWrong = true}},
            {"touch", {.kind = Kind::touch}},
            {"account", {.kind = Kind::account, .names = {"ada@northlight.example", "hana@kestrel.example"}}},
            {"working", {}},
        };
        for (const auto& [name, prompt] : prompts) {
            keys.ask(prompt);
            take(QStringLiteral("sign-in-key-") + name);
        }
        screen.click(button, "Cancel");
        keys.plug(false);
    }
    void pickers()
    {
        begin();
        screen.click(button, "Continue with Google, in a sign-in window.");
        screen.find(button, "Open the browser again");
        application().arrive({.addresses = {signInOnPage("ada%40northlight%2Eexample")}});
        screen.takeWarnings();
        take("clients-from-browser", "You are signed in as");
        finish();
        QFile::remove(disk.filePath("cookies"));
        QDir(disk.path()).mkdir("cookies"); // where the file belongs
        begin();
        openClients();
        take("clients-not-kept", "Signed in, but only for now");
        platform.expireSignIns();
        screen.click(listItem, "Northlight Pictures");
        take("sign-in-expired", "Your sign-in has expired. Sign in again.");
        finish();
        QDir(disk.path()).rmdir("cookies");
        fail(Operation::orgs, {.kind = Fault::Kind::stallAfterBody});
        begin();
        openClients();
        take("clients-loading", "Loading your clients…");
        begin();
        openClients();
        take("clients");
        fail(Operation::projects, {.kind = Fault::Kind::status, .status = 500});
        screen.click(listItem, "Northlight Pictures");
        take("projects-failed", "Could not load your projects");
        screen.click(button, "Try again");
        take("projects", "Salt");
        screen.choose(button, "Account");
        take("account-menu", "Sign out");
        screen.press(Qt::Key_Escape);
        screen.press(Qt::Key_F10);
        take("menu", "Keyboard shortcuts");
        screen.press(Qt::Key_Escape);
        const std::tuple<const char*, Qt::Key, Qt::KeyboardModifier, const char*> sheets[] = {
            {"settings", Qt::Key_Comma, Qt::ControlModifier, "Uploads at once"},
            {"shortcuts", Qt::Key_Question, Qt::ControlModifier, "Back"},
            {"help", Qt::Key_F1, Qt::NoModifier, "Sending a master"}};
        for (const auto& [name, key, modifier, text] : sheets) {
            screen.press(key, modifier);
            take(name, text);
            leave("Account");
        }
        screen.click(button, "Clients");
        waitForText("Choose a client");
        fail(Operation::projects, {.kind = Fault::Kind::overwrite, .members = {{"projects", QJsonArray()}}});
        screen.click(listItem, "Northlight Pictures");
        take("projects-none", "No projects");
    }
    void assets()
    {
        begin();
        openClients();
        screen.click(listItem, "Northlight Pictures");
        screen.click(listItem, "Assets");
        screen.find(listItem, "Uploads");
        take("assets");
        screen.window().resize(720, 560);
        take("assets-narrow");
        screen.window().resize(1080, 720);
        auto& view = *root().assets();
        view.select(1);
        view.selectTo(3);
        fail(Operation::assets, {.kind = Fault::Kind::status, .status = 503});
        view.loadMore();
        screen.press(Qt::Key_End);
        take("assets-more-failed");
        enter("Find an asset", "nothing like it");
        take("assets-nothing-matches", "Nothing matches");
        screen.press(Qt::Key_Escape);
        screen.click(listItem, "Uploads");
        screen.press(Qt::Key_Return);
        screen.find(listItem, "Rushes 2025");
        QDir(disk.path()).mkdir("Stills");
        view.drop({sparseFile("Salt_feature_UHD.mov", 2'000'000'000), sparseFile("Salt_trailer.mov", 900'000'000),
                   sparseFile("Salt_teaser.mov", 80'000'000), sparseFile("Salt_loop.mov", 5'000'000'000),
                   QUrl::fromLocalFile(disk.filePath("Stills"))});
        letPass(3s);
        goToMainWindow();
        take("uploads");
        screen.press(Qt::Key_Menu);
        take("uploads-menu");
        screen.press(Qt::Key_Escape);
        for (const auto& item : transfers().inFlight())
            transfers().stop(item.id);
        fail(Operation::bin, {.kind = Fault::Kind::status, .status = 500});
        view.load();
        take("uploads-failed", "Could not load Assets");
        fail(Operation::bin, {.kind = Fault::Kind::overwrite,
                              .members = {{"objects", QJsonArray()}, {"folders", QJsonArray()}, {"nextCursor", {}}}});
        screen.click(button, "Try again");
        take("uploads-empty", "Nothing in Uploads yet");
        fail(Operation::assets, {.kind = Fault::Kind::overwrite,
                                 .members = {{"files", QJsonArray()}, {"rows", QJsonArray()}, {"total", 0}}});
        screen.click(button, "Assets");
        take("assets-empty", "Nothing delivered yet");
        screen.drag(screen.find(QAccessible::Heading, "Assets"), {sparseFile("Late.mov", 10)});
        take("assets-drag");
    }
    void deliverables()
    {
        begin();
        openDeliverables();
        take("deliverables");
        screen.click(QAccessible::ComboBox, "Status: All");
        take("deliverables-filter");
        enter("Find a deliverable", "nothing like it");
        take("deliverables-nothing-matches", "Nothing matches");
        screen.press(Qt::Key_Escape);
        openRow("Music and effects");
        take("deliverable");
        auto file = sparseFile("Salt_music_effects_v2.wav", 2'900'000'000);
        screen.drag(screen.find(QAccessible::Grouping, {}), {file});
        take("deliverable-drag");
        drop({QUrl::fromLocalFile(disk.path())});
        take("deliverable-refused", "is a folder");
        drop({file});
        letPass(3s);
        goToMainWindow();
        take("deliverable-in-flight");
        goBack();
        openRow("Forced narrative");
        take("deliverable-filed");
        goBack();
        openRow("Textless elements");
        drop({sparseFile("Salt_feature_UHD.mov", 48'000'000'000)});
        take("deliverable-doubtful", "Send a full-length file");
        leave("Choose a file");
        goBack();
        screen.press(Qt::Key_Escape); // which clears the search
        take("deliverables-transferring");
        sending();
    }
    /// Bytes that move in six seconds.
    qint64 shortFile() const { return 6 * (m_folder.isNull() ? slow : usual); }
    QUrl master(const QString& name) { return sparseFile(name, 1'900'000'000); }
    void sending()
    {
        transfers().stopAll();
        const QList<QUrl> files{master("Salt_key_art_v5.tif"), master("Salt_stills.zip"), master("Salt_cues.pdf")};
        for (const auto& [row, drag, question] :
             {std::tuple("Key art", "deliverables-drag", "deliverables-send"),
              std::tuple("Forced narrative", "deliverables-drag-filed", "deliverables-replace")}) {
            enter("Find a deliverable", row);
            auto* item = screen.find(listItem, row);
            screen.drag(item, files);
            take(drag);
            screen.drop(item, files);
            take(question, "Left out:");
            leave("Find a deliverable");
        }
        openRow("Key art");
        drop(files);
        letPass(3s);
        goToMainWindow();
        transfers().pauseAll();
        take("deliverable-paused");
        screen.click(button, "Stop Salt_key_art_v5.tif");
        take("deliverable-stop", "Stop this upload?");
        leave("Stop Salt_key_art_v5.tif");
        transfers().stopAll();
        for (const auto& [row, status] : {std::pair("Stills", 404), std::pair("Full subtitles", 403)}) {
            goBack();
            openRow(row);
            fail(Operation::start, {.kind = Fault::Kind::status,
                                    .status = status,
                                    .message = "This row takes no files. Ask the help desk about 4711-0815."});
            drop({files.first()});
            letPass(1s);
            goToMainWindow();
            take(status == 404 ? "deliverable-gone" : "deliverable-failed");
        }
        goBack();
        take("deliverables-failed");
        screen.press(Qt::Key_Escape);
    }
    void panel()
    {
        const bool isPictured = !m_folder.isNull(); // what counts down is not read twice the same
        if (isPictured)
            fail(Operation::start, {.kind = Fault::Kind::status, .status = 503}, 2);
        deliver("Key art", "Salt_key_art_v4.tif", 940'000'000);
        deliver("Music cue sheet", "Salt_cues.pdf", 390'000'000);
        deliver("5.1 surround mix", "Salt_5-1_surround_v2.wav", 1'410'000'000);
        deliver("Stereo mix", "Salt_stereo_v1.wav", 610'000'000);
        deliver("Music and effects", "Salt_music_effects_v2.wav", 1'410'000'000);
        deliver("Stills", "Salt_stills_v1.zip", 30'000'000);
        goToPanel();
        if (isPictured)
            waitForText("Trying again in");
        letPass(6s);
        transfers().pause(transfers().inFlight().at(3).id);
        take("transfers");
        screen.tabTo(QAccessible::PageTabList, "Transfers");
        screen.press(Qt::Key_Tab);
        screen.press(Qt::Key_Menu);
        take("transfers-menu", "Show deliverable");
        screen.press(Qt::Key_Escape);
        screen.click(button, "Stop Salt_key_art_v4.tif");
        take("transfers-stop", "Stop this upload?");
        leave("Key art");
        screen.choose(button, "Stop all");
        take("transfers-stop-all", "Stop all transfers?");
        leave("Stop all");
        for (const auto& item : transfers().inFlight())
            transfers().stop(item.id);
        goToMainWindow();
        deliver("Stills", "Salt_stills.zip", shortFile());
        screen.waitUntil([&] { return transfers().uploadsFinished() == 1; });
        fail(Operation::start, {.kind = Fault::Kind::status, .status = 403, .message = "This row takes no files."});
        deliver("Full subtitles", "Salt_de.srt", 80'000);
        screen.waitUntil([&] { return transfers().inFlightCount() == 0; });
        goToPanel();
        root().transfers()->setTab(TransfersView::Finished);
        take("transfers-finished");
        root().transfers()->setTab(TransfersView::Interrupted);
        take("transfers-none-interrupted");
        goToMainWindow();
        cutOff();
        fail(Operation::complete, {.kind = Fault::Kind::status,
                                   .status = 409,
                                   .error = "delivery_doubt",
                                   .message = "This file is 30 MB. A stereo mix of "
                                              "this film would be about 900 MB."});
        deliver("Stereo mix", "Salt_stereo_v2.wav", shortFile());
        take("doubt", "Check this file before it goes");
        leave("Find a deliverable");
    }
    void cutOff()
    {
        deliver("5.1 surround mix", "Salt_feature_UHD.mov", 2'000'000'000);
        deliver("Music and effects", "Salt_music_effects_v3.wav", 1'410'000'000);
        letPass(3s);
        screen.click(button, "Account");
        screen.click(menuItem, "Sign out");
        take("sign-out-moving", "Sign out while files are moving?");
        leave("Account");
        screen.window().close();
        take("quit", "Quit while files are moving?");
        leave("Account");
        const auto moved = disk.filePath("Stills/Salt_music_effects.wav");
        QFile::rename(disk.filePath("Salt_music_effects_v3.wav"), moved);
        begin();
        openClients();
        take("clients-cut-off", "2 uploads were cut off.");
        openDeliverables();
        openRow("5.1 surround mix");
        take("deliverable-cut-off", "was cut off");
        transfers().setPanelOpen(true);
        goToPanel();
        take("transfers-interrupted", "Locate…");
        screen.choose(button, "Discard Salt_feature_UHD.mov");
        take("transfers-discard", "Discard this upload?");
        leave("Discard Salt_feature_UHD.mov");
        const QString locate("Locate… Salt_music_effects_v3.wav");
        for (const auto& [file, name, title] :
             {std::tuple(sparseFile("Salt_music_effects_v4.wav", 5), "locate-another", "That is another file"),
              std::tuple(QUrl::fromLocalFile(moved), "locate-same", "Is this the same file?")}) {
            screen.choose(button, locate);
            root().transfers()->interrupted()->locate("salt-row-6", file);
            take(name, title);
            leave(locate);
        }
        goToMainWindow();
        goBack();
    }
    void updates()
    {
        begin();
        openClients();
        screen.press(Qt::Key_U, Qt::ControlModifier);
        take("update-not-here", "Updates of this copy come with those of the system.");
        leave("Northlight Pictures");
        feed = server->serviceAddress() + "/updates/latest.json";
        fail(Operation::feed, {.kind = Fault::Kind::overwrite, .members = {{"build", "45"}}}, 2);
        begin();
        openClients();
        screen.press(Qt::Key_U, Qt::ControlModifier);
        take("update-none", "Palvera is up to date");
        leave("Northlight Pictures");
        fail(Operation::feed, {.kind = Fault::Kind::status, .latency = 2s}, 2);
        begin();
        openClients();
        screen.press(Qt::Key_U, Qt::ControlModifier);
        take("update-checking", "Checking for updates…");
        take("update-feed-silent", "Could not check for updates");
        leave("Northlight Pictures");
        installer.answer = "The update is not signed by Palvera.";
        finish();
        QFile::remove(disk.filePath("cookies"));
        begin();
        take("update-signed-out", "Install");
        openClients();
        screen.tabTo(button, "Install");
        take("update-available", "is available.");
        screen.press(Qt::Key_Return);
        screen.waitUntil([&] { return application().root().updatePill()->percent() >= 30; });
        take("update-downloading");
        take("update-failed", "Retry update");
        screen.click(button, "Menu");
        screen.click(QAccessible::MenuItem, "About Palvera");
        screen.click(button, "Licences");
        take("about", "Last failure");
        leave("Menu");
        installer.answer.reset();
        screen.click(button, "Retry update");
        take("update-preparing", "Checking");
        installer.calls.back().reply({});
        take("update-ready", "Restart");
        screen.click(listItem, "Northlight Pictures");
        screen.click(listItem, "Salt");
        screen.find(listItem, "Picture master");
        deliver("Picture master", "Salt_feature_UHD.mov", 2'000'000'000);
        goToMainWindow();
        screen.click(button, "Restart");
        take("update-question", "Restart Palvera now?");
        leave("Restart");
        screen.press(Qt::Key_Return);
        waitForText("Restart Palvera now?");
        screen.click(screen.all(button, "Restart").last());
        take("update-restarting", "Restarting");
    }
    void goBack()
    {
        screen.click(button, "Deliverables");
        screen.find(QAccessible::EditableText, "Find a deliverable");
    }
    void deliver(const QString& row, const QString& name, qint64 bytes)
    {
        openRow(row);
        drop({sparseFile(name, bytes)});
        screen.waitUntil([&] { return transfers().isPanelOpen(); });
        goToMainWindow();
        goBack();
    }

    const QString m_folder;
    const Appearance m_appearance;
};

} // namespace
} // namespace palvera
int main(int argc, char** argv)
{
    QTemporaryDir runtime;
    qputenv("XDG_RUNTIME_DIR", runtime.path().toLocal8Bit());
    qputenv("QT_QUICK_BACKEND", "software");
    const bool isRead = argc == 2 && QByteArrayView(argv[1]) == "--read";
    if (!isRead)
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    palvera::loadFonts();
    palvera::installSpokenStates();
    if (!isRead && (argc < 3 || argc > 5)) {
        std::cerr << "usage: palvera-screenshots FOLDER light|dark [PERCENT [LANGUAGE]], or --read\n";
        return 2;
    }
    testing::GTEST_FLAG(throw_on_failure) = true; // what a test would be told of ends the program
    testing::InitGoogleTest(&argc, argv);
    try {
        if (isRead) {
            palvera::Photographer({}, {}).takeAll();
            return 0;
        }
        const auto folder = QString::fromLocal8Bit(argv[1]);
        QDir().mkpath(folder);
        palvera::Photographer photographer(folder,
                                           {.dark = QByteArrayView(argv[2]) == "dark",
                                            .textScale = (argc > 3 ? QByteArray(argv[3]).toDouble() : 100) / 100});
        std::optional<palvera::Language> language;
        if (argc > 4) {
            QLocale::setDefault(QLocale(argv[4]));
            language.emplace(QStringList(argv[4]));
            photographer.screen.words = palvera::Words(argv[4]);
        }
        photographer.takeAll();
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
    return 0;
}
