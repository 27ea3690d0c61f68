#include "app/signin/LoginView.h"

#include "files/Preferences.h"
#include "http/TransportError.h"
#include "localplatform/Platform.h"
#include "localplatform/SignIn.h"
#include "service/API.h"
#include "service/SignInOperations.h"
#include "session/Session.h"
#include "session/SignInDoors.h"
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

/// A browser that comes back as it is told.
class FakeBrowser final : public WebSignIn {
public:
    explicit FakeBrowser(Clock& clock) : m_clock(clock) {}

    std::vector<QByteArray> opened;
    std::function<QString()> comeBack = [] { return QString(); };

    Task<QString> signIn(QByteArray address) override
    {
        opened.push_back(address);
        co_await m_clock.sleep(10s);
        co_return comeBack();
    }

private:
    Clock& m_clock;
};

class FakePasskey final : public PasskeySignIn {
public:
    bool available = false;
    std::function<void()> answer = [] {};

    bool isAvailable() const override { return available; }
    Task<void> signIn() override
    {
        answer();
        co_return;
    }
};

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
    std::optional<API> api{std::in_place,
                           API::Surroundings{.client = *client, .executor = world.executor(), .clearCookies = [] {}}};
    Preferences preferences{disk.filePath("preferences.conf")};
    std::optional<Session> signedIn{std::in_place, *api, preferences, world.executor()};
    Session& session = *signedIn;
    FakeBrowser browser{world.clock};
    FakePasskey passkey;
    std::optional<LoginView> shown{std::in_place, LoginView::Environment{.main = world.executor(),
                                                                         .clock = world.clock,
                                                                         .session = session,
                                                                         .doors = {*api, browser, passkey}}};
    LoginView& view = *shown;
    std::vector<Field> focused;

    LoginViewTest()
    {
        QObject::connect(&view, &LoginView::focusWanted, [this](Field field) { focused.push_back(field); });
    }
    ~LoginViewTest() override
    {
        world.run(view.close());
        shown.reset(); // a timer or a strand must go before the executor that it was made of
        signedIn.reset();
        api.reset();
        world.kill();
    }

    void open(bool developerDoor = false)
    {
        view.open(developerDoor);
        wait(1s);
    }
    void wait(std::chrono::seconds time) { world.run(world.clock.sleep(time)); }
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
    QString user() const { return session.me() ? session.me()->user.email : QString(); }
    /// What the platform was asked, such as "POST auth/login".
    std::vector<std::string> asked() const
    {
        std::vector<std::string> all;
        for (const auto& request : network.seen())
            all.push_back((request.method + ' ' + request.target.mid(5)).toStdString());
        return all;
    }
    void fail(Operation operation, Fault fault, int times = 1)
    {
        platform.faults().add({.operation = operation, .times = times, .fault = std::move(fault)});
    }
};

TEST_F(LoginViewTest, opensAtTheWorkEmailDoorOnceThePlatformOffersIt)
{
    view.open(false);
    EXPECT_EQ(view.face(), Face::Login);
    wait(1s);
    EXPECT_EQ(view.face(), Face::Email);
    EXPECT_FALSE(view.faceMoves());
    EXPECT_FALSE(view.isConfigLate());
    EXPECT_EQ(view.social(), (QStringList{"google", "microsoft", "apple"}));
    EXPECT_EQ(LoginView::displayName("google"), "Google");
    EXPECT_TRUE(view.isIdentityProviderShown());
    EXPECT_EQ(view.title(), "Sign in");
    EXPECT_EQ(view.siteLabel(), "Local");
    EXPECT_FALSE(view.isSiteChoiceShown()) << "the environment names the address";
    EXPECT_THAT(focused, ElementsAre(Field::email));
    wait(5s);
    EXPECT_FALSE(view.isConfigLate());
}

