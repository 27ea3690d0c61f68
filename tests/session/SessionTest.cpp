#include "service/ServiceTest.h"

#include "service/BrowsingOperations.h"
#include "session/Session.h"
#include "support/FakeNetworkPath.h"
#include "support/Files.h"

#include "files/Preferences.h"
#include "http/TransportError.h"

#include <QDir>
#include <QTemporaryDir>

namespace palvera {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

const Org kestrel{.id = "org-1", .name = "Kestrel"};
const Account hana{.service = "https://service.test/api/", .userId = "u1"};
const auto unreachable = std::make_exception_ptr(TransportError(TransportError::Kind::connect, "Not reached."));
const QByteArray refused = R"({"error":"unauthorized","message":"Sign in first."})";

Task<void> confirmIn(Session& session)
{
    co_await session.confirm();
}

/// A session whose platform, unless a test says otherwise, knows Hana and shares two organisations with her.
struct SessionTest : ServiceTest {
    QTemporaryDir folder;
    Preferences preferences{folder.filePath("preferences.conf")};
    FakeNetworkPath network{simulation.clock};
    Session session{environment(simulation.executor())};
    std::vector<std::string> said; ///< what was announced, and what the platform was asked for in between

    SessionTest()
    {
        for (auto [signal, name] :
             {std::pair(&Session::stateChanged, "state"), std::pair(&Session::orgsChanged, "orgs"),
              std::pair(&Session::orgChanged, "org"), std::pair(&Session::errorChanged, "error"),
              std::pair(&Session::siteChanged, "site"), std::pair(&Session::screenChanged, "screen")})
            QObject::connect(&session, signal, [this, what = name] { said.push_back(what); });
        client.handler = [this](const HttpRequest&) {
            said.push_back((api->site() == Site::live ? "live: " : "") + lastRequest());
            return HttpResponse{.status = 200, .body = R"({"user":{"id":"u1","email":"hana@kestrel.example"},
                "orgs":[{"id":"org-2","name":"Zoo"},{"id":"org-1","name":"Kestrel"}]})"};
        };
    }

    Session::Environment environment(const Executor& background)
    {
        return {simulation.executor(), background, simulation.clock, *api, preferences, network};
    }
    void signIn()
    {
        simulation.run(session.start());
        said.clear();
    }
    std::optional<QString> downloadsFolder() { return simulation.run(session.downloadsFolder()); }
    void keepDownloadsFolder(const std::optional<QString>& path) { simulation.run(session.setDownloadsFolder(path)); }
    QString email() const { return session.me() ? session.me()->user.email : QString(); }
};

TEST_F(SessionTest, aStartSignsInAndListsOrganisationsInThePlatformsOrder)
{
    EXPECT_EQ(session.screen(), "loading");
    simulation.run(session.start());
    EXPECT_EQ(email(), "hana@kestrel.example");
    EXPECT_EQ(session.orgs(), QList<Org>({{.id = "org-2", .name = "Zoo"}, kestrel}));
    EXPECT_EQ(session.screen(), "orgs");
    EXPECT_THAT(said, ElementsAre("GET me", "state", "screen", "GET orgs", "orgs"));
}

TEST_F(SessionTest, aStartThatFailsInAnyWaySignsOutWithoutAWord)
{
    client.answer(401, refused);
    client.fail(unreachable);
    for (int times = 1; times <= 2; ++times) {
        simulation.run(session.start());
        EXPECT_EQ(session.screen(), "login");
        EXPECT_EQ(session.error(), std::nullopt);
    }
    EXPECT_EQ(client.requests().size(), 2u) << "organisations of nobody were asked for";
    EXPECT_THAT(said, ElementsAre("state", "screen")) << "the second time nothing changed";
    simulation.run(session.refresh());
    EXPECT_EQ(session.screen(), "orgs");
}

