#pragma once

#include "app/signin/LoginView.h"

#include "files/Preferences.h"
#include "localplatform/Platform.h"
#include "localplatform/SignIn.h"
#include "service/API.h"
#include "service/SignInOperations.h"
#include "session/PasskeySignIn.h"
#include "session/Session.h"
#include "support/FakeNetworkPath.h"
#include "support/FakePasskeyService.h"
#include "support/QtPrinting.h"
#include "support/ScopedVariable.h"
#include "support/SimulatedNetwork.h"
#include "support/Simulation.h"

#include <QTemporaryDir>

namespace palvera {

using namespace std::chrono_literals;

/// The screen against the local platform, with its sample accounts.
struct LoginViewTest : testing::Test {
    ScopedVariable serviceAddress{"PV_API", "http://platform.test/api"};
    QTemporaryDir disk;
    Simulation world;
    local::Platform platform{{.folder = disk.filePath("platform")}, [this] { return world.clock.wallNow(); }};
    SimulatedNetwork network{platform, world.clock};
    std::unique_ptr<HttpClient> client = network.client();
    API api{{.client = *client, .executor = world.executor(), .clearCookies = [] {}}};
    Preferences preferences{disk.filePath("preferences.conf")};
    FakeNetworkPath path{world.clock};
    Session session{{world.executor(), world.executor(), world.clock, api, preferences, path}};
    std::vector<QByteArray> opened; ///< in the browser
    bool hasBrowser = true;
    BrowserSignIn browser{{.clock = world.clock, .show = [this](const QByteArray& address) {
                               opened.push_back(address);
                               return hasBrowser;
                           }}};
    FakePasskeyService keys;
    PasskeySignIn passkey{api, keys};
    LoginView view{{.main = world.executor(),
                    .clock = world.clock,
                    .session = session,
                    .network = path,
                    .doors = {api, browser, passkey}}};

    ~LoginViewTest() override { world.run(view.close()); }

    void open(bool developerDoor = false)
    {
        view.open(developerDoor);
        world.pass(1s);
    }
    void submit()
    {
        view.submit();
        EXPECT_TRUE(view.isBusy());
        world.pass(1s);
        EXPECT_FALSE(view.isBusy());
    }
    /// Enters an account's e-mail address and password.
    void enter(const QString& email, const QString& password)
    {
        open();
        view.setEmail(email);
        submit();
        view.setPassword(password);
        submit();
    }
    /// The address with which the platform ends a sign-in of that account in the browser.
    QString grantedTo(const QByteArray& account)
    {
        const auto page = world.run(client->send({.url = "http://platform.test/sign-in/finish?account=" + account}));
        return "palvera:" + QString::fromUtf8(page.body).section("palvera:", 1, 1).section('"', 0, 0);
    }
    void comeBack(const QString& callback)
    {
        world.settle();
        EXPECT_EQ(browser.take(callback), BrowserSignIn::Taken::used);
        world.pass(1s);
    }
    QString user() const { return session.me() ? session.me()->user.email : QString(); }
    /// What the platform was asked that begins so, such as "POST auth/login".
    std::vector<std::string> asked(std::string_view beginning) const
    {
        std::vector<std::string> all;
        for (const auto& request : network.seen())
            if (auto each = (request.method + ' ' + request.target.mid(5)).toStdString(); each.starts_with(beginning))
                all.push_back(each);
        return all;
    }
    void fail(local::Operation operation, local::Fault fault)
    {
        platform.faults().add({.operation = operation, .times = 1, .fault = std::move(fault)});
    }
};

} // namespace palvera
