#pragma once

#include "app/Application.h"
#include "async/MainThread.h"
#include "files/Preferences.h"
#include "http/CookieStore.h"
#include "http/HttpSession.h"
#include "localplatform/Server.h"
#include "service/Connections.h"
#include "session/PasskeySignIn.h"
#include "tests/app/FakeNotices.h"
#include "tests/support/FakeInstaller.h"
#include "tests/support/FakePasskeyService.h"
#include "tests/support/QtPrinting.h"
#include "tests/support/ScopedVariable.h"
#include "tests/support/Screen.h"
#include "transfers/TransferEngines.h"

#include <QTemporaryDir>

namespace palvera {

/// The desktop application in a window without a display, against the local platform's server in the same process.
class Desktop {
public:
    /// Storage moves that many bytes in a second on each connection; 0 is no limit.
    explicit Desktop(qint64 bytesPerSecond = 0, const local::PublishedUpdate& published = {})
        : platform({.folder = disk.filePath("platform"), .update = published}, std::chrono::system_clock::now),
          server(std::in_place, platform, local::ServerOptions{.bytesPerSecond = bytesPerSecond})
    {}

    QTemporaryDir disk;
    local::Platform platform;
    std::optional<local::Server> server;
    ScopedVariable serviceAddress{"PV_API", server->serviceAddress() + "/api"};
    Screen screen;
    bool isAltHeld = false;
    QByteArrayList shownInBrowser;
    FakePasskeyService keys;
    QByteArray feed; ///< of updates; none when empty
    FakeWorkspace workspace;
    FakeInstaller installer;
    bool isWatched = true;
    std::function<Task<void>(UploadRequest)> upload; ///< in the place of the engine, where it is set
    FakeNotices notices;
    QStringList shownFiles; ///< in their folders

    /// Starts the program with what an earlier start left. `show` by itself is the second start.
    void start()
    {
        finish();
        m_running.emplace(disk.path(), *this);
        ASSERT_TRUE(m_running->application.show());
        goToMainWindow();
    }
    void finish()
    {
        screen.leave();
        installer.calls.clear(); // with whoever waits for an answer
        m_running.reset();
    }
    Application& application() { return m_running->application; }
    RootView& root() { return application().root(); }
    LoginView& login() { return *root().login(); }
    Transfers& transfers() { return application().transfers(); }
    LineShares shares() { return m_running->engines.shares(); }
    void goToPanel() { screen.use(application().panel()); }
    void goToMainWindow() { screen.use(application().window()); }
    /// The next requests of that operation go wrong.
    void fail(local::Operation operation, local::Fault fault, int times = 1)
    {
        platform.faults().add({.operation = operation, .times = times, .fault = std::move(fault)});
    }
    /// A file of that many bytes, all zero, that takes no room.
    QUrl sparseFile(const QString& name, qint64 bytes)
    {
        QFile file(disk.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.resize(bytes));
        return QUrl::fromLocalFile(file.fileName());
    }