TEST_F(SessionTest, whoCouldNotAskAsksAgainUntilThePlatformAnswersUnlessThatIsUnwelcome)
{
    bool isWelcome = true;
    const auto start = [&] {
        simulation.run(session.start());
        EXPECT_EQ(session.screen(), "login");
        EXPECT_EQ(simulation.clock.elapsed(), 0s);
        simulation.start(session.askAgain([&] { return isWelcome; }));
    };
    const auto screenAt = [&](std::chrono::seconds moment) {
        simulation.run(simulation.clock.sleepUntil(Clock::Moment{} + moment));
        simulation.settle();
        return session.screen().toStdString();
    };
    network.usable = false;
    start();
    EXPECT_TRUE(client.requests().empty()) << "a question would wait for a network";
    EXPECT_EQ(screenAt(20s), "login");
    network.usable = true;
    for (int times = 0; times < 3; ++times)
        client.fail(unreachable);
    EXPECT_EQ(screenAt(21s), "login");
    EXPECT_EQ(client.requests().size(), 1u) << "as soon as there is one";
    EXPECT_EQ(screenAt(34s), "login");
    EXPECT_EQ(client.requests().size(), 3u);
    EXPECT_EQ(screenAt(35s), "orgs");
    client.fail(unreachable);
    simulation.run(session.start());
    isWelcome = false; // the user types
    const auto asked = client.requests().size();
    simulation.run(session.askAgain([&] { return isWelcome; }));
    EXPECT_EQ(client.requests().size(), asked);
}

TEST_F(SessionTest, anAnswerThatIsNotWelcomeAnyMoreSignsNobodyIn)
{
    bool isWelcome = true;
    client.answer(401, refused);
    simulation.run(session.start());
    client.latency = 1s;
    simulation.start(session.askOnce([&] { return isWelcome; }));
    simulation.settle();
    isWelcome = false; // the user types
    simulation.run(simulation.clock.sleep(2s));
    EXPECT_EQ(session.screen(), "login");
    simulation.run(session.askOnce([&] { return isWelcome; }));
    EXPECT_EQ(client.requests().size(), 2u);
    isWelcome = true;
    simulation.run(session.askOnce([&] { return isWelcome; }));
    EXPECT_EQ(session.screen(), "orgs");
}

TEST_F(SessionTest, whateverElseFailsSaysSoUntilSomethingSucceedsAndLeavesTheRest)
{
    signIn();
    simulation.run(session.refresh());
    EXPECT_THAT(said, ElementsAre("GET me", "GET orgs")) << "nothing changed";
    said.clear();
    client.answer(401, refused);
    simulation.run(session.refresh());
    EXPECT_EQ(session.error(), "Sign in first.");
    EXPECT_EQ(failureAs<APIError>(session.failure()).value().status(), 401) << "a face tells failures apart";
    client.answer(503, R"({"error":"down","message":"Later."})");
    simulation.run(session.loadOrgs());
    EXPECT_EQ(session.error(), "Later.");
    EXPECT_EQ(email(), "hana@kestrel.example");
    EXPECT_EQ(session.orgs().size(), 2);
    EXPECT_THAT(said, ElementsAre("error", "error"));
    client.latency = 1s;
    simulation.start(session.loadOrgs());
    simulation.settle();
    EXPECT_TRUE(session.areOrgsLoading());
    simulation.run(simulation.clock.sleep(2s));
    EXPECT_FALSE(session.areOrgsLoading());
    EXPECT_EQ(session.error(), std::nullopt);
}

