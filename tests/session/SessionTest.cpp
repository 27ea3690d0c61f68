#include "service/ServiceTest.h"

#include "session/Session.h"

#include "files/Preferences.h"
#include "http/TransportError.h"

#include <QDir>
#include <QTemporaryDir>

#include <boost/asio/thread_pool.hpp>

#include <future>

namespace palvera {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const Org kestrel{.id = "org-1", .name = "Kestrel"};
const QByteArray me = R"({"user":{"id":"u1","email":"hana@kestrel.example","name":"Hana"}})";
const QByteArray orgs = R"({"orgs":[{"id":"org-2","name":"Zoo"},{"id":"org-1","name":"Kestrel"}]})";
const QByteArray refused = R"({"error":"unauthorized","message":"Sign in first."})";

struct SessionTest : ServiceTest {
    QTemporaryDir folder;
    Preferences preferences{folder.filePath("preferences.conf")};
    Session session{api, preferences, simulation.executor()};
    std::vector<std::string> announced;

    SessionTest()
    {
        auto note = [this](const char* what) { return [this, what] { announced.push_back(what); }; };
        QObject::connect(&session, &Session::stateChanged, note("state"));
        QObject::connect(&session, &Session::orgsChanged, note("orgs"));
        QObject::connect(&session, &Session::orgChanged, note("org"));
        QObject::connect(&session, &Session::errorChanged, note("error"));
        QObject::connect(&session, &Session::siteChanged, note("site"));
        QObject::connect(&session, &Session::screenChanged, note("screen"));
    }

