#pragma once

#include "app/Application.h"
#include "localplatform/Server.h"
#include "localplatform/SignIn.h"
#include "platform/CookieStore.h"
#include "platform/HttpSession.h"
#include "platform/MainThread.h"
#include "platform/Preferences.h"
#include "service/API.h"
#include "session/SignInDoors.h"
#include "tests/support/ScopedVariable.h"
#include "tests/support/Screen.h"

#include <boost/asio/thread_pool.hpp>

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace palvera {

/// The desktop application in a window without a display, against the local platform's server in the same process.
class Desktop {
public:
    QTemporaryDir disk;
    local::Platform platform{{.folder = disk.filePath("platform")}, [] { return std::chrono::system_clock::now(); }};
    std::optional<local::Server> server{std::in_place, platform, local::ServerOptions{}};
    ScopedVariable serviceAddress{"PV_API", server->serviceAddress() + "/api"};
    Screen screen;
    bool isAltHeld = false;

    /// Starts the program with what an earlier start left. `show` by itself is the second start.
    void start()
    {
        finish();
        m_running.emplace(disk.path(), isAltHeld);
        ASSERT_TRUE(m_running->application.show());
        screen.use(m_running->application.window());
    }
    void finish()
    {
        screen.leave();
        m_running.reset();
    }
    Application& application() { return m_running->application; }

    /// Types `text` into the field of that name, which has the keyboard or is led to by Tab.
    void enter(const QString& field, const QString& text)
    {
        screen.find(QAccessible::EditableText, field);
        screen.tabTo(QAccessible::EditableText, field);
        screen.press(Qt::Key_A, Qt::ControlModifier);
        screen.type(text);
    }
    /// Enters an address and a password at the doors for them, and sends each with Enter.
    void signIn(const QString& email, const QString& password)
    {
        enter("Work email", email);
        screen.press(Qt::Key_Return);
        enter("Password", password);
        screen.press(Qt::Key_Return);
    }
    bool waitForText(const QString& text)
    {
        return screen.waitUntil([&] { return screen.reads(text); });
    }
    /// The screen that the program is at, once it has come to rest there.
    bool waitForScreen(const QString& key)
    {
        return screen.waitUntil([&] { return application().root().key() == key; });
    }

    ~Desktop() { finish(); }

private:
    /// Goes once everything that it ran for is gone and has nothing left to do.
    struct Pool {
        boost::asio::thread_pool threads{4};
        ~Pool() { threads.join(); }
    };

    struct Running {
        Running(const QString& folder, bool isAltHeld)
            : cookies(std::make_shared<CookieStore>(folder + "/cookies")),
              preferences(folder + "/palvera.conf"),
              mainThread(engine.threads),
              http(engine.threads.get_executor(), {.sharedCookies = cookies}),
              api({.client = http,
                   .executor = engine.threads.get_executor(),
                   .clearCookies = [this] { cookies->clear(); }}),
              application({.api = api,
                           .preferences = preferences,
                           .clock = clock,
                           .main = mainThread.executor(),
                           .isDoorAsked = [isAltHeld] { return isAltHeld; },
                           .version = "1.2.3",
                           .build = "45",
                           .web = web,
                           .passkey = passkey})
        {}

        Pool engine;
        std::shared_ptr<CookieStore> cookies;
        Preferences preferences;
        MainThread mainThread;
        SystemClock clock;
        HttpSession http;
        API api;
        NoWebSignIn web;
        NoPasskeySignIn passkey;
        Application application;
    };

    std::optional<Running> m_running;
};

} // namespace palvera