TEST_F(SessionTest, manyRefusalsAskOnceAndTheSameUserComesBackToTheirClient)
{
    QObject::connect(&session, &Session::signInDoubted, [this] { simulation.start(confirmIn(session)); });
    signIn();
    session.choose(kestrel);
    client.latency = 1s;
    const auto known = client.handler;
    const auto expire = [&] {
        client.handler = [](const HttpRequest&) { return HttpResponse{.status = 401, .body = refused}; };
        const auto before = client.requests().size();
        for (int call = 0; call < 8; ++call) {
            simulation.start(ignore(listOrgs(*api)));
            simulation.clock.advance(100ms);
            simulation.settle();
        }
        simulation.run(simulation.clock.sleep(5s));
        EXPECT_EQ(client.requests().size() - before, 9u) << "one question for all";
        EXPECT_EQ(session.screen(), "login");
        EXPECT_TRUE(session.hasExpired());
        client.handler = known;
    };
    expire();
    simulation.run(session.refresh());
    EXPECT_EQ(session.screen(), "org:org-1");
    expire();
    client.handler = [&](const HttpRequest& request) {
        auto answer = known(request);
        answer.body.replace("u1", "u2");
        return answer;
    };
    simulation.run(session.refresh());
    EXPECT_EQ(session.screen(), "orgs") << "that client was another user's";
}

TEST_F(SessionTest, whatWaitsForASignInGoesOnWithTheSameUserAtTheSameService)
{
    std::optional<bool> isRenewed;
    const auto wait = [&]() -> Task<void> { isRenewed = co_await session.untilSignedIn(hana); };
    signIn();
    simulation.run(wait());
    EXPECT_EQ(isRenewed, false) << "the platform knows her still";
    isRenewed.reset();
    client.fail(unreachable);
    client.answer(401, refused);
    simulation.start(wait());
    simulation.run(simulation.clock.sleep(3s));
    EXPECT_TRUE(session.hasExpired()) << "asked again after nobody answered";
    for (auto other : {R"({"user":{"id":"u2","email":"ada@northlight.example"}})", R"({"user":{"id":"u1"}})"}) {
        client.answer(200, other);
        const ScopedVariable elsewhere("PV_API",
                                       other[15] == '1' ? "https://elsewhere.test/api" : "https://service.test/api");
        simulation.run(session.refresh());
        EXPECT_EQ(isRenewed, std::nullopt) << other;
    }
    simulation.run(session.refresh());
    simulation.settle();
    EXPECT_EQ(isRenewed, true);
}

TEST_F(SessionTest, anAnswerToAnEarlierQuestionChangesNothing)
{
    client.latency = 10s;
    simulation.start(session.start());
    simulation.settle();
    client.latency = 0s;
    client.answer(401, refused);
    simulation.run(session.setSite(Site::live));
    EXPECT_EQ(session.screen(), "login");
    simulation.run(simulation.clock.sleep(11s));
    EXPECT_EQ(session.screen(), "login") << "the other site knew the user";

    simulation.run(session.setSite(Site::qa));
    client.latency = 10s;
    simulation.start(session.loadOrgs());
    simulation.start(session.setSite(Site::live));
    simulation.settle();
    client.latency = 0s;
    simulation.run(session.refresh());
    client.handler = [](const HttpRequest&) { return HttpResponse{.status = 401, .body = refused}; };
    simulation.run(simulation.clock.sleep(11s));
    EXPECT_EQ(session.screen(), "orgs") << "whoever has signed in meanwhile stays";
    EXPECT_EQ(session.error(), std::nullopt);
}

TEST_F(SessionTest, saysWhatIsNotKept)
{
    writeFile(folder.filePath("file"), "");
    Preferences unwritable(folder.filePath("file/preferences.conf"));
    Session other({simulation.executor(), simulation.executor(), simulation.clock, *api, unwritable, network});
    simulation.run(other.setSite(Site::live));
    EXPECT_EQ(other.remark(), unwritable.problem());
    EXPECT_NE(other.remark(), "");
}

TEST_F(SessionTest, choosingOpensAnOrganisationAndLeavingClosesItForGood)
{
    for (auto ask : {&Session::start, &Session::refresh, &Session::loadOrgs}) {
        signIn();
        session.choose(kestrel);
        EXPECT_EQ(session.screen(), "org:org-1");
        EXPECT_THAT(said, ElementsAre("org", "screen"));
        client.latency = 10s;
        simulation.start((session.*ask)());
        simulation.settle();
        session.leave();
        EXPECT_EQ(session.screen(), "orgs");
        client.latency = 0s;
        simulation.clock.advance(10s);
        simulation.settle();
        EXPECT_EQ(session.screen(), "orgs") << "an answer that comes late opens nothing";
        EXPECT_EQ(preferences.string("pv.lastOrgId"), "org-1");
    }
}

