#include "update/ImageFile.h"

#include "UpdateHarness.h"
#include "files/FileError.h"

#include <QFileInfo>

namespace palvera {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Kind = Updater::Alert::Kind;

struct UpdaterTest : UpdateFixture {
    const std::exception_ptr offline =
        std::make_exception_ptr(TransportError(TransportError::Kind::connect, "Offline."));

    /// What a check by hand tells.
    std::optional<Kind> asked()
    {
        updater->checkNow();
        world.settle();
        return updater->alert() ? std::optional(updater->alert()->kind) : std::nullopt;
    }
};

TEST_F(UpdaterTest, checksAsItBeginsThenEveryTwoMinutesAndEveryHalfOneWhileItFails)
{
    const std::tuple<QByteArray, std::exception_ptr, std::ptrdiff_t> rows[]{
        {feedOf57, {}, 3}, {feedOf57, offline, 9}, {"no JSON", {}, 9}}; // how often it is read in four minutes
    for (const auto& [body, failure, expected] : rows) {
        const auto before = reads();
        feed = body;
        feedFailure = failure;
        begin();
        EXPECT_EQ(reads(), before + 1);
        updater->start();
        world.pass(4min);
        EXPECT_EQ(reads(), before + expected) << body.toStdString();
        EXPECT_EQ(updater->isFeedSilent(), expected == 9);
        close();
    }
    const auto& request = http.requests().front();
    EXPECT_EQ(request.totalTimeout, 15s);
    EXPECT_EQ(headerOf(request.headers, "Cache-Control"), "no-cache");
}

TEST_F(UpdaterTest, looksWhenTheUserComesBackButNotWithinTwentySecondsUnlessAskedByHand)
{
    feed = feedOf57;
    begin();
    for (auto signal : {&Workspace::becameActive, &Workspace::windowBecameKey, &Workspace::woke}) {
        const auto before = reads();
        world.pass(10s);
        Q_EMIT(workspace.*signal)();
        world.settle();
        EXPECT_EQ(reads(), before);
        world.pass(11s);
        http.latency = 1s;
        Q_EMIT(workspace.*signal)();
        Q_EMIT(workspace.*signal)(); // while the feed is read
        world.pass(2s);
        http.latency = 0s;
        EXPECT_EQ(reads(), before + 1);
    }
    const auto before = reads();
    EXPECT_EQ(asked(), Kind::upToDate);
    EXPECT_EQ(reads(), before + 1);
}

TEST_F(UpdaterTest, whatTheFeedNamesIsHeldOnceItIsNewer)
{
    feed = feedOf57;
    begin();
    EXPECT_TRUE(is<Updater::Idle>());
    EXPECT_EQ(updater->release(), std::nullopt);
    feed = feedOf58;
    world.pass(120s);
    EXPECT_TRUE(is<Updater::Available>());
    EXPECT_EQ(updater->release()->version, "1.5");
    feed = QByteArray(feedOf58).replace("1.5", "1.5.1");
    world.pass(120s);
    feed = feedOf57;
    world.pass(120s);
    EXPECT_EQ(updater->release()->version, "1.5.1") << "nothing empties it";
    close();
    auto fellBack = environment();
    fellBack.refusedBuild = "58"; // which did not start here
    updater.emplace(fellBack);
    feed = feedOf58;
    world.pass(120s);
    EXPECT_EQ(updater->release(), std::nullopt);
    feed = R"({"version":"1.5","build":"59","url":"no address"})";
    world.pass(120s);
    install();
    EXPECT_TRUE(is<Updater::Available>()) << "nothing can be asked for";
}

TEST_F(UpdaterTest, whoAsksByHandIsTold)
{
    feed = feedOf57;
    begin();
    EXPECT_EQ(asked(), Kind::upToDate);
    EXPECT_EQ(updater->alert()->detail, "You have 1.4 (57).");
    feedFailure = offline;
    EXPECT_EQ(asked(), Kind::unknown);
    EXPECT_EQ(updater->alert()->detail, "The update feed did not answer. Check your connection and try again.");
    feedFailure = {};
    feed = feedOf58;
    EXPECT_EQ(asked(), std::nullopt) << "the pill tells";
    feedFailure = offline;
    EXPECT_EQ(asked(), std::nullopt) << "and still does";
}

TEST_F(UpdaterTest, aCheckByHandThatTakesTimeSaysSoAndCanBeLeft)
{
    feed = feedOf57;
    begin();
    http.latency = 5s;
    EXPECT_EQ(asked(), std::nullopt);
    world.pass(500ms);
    updater->dismissAlert();
    world.pass(10s);
    EXPECT_EQ(updater->alert(), std::nullopt);
    updater->checkNow();
    world.pass(6s);
    EXPECT_EQ(updater->alert()->kind, Kind::upToDate);
}

TEST_F(UpdaterTest, withoutAFeedNothingIsAskedAndAHandIsToldWhy)
{
    auto without = environment();
    without.feed.clear();
    updater.emplace(without);
    world.pass(10min);
    EXPECT_THAT(http.requests(), IsEmpty());
    EXPECT_EQ(asked(), Kind::notHere);
}

TEST_F(UpdaterTest, downloadsPreparesInstallsAndStartsAnew)
{
    feed = QByteArray(feedOf58).replace("\"58\"", "\"+58\"");
    begin();
    QList<int> percents;
    QObject::connect(&*updater, &Updater::changed, [&] {
        if (const auto* it = std::get_if<Updater::Downloading>(&updater->phase()))
            percents.append(int(it->fraction * 100));
    });
    installer.answer.reset();
    updater->install();
    install();
    EXPECT_EQ(percents, QList({0}));
    ASSERT_TRUE(is<Updater::Preparing>()) << "the progress, which came behind the end, moves nothing back";
    ASSERT_EQ(installer.calls.size(), 1u);
    const auto& call = installer.calls.front();
    EXPECT_EQ(call.image, image.body);
    EXPECT_EQ(call.path, disk.filePath("Update/Palvera-1.5.dmg"));
    EXPECT_EQ(call.target, target);
    EXPECT_EQ(call.announced, (AnnouncedBuild{"1.5", "58"}));
    call.reply({});
    call.fail({.description = "too late"});
    world.settle();
    ASSERT_TRUE(is<Updater::Ready>());
    EXPECT_THAT(leftInCaches(), IsEmpty());
    const auto before = reads();
    EXPECT_TRUE(world.run(updater->check(true)));
    EXPECT_EQ(reads(), before) << "there is nothing to look for";

    restart();
    EXPECT_TRUE(is<Updater::Restarting>());
    EXPECT_EQ(workspace.opened, 0);
    EXPECT_EQ(installer.calls.back().target, target);
    installer.calls.back().reply({});
    world.settle();
    EXPECT_EQ(workspace.opened, 1);
    EXPECT_EQ(workspace.terminated, 1);
    EXPECT_EQ(installer.connections, 1);
}

TEST(ImageFileTest, tellsEachWholePercentOnce)
{
    const QTemporaryDir disk;
    QList<double> fractions;
    ImageFile file(disk.filePath("image"), 1'000, [&](double fraction) { fractions.append(fraction); });
    EXPECT_TRUE(file.expect({.status = 200, .headers = {{"Content-Length", "1000"}}}));
    const std::vector<char> bytes(1'000, 'i');
    for (std::size_t step : {4, 6, 5, 985})
        file.take(std::span(bytes).first(step));
    EXPECT_EQ(fractions, QList({0.01, 1.0}));
    EXPECT_EQ(QFileInfo(disk.filePath("image")).size(), 1'000);
    EXPECT_THROW(file.expect({.status = 200, .headers = {{"Content-Length", "1001"}}}), UpdateError);
    EXPECT_THROW(ImageFile(disk.filePath("image"), 1, {}), FileError) << "somebody else's";
}

TEST_F(UpdaterTest, anInstallationThatFailsSaysWhyAndLeavesNothing)
{
    const auto answered = [&](HttpResponse answer) { return [&, answer] { image = answer; }; };
    const auto large = QByteArray::number((1LL << 30) + 1);
    const auto troubled = [&](InstallerTrouble trouble) {
        return [&, trouble] {
            image = HttpResponse{.status = 200, .body = "image"};
            installer.trouble = trouble;
        };
    };
    const std::pair<std::function<void()>, const char*> rows[]{
        {answered({.status = 404, .body = "gone"}), "The download failed."},
        {answered({.status = 200}), "The download failed."},
        {answered({.status = 302, .headers = {{"Location", "http://cdn.test/q.dmg"}}}),
         "The server sends on to an address that is not encrypted."},
        {answered({.status = 200, .headers = {{"Content-Length", large}}, .body = "x"}),
         "The update is too large: 1.1 GB."},
        {troubled({.isMissing = true, .description = "x"}), "The installer is missing from this copy of the app."},
        {troubled({.isMissing = false, .description = "It fell."}), "The installer did not answer: It fell."},
        {[&] { target.clear(); }, "The installer is missing from this copy of the app."},
    };
    for (const auto& [setUp, text] : rows) {
        setUp();
        begin();
        install();
        EXPECT_EQ(failure(), text);
        EXPECT_THAT(leftInCaches(), IsEmpty());
        ASSERT_TRUE(updater->lastFailure());
        EXPECT_EQ(updater->lastFailure()->text, text);
        EXPECT_EQ(installer.calls.size(), installer.trouble && !target.isEmpty() ? 1u : 0u) << text;
        installer.calls.clear();
        close();
    }
}

TEST_F(UpdaterTest, aFailureIsTriedAgainAlsoOnceACheckHasForgottenIt)
{
    installer.answer = "The update is damaged.";
    begin();
    install();
    EXPECT_EQ(failure(), "The update is damaged.");
    feedFailure = offline;
    Q_EMIT workspace.becameActive();
    world.settle();
    EXPECT_TRUE(is<Updater::Idle>());
    EXPECT_EQ(updater->lastFailure(), (Updater::Note{ManualClock::wallStart, "The update is damaged."}));
    installer.answer = QString();
    install();
    EXPECT_TRUE(is<Updater::Ready>());
}

TEST_F(UpdaterTest, aCheckThatIsSlowThrowsNothingBackThatTheUserHasBegun)
{
    begin();
    http.latency = 10s;
    installer.answer.reset();
    for (auto step : {&Updater::install, &Updater::restart}) {
        world.start([](Updater& it) -> Task<void> { co_await it.check(true); }(*updater));
        world.pass(1s);
        const auto before = http.requests().size();
        ((*updater).*step)();
        world.pass(9500ms);
        EXPECT_TRUE(is<Updater::Downloading>() || is<Updater::Restarting>());
        world.pass(1s);
        EXPECT_LE(http.requests().size(), before + 1) << "one download";
        installer.calls.back().reply({});
        world.settle();
    }
    EXPECT_EQ(workspace.terminated, 1);
}

TEST_F(UpdaterTest, aConnectionThatBreaksIsMadeAnewForTheNextQuestion)
{
    installer.answer.reset();
    begin();
    install();
    installer.connection->invalidated();
    installer.calls.back().fail({.description = "Gone."});
    world.settle();
    EXPECT_EQ(installer.connection, nullptr);
    installer.answer = QString();
    install();
    EXPECT_TRUE(is<Updater::Ready>());
    EXPECT_EQ(installer.connections, 2);
}

TEST_F(UpdaterTest, aRestartThatFailsLeavesTheProgramAsItIs)
{
    makeReady();
    workspace.problem = "The new build did not start.";
    restart();
    EXPECT_EQ(failure(), "The new build did not start.");
    close();
    makeReady();
    installer.answer = "There is no prepared update.";
    restart();
    EXPECT_EQ(failure(), "There is no prepared update.");
    EXPECT_EQ(workspace.opened, 1);
    EXPECT_EQ(workspace.terminated, 0);
}

TEST_F(UpdaterTest, whatIsInThePlaceOfItsFolderGoesButNothingThatALinkLeadsTo)
{
    QDir folder(disk.path());
    ASSERT_TRUE(folder.mkpath("theirs"));
    QFile film(folder.filePath("theirs/film.mov"));
    ASSERT_TRUE(film.open(QIODevice::WriteOnly) && QFile::link(folder.filePath("theirs"), folder.filePath("Update")));
    makeReady();
    EXPECT_TRUE(film.exists());
    EXPECT_THAT(leftInCaches(), ElementsAre("theirs"));
    close();
    const auto caches = disk.filePath("theirs/film.mov"); // a file where a folder must be
    auto blocked = environment();
    blocked.caches = caches;
    updater.emplace(blocked);
    world.settle();
    install();
    EXPECT_EQ(failure(), "“Update” cannot be made anew: Not a directory.");
}

} // namespace
} // namespace palvera
