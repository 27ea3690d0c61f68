#include "TransfersHarness.h"

#include "files/FileError.h"
#include "http/TransportError.h"
#include "transfers/RetryRules.h"

namespace palvera {
namespace {

using testing::Each;

const char* stopReport = "POST orgs/org/projects/salt/deliverables/row-1/transfer/progress";
const char* abortRequest = "POST orgs/org/projects/salt/deliverables/row-1/transfer/abort";
const std::string retrying = "retrying: The platform says 503.";

using UploadsTest = TransfersTest;

TEST_F(UploadsTest, theEngineDecidesHowItEndsAndOnlyARowIsToldOfAFailure)
{
    const std::tuple<std::exception_ptr, bool, const char*, std::size_t> cases[] = {
        {nullptr, false, "done", 0},
        {platformSays(403), false, "failed: The platform says 403.", 1},
        {cancelled, false, "stopped", 1},
        {nullptr, true, "done", 0},
        {platformSays(409, "delivery_doubt"), true, "failed: The platform says 409.", 0}};
    for (const auto& [end, intoBin, state, reports] : cases) {
        const auto before = client.requests().size();
        uploads.ends = {end};
        auto id = intoBin ? addBinUploads({.files = {file("a.mov")}, .orgId = "org"}).at(0) : addUpload();
        runUntilState(id, state);
        world.settle();
        model->stop(id);
        EXPECT_EQ(stateOf(id), state) << "what is over cannot be stopped";
        EXPECT_EQ(client.requests().size() - before, reports) << state;
        EXPECT_FALSE(sleep.held) << state;
    }
    EXPECT_EQ(model->activeItem("row-1"), std::nullopt);
    model->clearFinished();
    uploads.requests.at(0).onProgress({.sent = 2, .total = 2});
    world.settle();
    EXPECT_THAT(model->items(), IsEmpty()) << "a report that comes late brings nothing back";
    EXPECT_EQ(model->uploadsFinished(), 2);
    EXPECT_EQ(model->doubt(), std::nullopt);
    EXPECT_THAT(asked(), Each(std::string(stopReport)));
    EXPECT_EQ(client.requests().back().body, R"({"bytesSent":0,"bytesTotal":4,"status":"stopped"})");
}

TEST_F(UploadsTest, waitsLongerBeforeEachOfSevenRetriesAndThenFails)
{
    uploads.ends.assign(8, platformSays(503));
    auto id = addUpload();
    for (double wait : {10, 30, 60, 120, 300, 600, 900}) {
        world.settle();
        uploads.requests.back().onProgress({.sent = 7, .total = 20, .bytesPerSecond = 3.0});
        world.settle();
        EXPECT_EQ(model->find(id)->rate, 3.0);
        runUntilState(id, retrying);
        EXPECT_EQ(model->find(id)->rate, std::nullopt) << "nothing moves";
        EXPECT_TRUE(sleep.held);
        auto until = std::get<Item::Retrying>(model->find(id)->state).until;
        EXPECT_EQ(std::chrono::duration<double>(until - world.clock.wallNow()).count(), wait);
        auto failedAt = elapsed();
        runUntilState(id, "running");
        EXPECT_EQ(elapsed() - failedAt, wait);
    }
    runUntilState(id, "failed: The platform says 503.");
    world.settle();
    EXPECT_EQ(elapsed(), 8 + 2020);
    EXPECT_THAT(asked(), ElementsAre(stopReport));

    makeModel({.retries = 0});
    uploads.ends = {platformSays(503)};
    runUntilState(addUpload(), "failed: The platform says 503.");
    EXPECT_EQ(uploads.requests.size(), 9u);
}

TEST_F(UploadsTest, wakingOrTheReturnOfTheNetworkEndsARetryWait)
{
    uploads.ends.assign(3, platformSays(503));
    auto id = addUpload();
    runUntilState(id, retrying);
    sleep.woken();
    EXPECT_EQ(std::get<Item::Retrying>(model->find(id)->state).until, world.clock.wallNow());
    world.settle();
    EXPECT_EQ(stateOf(id), "running");
    EXPECT_EQ(elapsed(), 1);

    network.usable = false;
    runUntilState(id, retrying);
    world.clock.advance(5s);
    world.settle();
    EXPECT_EQ(stateOf(id), retrying) << "30 seconds, and no network yet";
    network.usable = true;
    world.clock.advance(100ms);
    world.settle();
    EXPECT_EQ(stateOf(id), "running");

    runUntilState(id, retrying);
    network.usable = false;
    network.isUnknown = true;
    auto failedAt = elapsed();
    runUntilState(id, "running");
    EXPECT_DOUBLE_EQ(elapsed() - failedAt, 60) << "what cannot tell of the network does not cut the wait short";
}

TEST_F(UploadsTest, aStopLeavesNothingWhereverItMeetsTheUploadAndWinsOverAFailure)
{
    bool heldAtAbort = false;
    client.handler = [&](const HttpRequest& request) {
        if (request.url.endsWith("abort"))
            heldAtAbort = journals.loadJournal("row-1").has_value();
        return HttpResponse{.status = 500};
    };
    const std::tuple<std::exception_ptr, std::optional<std::chrono::seconds>, std::string> cases[] = {
        // how the run ends, when it does where it does not hear of the stop, and as what it is stopped
        {{}, {}, "running"},
        {platformSays(503), {}, retrying},
        {platformSays(403), 1s, "running"},
        {platformSays(503), 1s, "running"},
        {platformSays(409, "delivery_doubt"), 1s, "running"},
    };
    for (const auto& [end, deafFor, state] : cases) {
        SCOPED_TRACE(end ? describe(end).toStdString() : "runs");
        const auto before = client.requests().size();
        journal();
        if (end)
            uploads.ends = {end};
        uploads.deafFor = deafFor;
        auto id = addUpload();
        world.settle();
        uploads.requests.back().onProgress({.sent = 7, .total = 20});
        world.settle();
        runUntilState(id, state);
        model->stop(id);
        EXPECT_EQ(stateOf(id), "stopped") << "at once";
        EXPECT_FALSE(sleep.held);
        world.pass(deafFor.value_or(0s));
        EXPECT_EQ(stateOf(id), "stopped");
        ASSERT_EQ(client.requests().size(), before + 2) << "neither is cut off by the stop, or stops at a no";
        EXPECT_EQ(asked()[before], abortRequest);
        EXPECT_EQ(asked()[before + 1], stopReport);
        EXPECT_EQ(client.requests()[before].body, R"({"object":"object-1","uploadId":"upload-1"})");
        EXPECT_EQ(client.requests()[before + 1].body, R"({"bytesSent":7,"bytesTotal":20,"status":"stopped"})");
        EXPECT_TRUE(heldAtAbort) << "until the platform has been asked, the journal is the only record of the upload";
        EXPECT_EQ(journals.loadJournal("row-1"), std::nullopt);
        EXPECT_THAT(interruptedKeys(), IsEmpty());
        EXPECT_EQ(model->doubt(), std::nullopt);
    }
    EXPECT_EQ(uploads.requests.size(), 5u) << "none is tried again";
}

TEST_F(UploadsTest, anUploadUnderTheKeyOfOneThatIsGivenUpWaitsForThat)
{
    journal();
    client.latency = 5s;
    auto first = addUpload();
    world.run(model->interrupted().load());
    EXPECT_THAT(interruptedKeys(), IsEmpty()) << "it is on its way";
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

TEST_F(UploadsTest, doubtsTakeThePlaceOfTheirItemsAndAreAskedOneAfterTheOther)
{
    uploads.ends.assign(2, platformSays(409, "delivery_doubt"));
    int announced = 0;
    QObject::connect(&*model, &Transfers::doubtChanged, [&] { ++announced; });
    addUpload("row-1");
    addUpload("row-2");
    world.runUntil([&] { return model->doubt().has_value(); });
    EXPECT_EQ(announced, 1);
    world.runUntil([&] { return model->items().empty(); });
    world.settle();
    EXPECT_THAT(client.requests(), IsEmpty()) << "neither a stop report nor an abort";
    EXPECT_FALSE(sleep.held);
    ASSERT_TRUE(model->doubt());
    EXPECT_EQ(model->doubt()->message, "The platform says 409.");
    EXPECT_EQ(model->doubt()->deliverable.id, "row-1");

    auto again = model->confirmDoubt();
    ASSERT_TRUE(again);
    EXPECT_EQ(model->find(*again)->label, "Picture");
    EXPECT_EQ(model->doubt()->deliverable.id, "row-2");
    model->dismissDoubt();
    EXPECT_EQ(model->doubt(), std::nullopt);
    EXPECT_EQ(model->confirmDoubt(), std::nullopt);
    EXPECT_EQ(announced, 3);
    world.settle();
    ASSERT_EQ(uploads.requests.size(), 3u);
    for (int run : {0, 2}) {
        const auto& request = uploads.requests[std::size_t(run)];
        EXPECT_EQ(request.confirmed, run == 2);
        EXPECT_EQ(request.target, TransferTarget(TransferTarget::Deliverable{"org", "salt", "row-1"}));
        EXPECT_EQ(request.key, "row-1");
        EXPECT_EQ(request.file, disk.filePath("master.mov"));
        EXPECT_TRUE(request.bookmark);
    }
}

TEST_F(UploadsTest, theBinTakesFilesNotFoldersAndNoneTwice)
{
    QDir(disk.path()).mkdir("folder");
    QStringList files{file("a.mov"), disk.filePath("folder"), file("b.mov"), file("a.mov"), disk.filePath("missing")};
    auto begun =
        world.run(model->addBinUploads({.files = files, .orgId = "org", .caption = "Masters", .folder = "Reel/"}));
    const auto& ids = begun.items;
    ASSERT_EQ(ids.size(), 2);
    EXPECT_EQ(begun.folders, QStringList("folder"));
    EXPECT_EQ(begun.onTheirWay, QStringList("a.mov"));
    EXPECT_EQ(begun.objections, QStringList("“missing” is no longer in " + disk.path() + "."));
    EXPECT_EQ(model->find(ids[0])->label, "Assets");
    EXPECT_EQ(model->find(ids[0])->titleName, "Masters");
    EXPECT_EQ(model->find(ids[0])->journalKey, binJournalKey("org", "Reel/", files[0]));
    EXPECT_EQ(addBinUploads({.files = {files[0]}, .orgId = "org"}).size(), 1) << "to another folder";
    EXPECT_EQ(addBinUploads({.files = {files[0]}, .orgId = "org-2", .folder = "Reel/"}).size(), 1);
    EXPECT_EQ(model->binUploads("org").size(), 3u);
    EXPECT_EQ(model->binUploads("org-2").size(), 1u);
    model->stop(ids[0]);
    EXPECT_EQ(addBinUploads({.files = {files[0]}, .orgId = "org", .folder = "Reel/"}).size(), 1);
}

TEST_F(UploadsTest, whatIsUnderWayEndsQuietlyOnceTheModelIsGone)
{
    journal();
    uploads.ends = {platformSays(503), nullptr};
    for (const auto* row : {"row-1", "row-2", "row-3"})
        addUpload(row);
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

TEST(RetryRulesTest, onlyAnAnswerThatRefusesIsFinalAndOnlyItsExactCodeMakesADoubt)
{
    const std::pair<qint64, bool> table[] = {{0, true},    {400, false}, {401, false}, {403, false}, {408, true},
                                             {409, false}, {429, true},  {499, false}, {500, true},  {599, true}};
    for (auto [status, retryable] : table)
        EXPECT_EQ(isRetryable(std::make_exception_ptr(APIError(status, "no"))), retryable) << status;
    using Kind = TransportError::Kind;
    for (auto kind : {Kind::noNetwork, Kind::connect, Kind::proxy, Kind::tls, Kind::untrusted, Kind::idle})
        EXPECT_EQ(isRetryable(std::make_exception_ptr(TransportError(kind, "no"))),
                  kind != Kind::proxy && kind != Kind::untrusted);
    EXPECT_TRUE(isRetryable(std::make_exception_ptr(FileError("no"))));
    EXPECT_TRUE(isRetryable(std::make_exception_ptr(std::runtime_error("no"))));
    const std::pair<std::optional<QString>, bool> codes[] = {
        {"delivery_doubt", true}, {"delivery_doubts", false}, {"Delivery_Doubt", false}, {{}, false}};
    for (const auto& [code, doubts] : codes)
        EXPECT_EQ(isDeliveryDoubt(std::make_exception_ptr(APIError(409, "no", code))), doubts)
            << code.value_or("none").toStdString();
    EXPECT_FALSE(isDeliveryDoubt(std::make_exception_ptr(FileError("delivery_doubt"))));
}

} // namespace
} // namespace palvera