TEST_F(SessionTest, goingOverToTheOtherSiteClosesAndClearsBeforeItAsks)
{
    signIn();
    simulation.run(session.setSite(Site::qa));
    EXPECT_EQ(client.requests().size(), 2u) << "that is the site in use";
    EXPECT_EQ(preferences.string("pv.site"), std::nullopt);
    session.choose(kestrel);
    client.answer(500);
    simulation.run(session.loadOrgs());
    ASSERT_NE(session.failure(), nullptr);
    said.clear();
    simulation.run(session.setSite(Site::live));
    EXPECT_EQ(session.site(), Site::live);
    EXPECT_EQ(session.failure(), nullptr);
    EXPECT_EQ(currentSite(preferences), Site::live);
    EXPECT_THAT(said, ElementsAre("site", "org", "screen", "orgs", "error", "live: GET me", "live: GET orgs", "orgs"));

    client.answer(401, refused);
    simulation.run(session.setSite(Site::qa));
    EXPECT_EQ(session.screen(), "login") << "that site does not know the user";
    EXPECT_EQ(session.error(), std::nullopt);
}

TEST_F(SessionTest, signingOutForgetsEverythingAtOnceAndWhatIsStillOnItsWay)
{
    signIn();
    session.choose(kestrel);
    said.clear();
    client.latency = 4s;
    simulation.start(session.loadOrgs());
    simulation.start(session.signOut());
    simulation.settle();
    EXPECT_EQ(session.screen(), "login");
    EXPECT_FALSE(session.hasExpired());
    EXPECT_EQ(cookiesCleared, 1);
    EXPECT_THAT(said, ElementsAre("state", "screen", "org", "orgs"));
    client.latency = 0s;
    simulation.run(session.refresh()); // another user, say
    cookieProblem = "It could not be removed.";
    simulation.run(simulation.clock.sleep(10s));
    EXPECT_EQ(session.screen(), "orgs");
    EXPECT_EQ(session.remark(), "") << "that is of the past";
    simulation.run(session.signOut());
    EXPECT_EQ(session.remark(), cookieProblem);
    cookieProblem.clear();
    client.answer(500);
    simulation.run(session.signOut());
    EXPECT_EQ(session.remark(), "Signed out on this computer. The platform could not be told.");
}

TEST_F(SessionTest, theDownloadsFolderIsFoundAgainUnderAnotherNameInTheBackground)
{
    QDir folders(folder.path());
    folders.mkdir("Films");
    keepDownloadsFolder(folders.filePath("Films"));
    EXPECT_EQ(downloadsFolder(), folders.filePath("Films"));
    folders.rename("Films", "Masters");
    boost::asio::io_context disk; // held up at first, as by a network share that does not answer
    Session elsewhere(environment(disk.get_executor()));
    Outcome<std::optional<QString>> found;
    simulation.start(detail::keepOutcome(elsewhere.downloadsFolder(), found));
    simulation.settle();
    EXPECT_EQ(found.value, std::nullopt);
    disk.run();
    simulation.settle();
    EXPECT_EQ(found.value, folders.filePath("Masters"));
    folders.rmdir("Masters");
    EXPECT_EQ(downloadsFolder(), std::nullopt);
    for (auto none : {std::optional<QString>(), std::optional<QString>(folders.filePath("nowhere"))}) {
        keepDownloadsFolder(folder.path());
        keepDownloadsFolder(none);
        EXPECT_EQ(preferences.bytes("pv.downloadsBookmark"), std::nullopt);
    }
}

} // namespace
} // namespace palvera
