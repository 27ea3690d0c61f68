#include "service/ServiceTest.h"

#include "session/Session.h"

#include "files/Preferences.h"
#include "http/TransportError.h"

#include <QDir>
#include <QTemporaryDir>

namespace palvera {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

const Org kestrel{.id = "org-1", .name = "Kestrel"};
const QByteArray refused = R"({"error":"unauthorized","message":"Sign in first."})";

/// A session whose platform, unless a test says otherwise, knows Hana and shares two organisations with her.
struct SessionTest : ServiceTest {
    QTemporaryDir folder;
    Preferences preferences{folder.filePath("preferences.conf")};
    Session session{*api, preferences, simulation.executor()};
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
    client.fail(std::make_exception_ptr(TransportError(TransportError::Kind::noNetwork, "No network.")));
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

TEST_F(SessionTest, whateverElseFailsSaysSoAndLeavesTheRest)
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

TEST_F(SessionTest, signingOutForgetsEverythingWhateverThePlatformSaysButNotWhatComesLater)
{
    signIn();
    session.choose(kestrel);
    said.clear();
    client.latency = 1s;
    simulation.start(session.signOut());
    simulation.settle();
    simulation.clock.advance(500ms);
    client.answer(500);
    simulation.run(session.loadOrgs());
    EXPECT_EQ(session.screen(), "login");
    EXPECT_EQ(cookiesCleared, 1);
    // Of operations that overlap the last assignment wins.
    EXPECT_THAT(said, ElementsAre("org", "screen", "orgs", "state", "screen", "GET orgs", "orgs"));
}

TEST_F(SessionTest, theDownloadsFolderIsFoundAgainUnderAnotherName)
{
    QDir disk(folder.path());
    disk.mkdir("Films");
    keepDownloadsFolder(disk.filePath("Films"));
    EXPECT_EQ(downloadsFolder(), disk.filePath("Films"));
    disk.rename("Films", "Masters");
    EXPECT_EQ(downloadsFolder(), disk.filePath("Masters"));
    disk.rmdir("Masters");
    EXPECT_EQ(downloadsFolder(), std::nullopt);
    for (auto none : {std::optional<QString>(), std::optional<QString>(disk.filePath("nowhere"))}) {
        keepDownloadsFolder(folder.path());
        keepDownloadsFolder(none);
        EXPECT_EQ(preferences.bytes("pv.downloadsBookmark"), std::nullopt);
    }
}

TEST_F(SessionTest, theDiskIsLookedAtInTheBackground)
{
    boost::asio::io_context disk; // held up at first, as by a network share that does not answer
    Session elsewhere(*api, preferences, disk.get_executor());
    keepDownloadsFolder(folder.path());
    Outcome<std::optional<QString>> found;
    simulation.start(detail::keepOutcome(elsewhere.downloadsFolder(), found));
    simulation.settle();
    EXPECT_EQ(found.value, std::nullopt);
    disk.run();
    simulation.settle();
    EXPECT_EQ(found.value, folder.path());
}

} // namespace
} // namespace palvera