TEST_F(LoginViewTest, aPlatformThatTakesItsTimeLeavesTheAccessCodeDoorAndSaysSo)
{
    network.conditions.latency = 3s;
    view.open(false);
    world.run(world.clock.sleep(1499ms));
    EXPECT_FALSE(view.isConfigLate());
    world.run(world.clock.sleep(1ms));
    world.settle();
    EXPECT_TRUE(view.isConfigLate());
    EXPECT_EQ(view.face(), Face::Login);
    wait(3s);
    EXPECT_EQ(view.face(), Face::Email);
}

TEST_F(LoginViewTest, theAccessCodeDoorIsOnlyForThoseWhoKnowOfIt)
{
    open(false);
    EXPECT_FALSE(view.isAccessCodeLinkShown());
    open(true);
    EXPECT_TRUE(view.isAccessCodeLinkShown());
    view.setPassword("typed");
    view.toggleAccessCode();
    EXPECT_EQ(view.face(), Face::Login);
    EXPECT_EQ(view.password(), "");
    EXPECT_TRUE(view.faceMoves());
    view.setEmail("hana@kestrel.example");
    view.setPassword("open-sesame");
    submit();
    EXPECT_EQ(user(), "hana@kestrel.example");
}

TEST_F(LoginViewTest, theLinkLeadsBetweenTheDoors)
{
    open(true);
    view.toggleAccessCode();
    view.toggleAccessCode();
    EXPECT_EQ(view.face(), Face::Email);
    view.forgotPassword();
    view.toggleAccessCode();
    EXPECT_EQ(view.face(), Face::Login);
}

struct Account {
    const char* email;
    const char* password;
    Face next; ///< after the password; the face stays with one who is signed in
    const char* code;
};

TEST_F(LoginViewTest, everyDirectWayInEndsSignedIn)
{
    const Account accounts[] = {
        {"ada@northlight.example", "reel-one", Face::Password, nullptr},
        {"ben@northlight.example", "reel-two", Face::Verify, "246810"},
        {"cleo@northlight.example", "reel-three", Face::Totp, "135790"},
        {"dov@northlight.example", "reel-four", Face::Enrol, "135790"},
        {"finn@harbour.example", "reel-six", Face::Password, nullptr},
        {"hana@kestrel.example", "open-sesame", Face::Password, nullptr},
    };
    for (const auto& account : accounts) {
        SCOPED_TRACE(account.email);
        enter(account.email, account.password);
        EXPECT_EQ(view.face(), account.next);
        if (account.code) {
            EXPECT_EQ(user(), "");
            EXPECT_EQ(focused.back(), Field::code);
            view.setCode("000000");
            submit();
            EXPECT_EQ(view.error(), "That code is not right.");
            EXPECT_EQ(view.code(), "000000") << "to be corrected";
            view.setCode(account.code);
            submit();
        }
        EXPECT_EQ(user(), account.email);
        EXPECT_EQ(view.error(), "");
        EXPECT_EQ(session.screen(), "orgs");
        world.run(session.signOut());
    }
}

TEST_F(LoginViewTest, anAuthenticatorIsSetUpFromAPictureOrAKey)
{
    enter("dov@northlight.example", "reel-four");
    EXPECT_TRUE(view.qrCode().startsWith("data:image/png;base64,"));
    EXPECT_EQ(view.secret(), "JBSW Y3DP EHPK 3PXP");
    view.backToSignIn();
    EXPECT_EQ(view.qrCode() + view.secret() + view.password(), "");
    EXPECT_EQ(view.face(), Face::Email);
    EXPECT_EQ(view.email(), "dov@northlight.example");
}

