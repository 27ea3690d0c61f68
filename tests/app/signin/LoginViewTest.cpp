#include "LoginViewHarness.h"

namespace palvera {

using testing::IsEmpty;
using Face = LoginView::Face;
using local::Fault;
using local::Operation;

namespace {

TEST_F(LoginViewTest, thePlatformSaysWhichDoorsThereAre)
{
    const std::tuple<bool, bool, bool, Face, bool> cases[] = {{true, true, false, Face::Email, false},
                                                              {true, true, true, Face::Email, true},
                                                              {false, true, true, Face::Email, false},
                                                              {true, false, true, Face::Login, false}};
    for (const auto& [devAuth, workos, developer, first, isLinkShown] : cases) {
        SCOPED_TRACE(testing::Message() << devAuth << workos << developer);
        fail(Operation::config,
             {.kind = Fault::Kind::overwrite, .members = {{"devAuth", devAuth}, {"workos", workos}}});
        open(developer);
        EXPECT_EQ(view.face(), first);
        EXPECT_FALSE(view.faceMoves());
        EXPECT_EQ(view.isAccessCodeLinkShown(), isLinkShown);
        EXPECT_EQ(view.isIdentityProviderShown(), workos);
        EXPECT_EQ(view.social(), workos ? QStringList({"google", "microsoft", "apple"}) : QStringList());
        view.forgotPassword();
        EXPECT_TRUE(view.faceMoves());
        view.backToSignIn();
        EXPECT_EQ(view.face(), first);
    }
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
        world.pass(1ms);
        EXPECT_EQ(view.waitText(), words);
        EXPECT_TRUE(view.isConfigLoading());
        world.pass(3s);
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
    world.pass(3s);
    EXPECT_EQ(view.face(), Face::Email);

    openUnreached();
    view.setEmail("hana@kestrel.example");
    view.setPassword("open-sesame");
    network.conditions.listening = true;
    world.pass(100s);
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
    world.pass(2100ms); // the second question is under way
    view.setEmail("h");
    world.pass(10s);
    EXPECT_EQ(view.face(), Face::Login) << "its answer is not welcome any more";
    EXPECT_FALSE(view.isIdentityProviderShown());
    network.conditions.latency = 1ms;
    fail(Operation::config, {.kind = Fault::Kind::status, .status = 503});
    view.setEmail("hana@kestrel.example");
    view.setPassword("open-sesame");
    submit();
    EXPECT_EQ(user(), "hana@kestrel.example") << "a door that cannot be asked about is tried";
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
}

TEST_F(LoginViewTest, aRefusedPasswordIsTriedAtEachDoorThatMayKnowTheAccount)
{
    const std::string first = "POST auth/password", second = "POST auth/migrate", own = "POST auth/login";
    const QString refusal = "That email or password is not right.";
    const QString renewal = "Your password needs renewing. Use the link we sent you.";
    const std::tuple<bool, const char*, const char*, QString, std::vector<std::string>> cases[] = {
        {true, "ada@northlight.example", "wrong", refusal, {first, second, own}},
        {false, "ada@northlight.example", "wrong", refusal, {first, second}},
        {true, "gus@harbour.example", "reel-seven", renewal, {first, second}},
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
    fail(Operation::me, {.kind = Fault::Kind::status, .status = 503});
    enter("ada@northlight.example", "reel-one");
    EXPECT_EQ(user(), "") << "who it is cannot be read";
    EXPECT_NE(view.error(), "");
}

TEST_F(LoginViewTest, eachCallThatIsNotAnsweredSaysSoAndKeepsWhatWasEntered)
{
    const QString cannotReach = "Cannot reach Palvera. Check your connection and try again.";
    open();
    network.conditions.listening = false;
    const std::tuple<void (LoginView::*)(), Face, QString> cases[] = {
        {&LoginView::toggleAccessCode, Face::Login, cannotReach},
        {&LoginView::changeEmail, Face::Email, cannotReach},
        {&LoginView::forgotPassword, Face::Forgot, "Could not send that. Check your connection."}};
    view.setEmail("ada@northlight.example");
    for (const auto& [go, face, message] : cases) {
        (view.*go)();
        ASSERT_EQ(view.face(), face);
        EXPECT_EQ(view.password(), "") << "it was for another door or account";
        view.setPassword("reel-one");
        EXPECT_EQ(view.error(), "");
        submit();
        EXPECT_EQ(view.error(), message);
        EXPECT_EQ(view.email(), "ada@northlight.example");
    }
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
    EXPECT_EQ(view.secret(), "JBSW Y3DP EHPK 3PXP");
    goBack();
    enter("ben@northlight.example", "reel-two");
    view.setCode("000000");
    view.resendCode();
    world.pass(1s);
    EXPECT_EQ(view.code(), "");
    goBack();
    view.forgotPassword();
    submit();
    EXPECT_EQ(asked("POST").back(), "POST auth/forgot");
    goBack();
    EXPECT_EQ(view.email(), "ben@northlight.example");
    view.goBack();
    EXPECT_EQ(view.face(), Face::Email);
    submit();
    view.goBack();
    EXPECT_EQ(view.face(), Face::Email) << "from the password";
}

TEST_F(LoginViewTest, nothingElseIsDoneWhileAnActionRunsWhichIsCutOffByBeginningAfresh)
{
    enter("cleo@northlight.example", "reel-three");
    const auto before = network.seen().size();
    network.conditions.latency = 10s;
    view.setCode("135790");
    view.submit();
    view.signInWith("google");
    for (auto act : {&LoginView::submit, &LoginView::signInWithPasskey, &LoginView::resendCode,
                     &LoginView::toggleAccessCode, &LoginView::forgotPassword, &LoginView::backToSignIn})
        (view.*act)();
    world.pass(1s);
    EXPECT_EQ(view.face(), Face::Totp);
    EXPECT_EQ(network.seen().size(), before + 1);
    EXPECT_THAT(opened, IsEmpty());
    network.conditions.latency = 1ms;
    open();
    EXPECT_EQ(view.face(), Face::Email);
    EXPECT_EQ(view.email() + view.password() + view.code() + view.error(), "");
    EXPECT_FALSE(view.isBusy());
    world.pass(20s);
    EXPECT_EQ(user(), "");
}

TEST_F(LoginViewTest, theOtherSiteBeginsAfreshButForTheAddressAndIsAskedForItsOwnWaysIn)
{
    open();
    EXPECT_EQ(view.title() + ", " + view.siteLabel(), "Sign in, Local");
    for (const auto& [value, isNamed] : {std::pair("localhost:8700/api", false), std::pair("https://a.test/", true)}) {
        qputenv("PV_API", value);
        EXPECT_EQ(view.isSiteChoiceShown(), !isNamed);
        EXPECT_EQ(api.serviceProblem() == "", isNamed) << "what is no address is said";
    }
    qputenv("PV_API", "");
    EXPECT_TRUE(view.isSiteChoiceShown() && api.serviceProblem() == "");
    qunsetenv("PV_API");
    network.conditions.latency = 2s; // this answer is late, and not that of the other site
    fail(Operation::config, {.kind = Fault::Kind::overwrite, .members = {{"workos", false}}});
    open();
    EXPECT_TRUE(view.isStaging());
    EXPECT_EQ(view.title(), "Sign in to Staging");
    auto before = network.seen(Operation::config).size();
    view.chooseSite(false);
    world.pass(100ms);
    EXPECT_EQ(network.seen(Operation::config).size(), before) << "that is the site already";
    network.conditions.latency = 1ms;
    view.chooseSite(true);
    world.pass(500ms);
    EXPECT_EQ(network.seen(Operation::config).size(), before + 1);
    EXPECT_TRUE(view.isLiveSite());
    EXPECT_EQ(view.title(), "Sign in to Live");
    EXPECT_EQ(view.face(), Face::Email);
    world.pass(5s);
    EXPECT_EQ(view.face(), Face::Email) << "the ways in of the site that was left";
    enter("ben@northlight.example", "reel-two");
    ASSERT_EQ(view.face(), Face::Verify);
    view.setCode("246810");
    network.conditions.listening = false;
    view.chooseSite(false);
    EXPECT_TRUE(view.isConfigLoading());
    EXPECT_EQ(view.code(), "");
    world.pass(1s);
    EXPECT_EQ(view.face(), Face::Login);
    EXPECT_EQ(view.email(), "ben@northlight.example");
    network.conditions.listening = true;
    world.pass(3s);
    EXPECT_EQ(view.face(), Face::Email) << "nothing was typed since";
}

} // namespace
} // namespace palvera