    /// Types `text` into the field of that name, which has the keyboard or is led to by Tab.
    void enter(const QString& field, const QString& text)
    {
        screen.find(QAccessible::EditableText, field);
        screen.tabTo(QAccessible::EditableText, field);
        screen.press(Qt::Key_A, Qt::ControlModifier);
        screen.type(text);
    }
    void send(const QString& field, const QString& text)
    {
        enter(field, text);
        screen.press(Qt::Key_Return);
    }
    /// Has the platform's pages sign that account in and gives the address to which they send the browser then.
    QByteArray signInOnPage(const QByteArray& account)
    {
        const auto page = platform.serve({.method = "GET", .target = "/sign-in/finish?account=" + account}, {}, {});
        return "palvera:" + QString::fromUtf8(page.body).section("palvera:", 1, 1).section('"', 0, 0).toUtf8();
    }
    /// Sends an address and a password at the doors for them.
    void signIn(const QString& email = "ada@northlight.example", const QString& password = "reel-one")
    {
        send("Work email", email);
        send("Password", password);
    }
    /// Past the sign-in, if nobody is signed in, to the clients.
    void openClients()
    {
        screen.waitUntil([&] { return root().key() != "loading"; });
        if (root().key() == "login")
            signIn();
        screen.waitForText("Choose a client");
    }
    void openDeliverables(const QString& row = "Picture master")
    {
        openClients();
        screen.click(QAccessible::ListItem, "Northlight Pictures");
        screen.click(QAccessible::ListItem, "Salt");
        screen.find(QAccessible::ListItem, row);
    }
    /// Searches the deliverables for that row and opens it.
    void openRow(const QString& name)
    {
        enter("Find a deliverable", name);
        screen.waitUntil([&] { return screen.shows(QAccessible::ListItem, name) && rows().size() < 4; });
        screen.waitForFrame(); // which puts those of one name in their order
        screen.click(QAccessible::ListItem, name);
        screen.waitUntil([&] { return root().page() == RootView::Page::Deliverable; });
        screen.find(QAccessible::Heading, name);
    }
    void openDeliverable(const QString& name)
    {
        openDeliverables();
        openRow(name);
    }
    QStringList rows() const { return screen.names(QAccessible::ListItem); }
    /// Lets files go where the deliverable that is open takes them.
    Qt::DropAction drop(const QList<QUrl>& files, Qt::DropAction proposed = Qt::CopyAction)
    {
        return screen.drop(screen.find(QAccessible::Grouping, {}), files, proposed);
    }
    void waitForText(const QString& text) { screen.waitForText(text); }

    ~Desktop() { finish(); }

private:
    /// Goes once everything that it ran for is gone and has nothing left to do.
    struct Pool {
        WorkerThreads threads{4};
        ~Pool() { threads.finish(); }
    };

    struct Running {
        Running(const QString& folder, Desktop& desktop)
            : cookies(std::make_shared<CookieStore>(folder + "/cookies")),
              preferences(folder + "/palvera.conf"),
              mainThread(engine.threads.context()),
              http(engine.threads.executor(), {.sharedCookies = cookies}),
              updates(engine.threads.executor()),
              api({.client = http,
                   .executor = engine.threads.executor(),
                   .clearCookies = [this] { cookies->clear(); },
                   .cookieProblem = [this] { return cookies->problem(); }}),
              passkey(api, desktop.keys),
              web({.clock = clock,
                   .show =
                       [&desktop](const QByteArray& address) {
                           desktop.shownInBrowser.append(address);
                           return true;
                       }}),
              engines({.applicationSupport = folder, .library = folder, .caches = folder + "/caches", .config = folder},
                      clock, {.engine = engine.threads, .network = network, .api = api}),
              application({.api = api,
                           .preferences = preferences,
                           .clock = clock,
                           .main = mainThread.executor(),
                           .isDoorAsked = [isAltHeld = desktop.isAltHeld] { return isAltHeld; },
                           .isWatched = [&desktop] { return desktop.isWatched; },
                           .web = web,
                           .passkey = passkey,
                           .transfers = transfersEnvironment(desktop),
                           .shares = engines.shares(),
                           .updates = {.main = mainThread.executor(),
                                       .disk = engine.threads.executor(),
                                       .clock = clock,
                                       .http = updates,
                                       .workspace = desktop.workspace,
                                       .feed = desktop.feed,
                                       .version = "1.2.3",
                                       .build = "45",
                                       .caches = folder + "/caches",
                                       .target = "/opt/palvera",
                                       .connect = [&desktop] { return desktop.installer.connect(); }},
                           .notices = desktop.notices,
                           .files = {[&desktop](const QString& path) { desktop.shownFiles.append(path); },
                                     [](const QString&) {}}})
        {}

        Transfers::Environment transfersEnvironment(Desktop& desktop)
        {
            auto environment = engines.environment(mainThread.executor());
            if (desktop.upload)
                environment.upload = desktop.upload;
            return environment;
        }

        Pool engine;
        NetworkThreads network{4};
        std::shared_ptr<CookieStore> cookies;
        Preferences preferences;
        MainThread mainThread;
        SystemClock clock;
        HttpSession http;
        HttpSession updates;
        API api;
        PasskeySignIn passkey;
        BrowserSignIn web;
        TransferEngines engines;
        Application application;
    };

    std::optional<Running> m_running;
};

class DesktopTest : public testing::Test, protected Desktop {
protected:
    using Desktop::Desktop;
};

} // namespace palvera