    void signIn()
    {
        client.answer(200, me);
        client.answer(200, orgs);
        simulation.run(session.start());
        announced.clear();
    }
    std::optional<QString> downloadsFolder() { return simulation.run(session.downloadsFolder()); }
    void keepDownloadsFolder(const std::optional<QString>& path) { simulation.run(session.setDownloadsFolder(path)); }
    bool isSignedOut() const { return std::holds_alternative<Session::SignedOut>(session.state()); }
    QString email() const { return session.me() ? session.me()->user.email : QString(); }
};

TEST_F(SessionTest, beginsUnknownAndShowsThatItIsLoading)
{
    EXPECT_EQ(session.state(), Session::State(Session::Unknown{}));
    EXPECT_EQ(session.screen(), "loading");
    EXPECT_EQ(session.site(), Site::qa);
    EXPECT_THAT(client.requests(), IsEmpty());
}

TEST_F(SessionTest, startSignsInAndListsOrganisationsInThePlatformsOrder)
{
    client.answer(200, me);
    client.answer(200, orgs);
    simulation.run(session.start());
    EXPECT_EQ(email(), "hana@kestrel.example");
    ASSERT_EQ(session.orgs().size(), 2);
    EXPECT_EQ(session.orgs().first().name, "Zoo");
    EXPECT_EQ(session.org(), std::nullopt);
    EXPECT_EQ(session.screen(), "orgs");
    EXPECT_THAT(announced, ElementsAre("state", "screen", "orgs"));
}

TEST_F(SessionTest, aStartThatFailsInAnyWaySignsOutWithoutAWord)
{
    auto broken = std::make_exception_ptr(TransportError(TransportError::Kind::noNetwork, "No network."));
    for (bool hasNetwork : {true, false}) {
        SCOPED_TRACE(hasNetwork);
        if (hasNetwork)
            client.answer(401, refused);
        else
            client.fail(broken);
        simulation.run(session.start());
        EXPECT_TRUE(isSignedOut());
        EXPECT_EQ(session.error(), std::nullopt);
        EXPECT_EQ(session.screen(), "login");
    }
    EXPECT_EQ(client.requests().size(), 2u) << "organisations of nobody were asked for";
    EXPECT_THAT(announced, ElementsAre("state", "screen")) << "the second time nothing changed";
}

TEST_F(SessionTest, aRefreshThatFailsSaysSoAndLeavesTheState)
{
    signIn();
    client.answer(401, refused);
    simulation.run(session.refresh());
    EXPECT_EQ(email(), "hana@kestrel.example");
    EXPECT_EQ(session.error(), "Sign in first.");
    EXPECT_THAT(announced, ElementsAre("error"));
}

TEST_F(SessionTest, aRefreshAfterASignInSignsIn)
{
    client.answer(401, refused);
    simulation.run(session.start());
    client.answer(200, me);
    client.answer(200, orgs);
    simulation.run(session.refresh());
    EXPECT_EQ(email(), "hana@kestrel.example");
    EXPECT_EQ(session.orgs().size(), 2);
}

TEST_F(SessionTest, aListThatFailsLeavesTheOldOneAndSaysSo)
{
    client.answer(200, me);
    client.answer(503, R"({"error":"down","message":"Later."})");
    simulation.run(session.start());
    EXPECT_EQ(email(), "hana@kestrel.example");
    EXPECT_THAT(session.orgs(), IsEmpty());
    EXPECT_EQ(session.error(), "Later.");

    client.answer(200, orgs);
    simulation.run(session.loadOrgs());
    client.answer(503);
    simulation.run(session.loadOrgs());
    EXPECT_EQ(session.orgs().size(), 2);
}

TEST_F(SessionTest, equalAnswersAnnounceNothing)
{
    signIn();
    client.answer(200, me);
    client.answer(200, orgs);
    simulation.run(session.refresh());
    EXPECT_THAT(announced, IsEmpty());
}

TEST_F(SessionTest, choosingOpensAnOrganisationAndRemembersIt)
{
    signIn();
    session.choose(kestrel);
    EXPECT_EQ(session.screen(), "org:org-1");
    EXPECT_EQ(preferences.string("pv.lastOrgId"), "org-1");
    EXPECT_THAT(announced, ElementsAre("org", "screen"));
    Session next(api, preferences, simulation.executor());
    EXPECT_EQ(next.org(), std::nullopt) << "nothing is open at a start";
}

TEST_F(SessionTest, goingOverToTheSiteInUseDoesNothing)
{
    signIn();
    auto before = client.requests().size();
    simulation.run(session.setSite(Site::qa));
    EXPECT_EQ(client.requests().size(), before);
    EXPECT_THAT(announced, IsEmpty());
    EXPECT_EQ(preferences.string("pv.site"), std::nullopt);
}

TEST_F(SessionTest, goingOverToTheOtherSiteClosesAndClearsBeforeItAsks)
{
    signIn();
    session.choose(kestrel);
    client.answer(500);
    simulation.run(session.loadOrgs());
    ASSERT_NE(session.error(), std::nullopt);
    announced.clear();
    client.handler = [this](const HttpRequest&) -> HttpResponse {
        EXPECT_EQ(api.site(), Site::live);
        EXPECT_EQ(session.org(), std::nullopt);
        EXPECT_THAT(session.orgs(), IsEmpty());
        return {.status = 200, .body = lastRequest().endsWith("/orgs") ? QByteArray(R"({"orgs":[]})") : me};
    };
    simulation.run(session.setSite(Site::live));
    EXPECT_EQ(session.site(), Site::live);
    EXPECT_EQ(session.error(), std::nullopt);
    EXPECT_EQ(currentSite(preferences), Site::live);
    EXPECT_EQ(session.screen(), "orgs");
    EXPECT_THAT(announced, ElementsAre("site", "org", "screen", "orgs", "error")) << "the same user, so no state";
}

TEST_F(SessionTest, theOtherSiteMayNotKnowTheUser)
{
    signIn();
    client.answer(401, refused);
    simulation.run(session.setSite(Site::live));
    EXPECT_TRUE(isSignedOut());
    EXPECT_EQ(session.error(), std::nullopt);
}

TEST_F(SessionTest, signingOutForgetsEverythingWhateverThePlatformSays)
{
    for (int status : {200, 500}) {
        SCOPED_TRACE(status);
        signIn();
        session.choose(kestrel);
        client.answer(status);
        simulation.run(session.signOut());
        EXPECT_TRUE(isSignedOut());
        EXPECT_EQ(session.org(), std::nullopt);
        EXPECT_THAT(session.orgs(), IsEmpty());
    }
    EXPECT_EQ(cookiesCleared, 2);
}

TEST_F(SessionTest, ofOperationsThatOverlapTheLastAssignmentWins)
{
    signIn();
    client.latency = std::chrono::seconds(1);
    client.handler = [](const HttpRequest& request) -> HttpResponse {
        return {.status = 200, .body = request.url.endsWith("/orgs") ? orgs : QByteArray()};
    };
    simulation.start(session.signOut());
    simulation.settle();
    simulation.clock.advance(std::chrono::milliseconds(500));
    simulation.run(session.loadOrgs());
    EXPECT_TRUE(isSignedOut());
    EXPECT_EQ(session.orgs().size(), 2);
}

TEST_F(SessionTest, theDownloadsFolderIsFoundAgainUnderAnotherName)
{
    QDir disk(folder.path());
    disk.mkdir("Films");
    EXPECT_EQ(downloadsFolder(), std::nullopt);
    keepDownloadsFolder(disk.filePath("Films"));
    EXPECT_EQ(downloadsFolder(), disk.filePath("Films"));

    auto kept = preferences.bytes("pv.downloadsBookmark");
    disk.rename("Films", "Masters");
    EXPECT_EQ(downloadsFolder(), disk.filePath("Masters"));
    EXPECT_EQ(preferences.bytes("pv.downloadsBookmark"), kept);
    disk.rmdir("Masters");
    EXPECT_EQ(downloadsFolder(), std::nullopt);
}

TEST_F(SessionTest, aFolderThatIsNotThereOrNoneClearsTheDownloadsFolder)
{
    for (auto none : {std::optional<QString>(), std::optional<QString>(folder.filePath("nowhere"))}) {
        keepDownloadsFolder(folder.path());
        ASSERT_EQ(downloadsFolder(), folder.path());
        keepDownloadsFolder(none);
        EXPECT_EQ(downloadsFolder(), std::nullopt);
        EXPECT_EQ(preferences.bytes("pv.downloadsBookmark"), std::nullopt);
    }
}

TEST_F(SessionTest, theDiskIsLookedAtInTheBackground)
{
    boost::asio::thread_pool disk(1);
    Session elsewhere(api, preferences, disk.get_executor());
    keepDownloadsFolder(folder.path());
    // Held up, as by a network share that does not answer: the caller goes on meanwhile.
    std::promise<void> answers;
    boost::asio::post(disk, [&] { answers.get_future().wait(); });
    std::optional<QString> found;
    simulation.start([](const Session& asked, std::optional<QString>& into) -> Task<void> {
        into = co_await asked.downloadsFolder();
    }(elsewhere, found));
    simulation.settle();
    EXPECT_EQ(found, std::nullopt);
    answers.set_value();
    disk.join();
    simulation.settle();
    EXPECT_EQ(found, folder.path());
}
} // namespace
} // namespace palvera
