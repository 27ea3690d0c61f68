#include "TransfersHarness.h"
#include "files/FileError.h"
#include "http/TransportError.h"

#include <QDir>

namespace palvera {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

const char* stopReport = "POST orgs/org/projects/salt/deliverables/row-1/transfer/progress";
const char* abortRequest = "POST orgs/org/projects/salt/deliverables/row-1/transfer/abort";

TEST_F(TransfersTest, anUploadIsListedAsRunningAndHandedToTheEngine)
{
    auto id = addUpload();
    EXPECT_EQ(stateOf(id), "running");
    EXPECT_EQ(added, QList{id});
    auto item = *model->find(id);
    EXPECT_EQ(item.kind, Item::Kind::upload);
    EXPECT_EQ(item.name, "master.mov");
    EXPECT_EQ(item.label, "Picture");
    EXPECT_EQ(item.titleName, std::nullopt);
    EXPECT_EQ(item.journalKey, "row-1");
    EXPECT_EQ(item.total, 0);
    world.settle();
    ASSERT_EQ(uploads.requests.size(), 1u);
    const auto& request = uploads.requests[0];
    EXPECT_EQ(request.target, TransferTarget(TransferTarget::Deliverable{"org", "salt", "row-1"}));
    EXPECT_EQ(request.key, "row-1");
    EXPECT_EQ(request.file, disk.filePath("master.mov"));
    EXPECT_TRUE(request.bookmark);
    EXPECT_FALSE(request.confirmed);
}

TEST_F(TransfersTest, aSuccessIsDoneAndCounted)
{
    uploads.ends = {nullptr};
    auto id = addUpload();
    runUntilState(id, "done");
    EXPECT_EQ(model->uploadsFinished(), 1);
    EXPECT_EQ(model->inFlightCount(), 0);
    EXPECT_THAT(client.requests(), IsEmpty()) << "no stop report";
}

TEST_F(TransfersTest, aSuccessCountsAlsoWhenItsItemIsGone)
{
    uploads.ends = {nullptr};
    auto id = addUpload();
    world.settle();
    auto request = uploads.requests.at(0);
    request.onProgress({.sent = 1, .total = 2});
    world.settle();
    EXPECT_EQ(model->find(id)->sent, 1);
    runUntilState(id, "done");
    model->clearFinished();
    request.onProgress({.sent = 2, .total = 2}); // too late
    world.settle();
    EXPECT_TRUE(model->items().empty());
    EXPECT_EQ(changed.size(), 2) << "the progress and the end";
    EXPECT_EQ(removed, QList{id});
}

TEST_F(TransfersTest, waitsLongerBeforeEachOfSevenRetriesAndThenFails)
{
    uploads.ends.assign(8, platformSays(503));
    auto id = addUpload();
    std::vector<double> waits;
    for (int failures = 1; failures <= 7; ++failures) {
        runUntilState(id, "retrying: The platform says 503.");
        auto failedAt = elapsed();
        const auto& state = std::get<Item::Retrying>(model->find(id)->state);
        EXPECT_EQ(std::chrono::duration<double>(state.until - world.clock.wallNow()).count(),
                  double(retryDelay(failures - 1).count()));
        EXPECT_EQ(model->find(id)->rate, std::nullopt);
        EXPECT_TRUE(sleep.held);
        runUntilState(id, "running");
        waits.push_back(elapsed() - failedAt);
    }
    EXPECT_THAT(waits, ElementsAre(10, 30, 60, 120, 300, 600, 900));
    runUntilState(id, "failed: The platform says 503.");
    EXPECT_EQ(elapsed(), 8 + 2020);
    world.settle();
    EXPECT_THAT(asked(), ElementsAre(stopReport));
    EXPECT_EQ(uploads.requests.size(), 8u);
    EXPECT_FALSE(sleep.held);
}

TEST_F(TransfersTest, makesAsFewRetriesAsItIsTold)
{
    makeModel({.retries = 0});
    uploads.ends = {platformSays(503)};
    auto id = addUpload();
    runUntilState(id, "failed: The platform says 503.");
    EXPECT_EQ(elapsed(), 1);
}

TEST_F(TransfersTest, anEndOfTheEngineDecidesWhatFollows)
{
    struct Row {
        std::exception_ptr end;
        const char* state;
    };
    const std::vector<Row> table{
        {std::make_exception_ptr(TransportError(TransportError::Kind::connect, "No host.")), "retrying: No host."},
        {std::make_exception_ptr(APIError(0, "That file is empty.")), "retrying: That file is empty."},
        {std::make_exception_ptr(FileError("Gone.")), "retrying: Gone."},
        {platformSays(408), "retrying: The platform says 408."},
        {platformSays(429), "retrying: The platform says 429."},
        {platformSays(403), "failed: The platform says 403."},
        {platformSays(409, "conflict"), "failed: The platform says 409."},
        {std::make_exception_ptr(boost::system::system_error(boost::asio::error::operation_aborted)), "stopped"},
        {nullptr, "done"},
    };
    for (const auto& [end, state] : table) {
        uploads.ends = {end};
        auto id = addUpload();
        world.runUntil([&] { return stateOf(id) != "running"; });
        EXPECT_EQ(stateOf(id), state);
        model->stop(id);
        world.runUntil([&] { return model->inFlightCount() == 0; });
    }
}

TEST_F(TransfersTest, aReportDuringARetryWaitShowsItRunning)
{
    uploads.ends = {platformSays(503)};
    auto id = addUpload();
    runUntilState(id, "retrying: The platform says 503.");
    uploads.requests[0].onProgress({.sent = 5, .total = 20, .bytesPerSecond = 3.0});
    world.settle();
    EXPECT_EQ(stateOf(id), "running");
    EXPECT_EQ(model->find(id)->rate, 3.0);
    EXPECT_EQ(model->find(id)->trace.samples, QList{3.0});
}

TEST_F(TransfersTest, aStopWhileItRunsLeavesNothing)
{
    journal();
    auto id = addUpload();
    world.settle();
    uploads.requests[0].onProgress({.sent = 7, .total = 20});
    world.settle();
    bool heldAtAbort = false;
    client.handler = [&](const HttpRequest& request) {
        if (request.url.endsWith("abort"))
            heldAtAbort = journals.loadJournal("row-1").has_value();
        return HttpResponse{.status = 500};
    };
    model->stop(id);
    EXPECT_EQ(stateOf(id), "stopped") << "at once";
    EXPECT_FALSE(sleep.held);
    world.settle();
    EXPECT_EQ(elapsed(), 0);
    EXPECT_THAT(asked(), ElementsAre(abortRequest, stopReport)) << "neither is cut off by the stop, or stops at a no";
    EXPECT_EQ(client.requests()[0].body, R"({"object":"object-1","uploadId":"upload-1"})");
    EXPECT_EQ(client.requests()[1].body, R"({"bytesSent":7,"bytesTotal":20,"status":"stopped"})");
    EXPECT_TRUE(heldAtAbort) << "until the platform has been asked, the journal is the only record of the upload";
    EXPECT_EQ(journals.loadJournal("row-1"), std::nullopt);
    EXPECT_THAT(interruptedKeys(), IsEmpty());
}

TEST_F(TransfersTest, aStopDuringARetryWaitIsSeenAtOnce)
{
    journal();
    uploads.ends = {platformSays(503)};
    auto id = addUpload();
    runUntilState(id, "retrying: The platform says 503.");
    auto stoppedAt = elapsed();
    model->stop(id);
    world.runUntil([&] { return client.requests().size() == 2; });
    world.settle();
    EXPECT_LE(elapsed() - stoppedAt, 0.5);
    EXPECT_EQ(stateOf(id), "stopped");
    EXPECT_THAT(asked(), ElementsAre(abortRequest, stopReport));
    EXPECT_EQ(journals.loadJournal("row-1"), std::nullopt);
    EXPECT_EQ(uploads.requests.size(), 1u);
}

/// Fails as it is told, whether or not it was stopped.
Task<void> failLater(Clock& clock, std::exception_ptr end)
{
    co_await clock.sleep(1s);
    std::rethrow_exception(end);
}

TEST_F(TransfersTest, whereAStopAndAFailureMeetTheStopWins)
{
    for (const auto& end : {platformSays(403), platformSays(503), platformSays(409, "delivery_doubt")}) {
        auto surroundings = environment();
        surroundings.upload = [&](UploadRequest) { return failLater(world.clock, end); };
        model.emplace(surroundings);
        journal();
        auto id = addUpload();
        world.settle();
        model->stop(id);
        world.runUntil([&] { return !journals.loadJournal("row-1"); });
        world.settle();
        EXPECT_EQ(stateOf(id), "stopped");
        EXPECT_EQ(model->doubt(), std::nullopt);
    }
}

TEST_F(TransfersTest, whoHearsOfAChangeMayStopTheItem)
{
    QObject::connect(&*model, &Transfers::itemChanged, [this](const QUuid& id) { model->stop(id); });
    auto id = addUpload();
    addUpload("row-2");
    EXPECT_EQ(model->inFlightCount(), 2);
    world.settle();
    uploads.requests[0].onProgress({.sent = 1, .total = 2});
    world.settle();
    EXPECT_EQ(stateOf(id), "stopped");
    EXPECT_EQ(model->inFlightCount(), 1);
}

TEST_F(TransfersTest, stoppingWhatIsOverChangesNothing)
{
    uploads.ends = {nullptr};
    auto id = addUpload();
    runUntilState(id, "done");
    model->stop(id);
    model->stop(QUuid::createUuid());
    EXPECT_EQ(stateOf(id), "done");
    EXPECT_EQ(model->inFlightCount(), 0);
}

TEST_F(TransfersTest, anUploadUnderTheKeyOfOneThatIsGivenUpWaitsForThat)
{
    journal();
    client.latency = 5s;
    auto first = addUpload();
    world.settle();
    model->stop(first);
    auto second = addUpload();
    auto third = addUpload();
    world.settle();
    EXPECT_EQ(uploads.requests.size(), 1u) << "it would lose its journal to the first one";
    model->stop(second);
    model->stop(third);
    auto fourth = addUpload();
    world.runUntil([&] { return uploads.requests.size() == 2 || elapsed() > 60; });
    EXPECT_EQ(uploads.requests.size(), 2u) << "those that wait must not wait for each other";
    EXPECT_EQ(stateOf(fourth), "running");
    EXPECT_EQ(journals.loadJournal("row-1"), std::nullopt);
}

TEST_F(TransfersTest, aDoubtTakesThePlaceOfItsItemUntilTheUserAnswers)
{
    uploads.ends = {platformSays(409, "delivery_doubt")};
    int announced = 0;
    QObject::connect(&*model, &Transfers::doubtChanged, [&] { ++announced; });
    auto id = addUpload();
    runUntilState(id, "absent");
    ASSERT_TRUE(model->doubt());
    EXPECT_EQ(model->doubt()->message, "The platform says 409.");
    EXPECT_EQ(model->doubt()->file, disk.filePath("master.mov"));
    EXPECT_EQ(model->doubt()->projectId, "salt");
    EXPECT_FALSE(sleep.held);
    world.settle();
    EXPECT_THAT(client.requests(), IsEmpty()) << "neither a stop report nor an abort";

    auto again = model->confirmDoubt();
    ASSERT_TRUE(again);
    EXPECT_NE(*again, id);
    EXPECT_EQ(model->find(*again)->label, "Picture");
    EXPECT_EQ(model->doubt(), std::nullopt);
    EXPECT_EQ(announced, 2);
    world.settle();
    EXPECT_TRUE(uploads.requests.at(1).confirmed);
}

TEST_F(TransfersTest, asksOneQuestionAfterTheOther)
{
    uploads.ends.assign(2, platformSays(409, "delivery_doubt"));
    addUpload("row-1");
    addUpload("row-2");
    world.runUntil([&] { return removed.size() == 2; });
    EXPECT_EQ(model->doubt()->deliverable.id, "row-1");
    model->dismissDoubt();
    EXPECT_EQ(model->doubt()->deliverable.id, "row-2");
    model->dismissDoubt();
    EXPECT_EQ(model->doubt(), std::nullopt);
    EXPECT_EQ(model->confirmDoubt(), std::nullopt);
    EXPECT_TRUE(model->items().empty());
}

TEST_F(TransfersTest, theBinTakesFilesNotFoldersAndNoneTwice)
{
    QDir(disk.path()).mkdir("folder");
    QStringList files{file("a.mov"), disk.filePath("folder"), file("b.mov"), file("a.mov"), disk.filePath("missing")};
    auto ids = addBinUploads({.files = files, .orgId = "org", .caption = "Masters", .folder = "Reel/"});
    ASSERT_EQ(ids.size(), 3);
    EXPECT_EQ(model->find(ids[0])->label, "Assets");
    EXPECT_EQ(model->find(ids[0])->titleName, "Masters");
    EXPECT_EQ(model->find(ids[0])->journalKey, binJournalKey("org", "Reel/", files[0]));
    EXPECT_EQ(model->find(ids[1])->name, "b.mov");
    EXPECT_EQ(model->find(ids[2])->name, "missing") << "the engine says what is wrong with it";
    EXPECT_EQ(addBinUploads({.files = {files[0]}, .orgId = "org"}).size(), 1) << "to another folder";
    EXPECT_EQ(addBinUploads({.files = {files[0]}, .orgId = "org-2", .folder = "Reel/"}).size(), 1);
    EXPECT_EQ(model->binUploads("org").size(), 4u);
    EXPECT_EQ(model->binUploads("org-2").size(), 1u);

    model->stop(ids[0]);
    EXPECT_EQ(addBinUploads({.files = {files[0]}, .orgId = "org", .folder = "Reel/"}).size(), 1);
}

TEST_F(TransfersTest, theBinKnowsNeitherDoubtsNorStopReports)
{
    uploads.ends = {platformSays(409, "delivery_doubt")};
    auto id = addBinUploads({.files = {file("a.mov")}, .orgId = "org"}).at(0);
    runUntilState(id, "failed: The platform says 409.");
    world.settle();
    EXPECT_EQ(model->doubt(), std::nullopt);
    EXPECT_THAT(client.requests(), IsEmpty());
}

TEST_F(TransfersTest, wakingOrTheReturnOfTheNetworkEndsARetryWait)
{
    uploads.ends.assign(3, platformSays(503));
    auto id = addUpload();
    runUntilState(id, "retrying: The platform says 503.");
    sleep.woken();
    EXPECT_EQ(std::get<Item::Retrying>(model->find(id)->state).until, world.clock.wallNow());
    world.settle();
    EXPECT_EQ(stateOf(id), "running");
    EXPECT_EQ(elapsed(), 1);

    network.usable = false;
    runUntilState(id, "retrying: The platform says 503.");
    world.clock.advance(5s);
    world.settle();
    EXPECT_EQ(stateOf(id), "retrying: The platform says 503.") << "30 seconds, and no network yet";
    network.usable = true;
    world.clock.advance(100ms);
    world.settle();
    EXPECT_EQ(stateOf(id), "running");

    runUntilState(id, "retrying: The platform says 503.");
    network.usable = false;
    network.isUnknown = true;
    auto failedAt = elapsed();
    runUntilState(id, "running");
    EXPECT_DOUBLE_EQ(elapsed() - failedAt, 60) << "what cannot tell of the network does not cut the wait short";
}

TEST_F(TransfersTest, findsWhatIsMoving)
{
    uploads.ends = {nullptr};
    auto first = addUpload("row-1");
    runUntilState(first, "done");
    EXPECT_EQ(model->activeItem("row-1"), std::nullopt);
    auto second = addUpload("row-1");
    auto third = addUpload("row-1");
    EXPECT_EQ(model->activeItem("row-1")->id, second);
    EXPECT_EQ(model->activeItem("row-9"), std::nullopt);
    EXPECT_EQ(model->inFlight().size(), 2u);
    EXPECT_EQ(model->finished().at(0).id, first);
    model->clearFinished();
    EXPECT_TRUE(model->finished().empty());
    EXPECT_EQ(model->items().at(1).id, third);
}

TEST_F(TransfersTest, whatIsUnderWayEndsQuietlyOnceTheModelIsGone)
{
    journal();
    uploads.ends = {platformSays(503), nullptr};
    addUpload("row-1");
    addUpload("row-2");
    addUpload("row-3");
    world.settle();
    auto requests = uploads.requests;
    ASSERT_EQ(requests.size(), 3u);
    world.clock.advance(1s);
    world.settle();
    model.reset();
    EXPECT_FALSE(sleep.held);
    EXPECT_FALSE(sleep.woken);
    requests[2].onProgress({.sent = 1, .total = 2});
    requests[2].flag->stop();
    world.settle();
    EXPECT_THAT(client.requests(), IsEmpty());
    EXPECT_TRUE(journals.loadJournal("row-1")) << "the end of the program gives nothing up";
}

} // namespace
} // namespace palvera
