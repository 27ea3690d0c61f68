#include "app/signin/LoginView.h"

#include "files/Preferences.h"
#include "http/TransportError.h"
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

#include <gmock/gmock.h>

namespace palvera {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using Face = LoginView::Face;
using Field = LoginView::Field;
using local::Fault;
using local::Operation;

namespace {

const QString cannotReach = "Cannot reach Palvera. Check your connection and try again.";
const auto unanswered = std::make_exception_ptr(TransportError(TransportError::Kind::connect, "no"));

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
    std::vector<Field> focused;

    LoginViewTest()
    {
        QObject::connect(&view, &LoginView::focusWanted, [this](Field field) { focused.push_back(field); });
    }
    ~LoginViewTest() override { world.run(view.close()); }

    void open(bool developerDoor = false)
    {
        view.open(developerDoor);
        wait(1s);
    }
    void wait(std::chrono::milliseconds time)
    {
        world.run(world.clock.sleep(time));
        world.settle();
    }
    void submit()
    {
        view.submit();
        EXPECT_TRUE(view.isBusy());
        wait(1s);
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
        wait(1s);
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
    void fail(Operation operation, Fault fault, int times = 1)
    {
        platform.faults().add({.operation = operation, .times = times, .fault = std::move(fault)});
    }
};

TEST_F(LoginViewTest, thePlatformSaysWhichDoorsThereAre)
{
    struct Case {
        bool devAuth, workos, developer;
        Face first;
        bool isLinkShown;
        QStringList social;
    } cases[] = {
        {true, true, false, Face::Email, false, {"google", "microsoft", "apple"}},
        {true, true, true, Face::Email, true, {"google", "microsoft", "apple"}},
        {false, true, true, Face::Email, false, {"google", "microsoft", "apple"}},
        {true, false, true, Face::Login, false, {}},
    };
    for (const auto& [devAuth, workos, developer, first, isLinkShown, social] : cases) {
        SCOPED_TRACE(testing::Message() << devAuth << workos << developer);
        fail(Operation::config,
             {.kind = Fault::Kind::overwrite, .members = {{"devAuth", devAuth}, {"workos", workos}}});
        open(developer);
        EXPECT_EQ(view.face(), first);
        EXPECT_FALSE(view.faceMoves());
        EXPECT_EQ(view.isAccessCodeLinkShown(), isLinkShown);
        EXPECT_EQ(view.isIdentityProviderShown(), workos);
        EXPECT_EQ(view.social(), social);
        view.forgotPassword();
        EXPECT_TRUE(view.faceMoves());
        view.backToSignIn();
        EXPECT_EQ(view.face(), first);
    }
    EXPECT_EQ(LoginView::displayName("google"), "Google");
}

TEST_F(LoginViewTest, noDoorIsThereUntilThePlatformHasSaidWhich)
{
    for (auto [usable, words] : {std::pair(true, "Waiting for Palvera to answer…"),
                                 std::pair(false, "This computer is not connected to a network.")}) {
        path.usable = usable;
        network.conditions.latency = 3s;
        view.open(false);
        world.run(world.clock.sleep(1499ms));
        EXPECT_EQ(view.waitText(), "");
        wait(1ms);
        EXPECT_EQ(view.waitText(), words);
        EXPECT_TRUE(view.isConfigLoading());
        wait(3s);
        EXPECT_FALSE(view.isConfigLoading());
        EXPECT_EQ(view.face(), Face::Email);
    }
}

TEST_F(LoginViewTest, theDoorIsAskedForAgainWhileNobodyTypesAndBeforeItsFirstRequest)
{
    const auto openUnreached = [&] {
        network.conditions.listening = false;
        open();
        EXPECT_EQ(view.face(), Face::Login);
        EXPECT_FALSE(view.isConfigLoading());
    };
    openUnreached();
    network.conditions.listening = true;
    wait(3s);
    EXPECT_EQ(view.face(), Face::Email);

    openUnreached();
    view.setEmail("hana@kestrel.example");
    view.setPassword("open-sesame");
    network.conditions.listening = true;
    wait(100s);
    EXPECT_EQ(view.face(), Face::Login) << "under the hands";
    submit();
    EXPECT_EQ(view.face(), Face::Email);
    EXPECT_EQ(view.email(), "hana@kestrel.example");
    EXPECT_EQ(view.password(), "") << "it was not for this door";
    EXPECT_NE(view.notice(), "");
    EXPECT_THAT(asked("POST"), IsEmpty());

    network.conditions.latency = 600ms;
    fail(Operation::config, {.kind = Fault::Kind::status, .status = 503});
    open();
    wait(2100ms); // the second question is under way
    view.setEmail("h");
    wait(10s);
    EXPECT_EQ(view.face(), Face::Login) << "its answer is not welcome any more";
    EXPECT_FALSE(view.isIdentityProviderShown());
    network.conditions.latency = 1ms;
    fail(Operation::config, {.kind = Fault::Kind::status, .status = 503});
    view.setEmail("hana@kestrel.example");
    view.setPassword("open-sesame");
    submit();
    EXPECT_EQ(user(), "hana@kestrel.example") << "a door that cannot be asked about is tried";
}

TEST_F(LoginViewTest, anotherSiteBeginsAfreshButForTheAddress)
{
    qunsetenv("PV_API");
    enter("ben@northlight.example", "reel-two");
    ASSERT_EQ(view.face(), Face::Verify);
    view.setCode("246810");
    view.chooseSite(true);
    EXPECT_TRUE(view.isConfigLoading());
    EXPECT_EQ(view.code(), "");
    wait(1s);
    EXPECT_EQ(view.face(), Face::Email);
    EXPECT_EQ(view.email(), "ben@northlight.example");
    view.setEmail("b");
    network.conditions.listening = false;
    view.chooseSite(false);
    wait(1s);
    EXPECT_EQ(view.face(), Face::Login);
    network.conditions.listening = true;
    wait(3s);
    EXPECT_EQ(view.face(), Face::Email) << "nothing was typed since";
}

TEST_F(LoginViewTest, onlyAnAddressOfTheEnvironmentTakesTheChoiceOfSiteAway)
{
    const std::pair<const char*, bool> cases[] = {{"", true},
                                                  {"localhost:8700/api", true},
                                                  {"http://platform.test/api", false},
                                                  {"https://staging.palvera.example/api", false}};
    for (const auto& [value, isShown] : cases) {
        const ScopedVariable named("PV_API", value);
        EXPECT_EQ(view.isSiteChoiceShown(), isShown) << value;
        EXPECT_EQ(api.serviceProblem() != "", isShown && *value) << value;
    }
}

TEST_F(LoginViewTest, theLinkLeadsBetweenTheDoorsAndTakesNoSecretAlong)
{
    open(true);
    view.setPassword("typed");
    for (auto face : {Face::Login, Face::Email, Face::Login}) {
        view.toggleAccessCode();
        EXPECT_EQ(view.face(), face);
        EXPECT_EQ(view.password(), "");
    }
    view.setEmail("hana@kestrel.example");
    view.setPassword("open-sesame");
    submit();
    EXPECT_EQ(user(), "hana@kestrel.example");
    EXPECT_EQ(asked("POST auth/login").size(), 1u);
}

TEST_F(LoginViewTest, aRefusedPasswordIsTriedAtEachDoorThatMayKnowTheAccount)
{
    const std::string first = "POST auth/password", second = "POST auth/migrate", own = "POST auth/login";
    const QString refusal = "That email or password is not right.";
    struct Case {
        bool devAuth;
        const char* email;
        const char* password;
        QString message;
        std::vector<std::string> doors;
    } cases[] = {
        {true, "ada@northlight.example", "wrong", refusal, {first, second, own}},
        {false, "ada@northlight.example", "wrong", refusal, {first, second}},
        {true,
         "gus@harbour.example",
         "reel-seven",
         "Your password needs renewing. Use the link we sent you.",
         {first, second}},
    };
    for (const auto& [devAuth, email, password, message, doors] : cases) {
        fail(Operation::config, {.kind = Fault::Kind::overwrite, .members = {{"devAuth", devAuth}}});
        auto before = asked("POST").size() + 1; // which asks for the way in of that address
        enter(email, password);
        EXPECT_EQ(view.error(), message);
        EXPECT_EQ(view.face(), Face::Password);
        auto all = asked("POST");
        EXPECT_EQ(std::vector(all.begin() + std::ptrdiff_t(before), all.end()), doors);
    }
}

TEST_F(LoginViewTest, eachCallThatIsNotAnsweredSaysSoAndKeepsWhatWasEntered)
{
    open();
    network.conditions.listening = false;
    struct Case {
        std::function<void()> go;
        Face face;
        QString message;
    } cases[] = {
        {[&] { view.toggleAccessCode(); }, Face::Login, cannotReach},
        {[&] { view.changeEmail(); }, Face::Email, cannotReach},
        {[&] { view.forgotPassword(); }, Face::Forgot, "Could not send that. Check your connection."},
    };
    view.setEmail("ada@northlight.example");
    for (const auto& [go, face, message] : cases) {
        go();
        ASSERT_EQ(view.face(), face);
        EXPECT_EQ(view.error(), "");
        submit();
        EXPECT_EQ(view.error(), message);
        EXPECT_EQ(view.email(), "ada@northlight.example");
    }
}

TEST_F(LoginViewTest, aSignInWhoseUserCannotBeReadIsNoSuccess)
{
    fail(Operation::me, {.kind = Fault::Kind::status, .status = 503});
    enter("ada@northlight.example", "reel-one");
    EXPECT_EQ(user(), "");
    EXPECT_NE(view.error(), "");
}

TEST_F(LoginViewTest, nothingIsTakenBackToTheFirstDoorButTheAddress)
{
    const auto goBack = [&] {
        EXPECT_EQ(view.password(), "") << "of no use any more";
        view.setCode("1");
        view.goBack();
        EXPECT_EQ(view.face(), Face::Email);
        EXPECT_FALSE(view.isResent() || view.isAsked());
        EXPECT_EQ(view.qrCode() + view.secret() + view.password() + view.code(), "");
    };
    enter("dov@northlight.example", "reel-four");
    EXPECT_THAT(focused, ElementsAre(Field::email, Field::password, Field::code));
    EXPECT_TRUE(view.qrCode().startsWith("data:image/png;base64,"));
    EXPECT_EQ(view.secret(), "JBSW Y3DP EHPK 3PXP");
    goBack();
    enter("ben@northlight.example", "reel-two");
    EXPECT_EQ(focused.back(), Field::code);
    view.setCode("000000");
    const auto places = focused.size();
    view.resendCode();
    wait(1s);
    EXPECT_TRUE(view.isResent());
    EXPECT_EQ(view.code(), "");
    EXPECT_EQ(focused.size(), places + 1) << "the link that had the keyboard is gone";
    goBack();
    view.forgotPassword();
    submit();
    EXPECT_TRUE(view.isAsked());
    EXPECT_EQ(asked("POST").back(), "POST auth/forgot");
    goBack();
    EXPECT_EQ(view.email(), "ben@northlight.example");
    view.goBack();
    EXPECT_EQ(view.face(), Face::Email);
    submit();
    view.goBack();
    EXPECT_EQ(view.face(), Face::Email) << "from the password";
}

TEST_F(LoginViewTest, nothingElseIsDoneWhileAnActionRuns)
{
    open(true);
    view.setEmail("ada@northlight.example");
    view.submit();
    auto before = network.seen().size();
    view.submit();
    view.signInWith("google");
    view.signInWithPasskey();
    view.resendCode();
    view.toggleAccessCode();
    view.forgotPassword();
    view.backToSignIn();
    EXPECT_EQ(view.face(), Face::Email);
    wait(20s);
    EXPECT_EQ(view.face(), Face::Password);
    EXPECT_EQ(network.seen().size(), before + 1);
    EXPECT_THAT(opened, IsEmpty());
}

TEST_F(LoginViewTest, singleSignOnGoesOnInTheBrowserWithTheAddressThatWasEntered)
{
    open();
    view.setEmail(" eve@harbour.example\n");
    view.submit();
    wait(1s);
    EXPECT_TRUE(view.browser()->isWaiting() && view.isBusy());
    EXPECT_THAT(opened, ElementsAre(webStartURL(api, {}, "eve@harbour.example")));
    comeBack(grantedTo("eve%40harbour%2Eexample"));
    EXPECT_EQ(user(), "eve@harbour.example");
    EXPECT_EQ(session.remark(), "You are signed in as eve@harbour.example.");
}

TEST_F(LoginViewTest, aBrowserThatComesBackOtherwiseIsToldOf)
{
    const QString tryAgain = "Google did not finish. Try again, or sign in another way.";
    const auto because = [](const QString& why) {
        return "Google did not finish (" + why + "). Try again, or sign in another way.";
    };
    const std::pair<QString, QString> cases[] = {
        {"palvera://done?error=access_denied", because("access_denied")},
        {"palvera://done?error=%1B%5B31m%20%E2%80%AEgone%0A", because("[31m gone")},
        {"palvera://done?error=" + QString(500, 'x'), because(QString(63, 'x') + "…")},
        {"palvera://done?error=%20", tryAgain},
        {"palvera://done", tryAgain},
        {"palvera:", tryAgain},
        {"palvera://done?grant=", tryAgain},
        {"palvera://done?grant=old&error=x", "That sign-in has expired. Try again."},
    };
    open();
    for (const auto& [callback, message] : cases) {
        view.signInWith("google");
        comeBack(callback);
        EXPECT_EQ(view.error(), message);
        EXPECT_FALSE(view.isBusy() || view.browser()->isWaiting());
        EXPECT_EQ(user(), "");
    }
    const auto callback = grantedTo("ada%40northlight%2Eexample");
    view.signInWith("google");
    network.conditions.listening = false;
    comeBack(callback);
    EXPECT_EQ(view.error(), tryAgain);
    network.conditions.listening = true;
    view.signInWith("google");
    wait(130s);
    comeBack(callback);
    EXPECT_EQ(view.error(), "That sign-in has expired. Try again.");
    hasBrowser = false;
    view.signInWith("google");
    wait(1s);
    EXPECT_EQ(view.error(), tryAgain);
}

TEST_F(LoginViewTest, whileItWaitsForTheBrowserThereAreWaysOut)
{
    open();
    view.signInWith("google");
    wait(1s);
    view.signInWith("apple");
    view.browser()->openAgain();
    EXPECT_THAT(opened, ElementsAre(webStartURL(api, "google", {}), webStartURL(api, "google", {})));
    EXPECT_FALSE(view.browser()->isUserBack());
    view.browser()->becomeActive();
    wait(1900ms);
    EXPECT_FALSE(view.browser()->isUserBack()) << "it may just be on its way";
    wait(100ms);
    EXPECT_TRUE(view.browser()->isUserBack());
    focused.clear();
    view.goBack();
    EXPECT_FALSE(view.browser()->isWaiting());
    wait(1s);
    EXPECT_EQ(view.error(), "");
    EXPECT_FALSE(view.isBusy());
    EXPECT_THAT(focused, ElementsAre(Field::email));
    view.signInWith("google");
    wait(15min);
    EXPECT_EQ(view.error(), "Google did not finish. Try again, or sign in another way.");
    view.signInWith("google");
    wait(1s);
    EXPECT_FALSE(view.browser()->isUserBack()) << "not yet this time";
    view.open(false);
    EXPECT_FALSE(view.browser()->isWaiting() || view.isBusy()) << "at once: the next one may begin";
    view.signInWith("google");
    wait(1s);
    EXPECT_TRUE(view.browser()->isWaiting());
}

TEST_F(LoginViewTest, aCallbackThatNobodyWaitsForIsSaidAndSignsNobodyIn)
{
    open();
    const auto arrive = [&] {
        view.refuse(browser.take(grantedTo("ada%40northlight%2Eexample")));
        wait(1s);
        return view.notice();
    };
    EXPECT_EQ(arrive(), "That sign-in was not started here, so it was not used.");
    view.signInWith("google");
    wait(1s);
    EXPECT_EQ(view.notice(), "");
    view.browser()->cancel();
    EXPECT_EQ(arrive(), "That sign-in was cancelled. Start it again to use it.");
    view.signInWith("google");
    wait(1s);
    comeBack("palvera://done?error=x");
    EXPECT_EQ(arrive(), "") << "the page offers it twice";
    EXPECT_EQ(user(), "");
    EXPECT_THAT(asked("POST auth/native/redeem"), IsEmpty());
}

TEST_F(LoginViewTest, withoutASecurityKeyThePasskeyIsTheBrowsers)
{
    open();
    EXPECT_EQ(keys.looks, 1);
    view.signInWithPasskey();
    comeBack("palvera://done");
    EXPECT_THAT(opened, ElementsAre("http://platform.test/sign-in?native=1"));
    EXPECT_EQ(view.error(), "The passkey sign-in did not finish. Try again, or sign in another way.");
    EXPECT_THAT(keys.requests, IsEmpty());
}

TEST_F(LoginViewTest, aSecurityKeyIsAskedFirstAndTheBrowserStaysOnePressAway)
{
    using Kind = PasskeyPrompt::Kind;
    qputenv("PV_API", "http://localhost/api"); // that of the passkeys
    open();
    keys.plug(true);
    const auto begin = [&] {
        view.signInWithPasskey();
        wait(1s);
        EXPECT_TRUE(view.isBusy());
        EXPECT_FALSE(view.passkey()->isAsking()) << "there is nothing to ask yet";
        keys.ask({.kind = Kind::touch});
        EXPECT_TRUE(view.passkey()->isAsking());
    };
    const auto end = [&] {
        wait(1s);
        EXPECT_FALSE(view.isBusy() || view.passkey()->isAsking());
        return view.error();
    };
    begin();
    keys.ask({});
    EXPECT_TRUE(view.passkey()->isAsking()) << "the key is at work";
    keys.fail(PasskeyFailure("This security key holds no passkey for Palvera."));
    EXPECT_EQ(end(), "This security key holds no passkey for Palvera.");
    begin();
    view.goBack();
    EXPECT_EQ(end(), "");
    begin();
    keys.answer({.credential = "unknown"});
    EXPECT_EQ(end(), "That passkey is not known here.");
    begin();
    network.conditions.listening = false;
    keys.answer({.credential = "unsent"});
    EXPECT_EQ(end(), "That passkey did not work. Sign in another way.");
    network.conditions.listening = true;
    begin();
    EXPECT_THAT(opened, IsEmpty());
    view.passkey()->useBrowser();
    wait(1s);
    EXPECT_TRUE(view.browser()->isWaiting());
    EXPECT_FALSE(view.passkey()->isAsking());
    comeBack(grantedTo("ada%40northlight%2Eexample"));
    EXPECT_EQ(user(), "ada@northlight.example");
    keys.ask({.kind = Kind::touch});
    EXPECT_FALSE(view.passkey()->isAsking()) << "nobody signs in";
}

TEST_F(LoginViewTest, beginsAfreshWheneverItIsOpened)
{
    enter("cleo@northlight.example", "reel-three");
    network.conditions.latency = 10s;
    view.setCode("135790");
    view.submit();
    network.conditions.latency = 1ms;
    open();
    EXPECT_EQ(view.face(), Face::Email);
    EXPECT_EQ(view.email() + view.password() + view.code() + view.error(), "");
    EXPECT_FALSE(view.isBusy());
    wait(20s);
    EXPECT_EQ(user(), "") << "what was under way is cut off";
}

TEST_F(LoginViewTest, theOtherSiteIsAskedForItsOwnWaysIn)
{
    open();
    EXPECT_EQ(view.title() + ", " + view.siteLabel(), "Sign in, Local");
    qunsetenv("PV_API");
    network.conditions.latency = 2s; // this answer is late, and not that of the other site
    fail(Operation::config, {.kind = Fault::Kind::overwrite, .members = {{"workos", false}}});
    open();
    EXPECT_TRUE(view.isStaging());
    EXPECT_EQ(view.title(), "Sign in to Staging");
    auto before = network.seen(Operation::config).size();
    view.chooseSite(false);
    wait(100ms);
    EXPECT_EQ(network.seen(Operation::config).size(), before) << "that is the site already";
    network.conditions.latency = 1ms;
    view.chooseSite(true);
    wait(500ms);
    EXPECT_EQ(network.seen(Operation::config).size(), before + 1);
    EXPECT_TRUE(view.isLiveSite());
    EXPECT_EQ(view.title(), "Sign in to Live");
    EXPECT_EQ(view.face(), Face::Email);
    wait(5s);
    EXPECT_EQ(view.face(), Face::Email) << "the ways in of the site that was left";
}

} // namespace
} // namespace palvera