TEST_F(LoginViewTest, aRefusedPasswordIsTriedAtEachDoorThatMayKnowTheAccount)
{
    struct Case {
        const char* email;
        const char* message;
        std::vector<std::string> doors;
    } cases[] = {
        {"ada@northlight.example",
         "That email or password is not right.",
         {"POST auth/password", "POST auth/migrate", "POST auth/login"}},
        {"gus@harbour.example",
         "Your password needs renewing. Use the link we sent you.",
         {"POST auth/password", "POST auth/migrate"}},
    };
    for (const auto& [email, message, doors] : cases) {
        auto before = asked().size();
        enter(email, std::string_view(email).starts_with("gus") ? "reel-seven" : "wrong");
        EXPECT_EQ(view.error(), message);
        EXPECT_EQ(view.face(), Face::Password);
        auto all = asked();
        all.erase(all.begin(), all.begin() + std::ptrdiff_t(before) + 2);
        EXPECT_EQ(all, doors);
    }
}

TEST_F(LoginViewTest, withoutItsOwnDoorThePlatformsRefusalStands)
{
    fail(Operation::config, {.kind = Fault::Kind::overwrite, .members = {{"devAuth", false}}});
    enter("ada@northlight.example", "wrong");
    EXPECT_EQ(view.error(), "That email or password is not right.");
    EXPECT_THAT(asked(), testing::Not(testing::Contains("POST auth/login")));
}

TEST_F(LoginViewTest, withoutAnIdentityProviderTheAccessCodeDoorIsTheOnlyOne)
{
    fail(Operation::config, {.kind = Fault::Kind::overwrite, .members = {{"workos", false}}});
    open(true);
    EXPECT_EQ(view.face(), Face::Login);
    EXPECT_FALSE(view.isAccessCodeLinkShown());
    EXPECT_THAT(view.social(), IsEmpty());
    view.forgotPassword();
    view.backToSignIn();
    EXPECT_EQ(view.face(), Face::Login);
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
    network.conditions.listening = true;
    enter("cleo@northlight.example", "reel-three");
    network.conditions.listening = false;
    view.setCode("135790");
    submit();
    EXPECT_EQ(view.error(), cannotReach);
}

TEST_F(LoginViewTest, aSignInWhoseUserCannotBeReadIsNoSuccess)
{
    fail(Operation::me, {.kind = Fault::Kind::status, .status = 503});
    enter("ada@northlight.example", "reel-one");
    EXPECT_EQ(user(), "");
    EXPECT_NE(view.error(), "");
}

TEST_F(LoginViewTest, anotherCodeIsSentUntilTheFaceChanges)
{
    enter("ben@northlight.example", "reel-two");
    view.resendCode();
    wait(1s);
    EXPECT_TRUE(view.isResent());
    view.backToSignIn();
    EXPECT_FALSE(view.isResent());
    EXPECT_EQ(view.code(), "");
}

TEST_F(LoginViewTest, aLinkToResetThePasswordIsAskedFor)
{
    open();
    view.setEmail("ada@northlight.example");
    view.forgotPassword();
    submit();
    EXPECT_TRUE(view.isAsked());
    EXPECT_EQ(asked().back(), "POST auth/forgot");
    view.backToSignIn();
    EXPECT_FALSE(view.isAsked());
}

TEST_F(LoginViewTest, nothingElseIsDoneWhileAnActionRuns)
{
    open(true);
    view.setEmail("ada@northlight.example");
    view.submit();
    auto before = asked().size();
    view.submit();
    view.signInWith("google");
    view.signInWithPasskey();
    view.resendCode();
    view.toggleAccessCode();
    view.forgotPassword();
    EXPECT_EQ(view.face(), Face::Email);
    wait(20s);
    EXPECT_EQ(view.face(), Face::Password);
    EXPECT_EQ(asked().size(), before + 1);
    EXPECT_THAT(browser.opened, IsEmpty());
}

TEST_F(LoginViewTest, singleSignOnGoesOnInTheBrowserWithTheAddressThatWasEntered)
{
    open();
    auto page = world.run(client->send({.url = "http://platform.test/sign-in/finish?account=eve%40harbour%2Eexample"}));
    browser.comeBack = [&] { return QString::fromUtf8(page.header("Location")); };
    view.setEmail(" eve@harbour.example\n");
    view.submit();
    wait(20s);
    ASSERT_EQ(browser.opened.size(), 1u);
    EXPECT_EQ(browser.opened[0], webStartURL(*api, {}, "eve@harbour.example"));
    EXPECT_EQ(user(), "eve@harbour.example");
}

TEST_F(LoginViewTest, aBrowserThatComesBackOtherwiseIsToldOf)
{
    const auto comeBackWith = [](const char* address) { return [address] { return QString::fromUtf8(address); }; };
    struct Case {
        std::function<QString()> comeBack;
        QString message;
    } cases[] = {
        {comeBackWith("palvera://done?error=access_denied"),
         "Google did not finish (access_denied). Try again, or sign in another way."},
        {comeBackWith("palvera://done"), "Google did not finish. Try again, or sign in another way."},
        {comeBackWith("palvera://done?grant="), "Google did not finish. Try again, or sign in another way."},
        {comeBackWith("palvera://done?grant=old&error=x"), "That sign-in has expired. Try again."},
        {[]() -> QString { throw SignInDoorError("The sign-in window could not open."); },
         "Google did not finish. Try again, or sign in another way."},
        {[]() -> QString { throw SignInDoorError::byTheUser(); }, ""},
        {[&]() -> QString {
             network.conditions.listening = false;
             return "palvera://done?grant=lost";
         },
         "Google did not finish. Try again, or sign in another way."},
    };
    open();
    for (const auto& [comeBack, message] : cases) {
        browser.comeBack = comeBack;
        view.signInWith("google");
        EXPECT_TRUE(view.isBusy());
        wait(20s);
        EXPECT_EQ(view.error(), message);
        EXPECT_FALSE(view.isBusy());
        EXPECT_EQ(user(), "");
    }
}

TEST_F(LoginViewTest, aPasskeyOpensTheDoorOrTheSignInPage)
{
    open();
    view.signInWithPasskey();
    wait(20s);
    EXPECT_THAT(browser.opened, ElementsAre("http://platform.test/sign-in?native=1"));
    EXPECT_EQ(view.error(), "The passkey sign-in did not finish. Try again, or sign in another way.");

    passkey.available = true;
    std::pair<std::exception_ptr, QString> failures[] = {
        {std::make_exception_ptr(SignInDoorError("The platform sent a challenge this app could not read.")),
         "The platform sent a challenge this app could not read."},
        {std::make_exception_ptr(SignInDoorError::byTheUser()), ""},
        {std::make_exception_ptr(APIError(401, "That passkey is not known here.")), "That passkey is not known here."},
        {unanswered, "That passkey did not work. Sign in another way."},
    };
    for (const auto& [failure, message] : failures) {
        passkey.answer = [failure] { std::rethrow_exception(failure); };
        view.signInWithPasskey();
        wait(1s);
        EXPECT_EQ(view.error(), message);
        EXPECT_FALSE(view.isBusy());
    }
    passkey.answer = [&] { network.signIn(); };
    view.signInWithPasskey();
    wait(1s);
    EXPECT_EQ(user(), "ada@northlight.example");
    EXPECT_EQ(browser.opened.size(), 1u);
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
    qunsetenv("PV_API");
    open();
    EXPECT_TRUE(view.isSiteChoiceShown());
    EXPECT_EQ(view.title(), "Sign in to Staging");
    EXPECT_TRUE(view.isStaging());
    auto before = network.seen(Operation::config).size();
    view.chooseSite(false);
    wait(1s);
    EXPECT_EQ(network.seen(Operation::config).size(), before) << "that is the site already";
    view.chooseSite(true);
    wait(1s);
    EXPECT_EQ(view.title(), "Sign in to Live");
    EXPECT_TRUE(view.isLiveSite());
    EXPECT_EQ(network.seen(Operation::config).size(), before + 1);
    EXPECT_EQ(view.face(), Face::Email);
}

} // namespace

} // namespace palvera
