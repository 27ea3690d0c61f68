#include "TransfersHarness.h"

#include "files/FileError.h"

namespace palvera {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

Task<QString> addressOf(Clock& clock, QString text, std::exception_ptr failure)
{
    co_await clock.sleep(std::chrono::seconds(1));
    if (failure)
        std::rethrow_exception(failure);
    co_return text;
}

struct DownloadsTest : TransfersTest {
    QString folder = disk.filePath("Downloads");
    QString address = "https://storage.test/object?signature=a%2Fb";
    std::exception_ptr noAddress;

    DownloadsTest() { QDir().mkpath(folder); }

    QUuid addDownload(const QString& name = "a.mov")
    {
        return model->addDownload({.object = {.target = TransferTarget::Deliverable{"org", "salt", "row-1"},
                                              .identity = "object-1",
                                              .address = [this] { return addressOf(world.clock, address, noAddress); }},
                                   .name = name,
                                   .label = "Picture",
                                   .folder = folder});
    }
    void untilEngineRuns(std::size_t runs)
    {
        world.runUntil([&] { return downloads.requests.size() == runs; });
    }
};

TEST_F(DownloadsTest, asksForTheAddressAndBringsTheFileDownToAPlaceOfItsOwnInTheFolder)
{
    writeFile(folder + "/a.mov", "the user's");
    downloads.ends = {nullptr};
    auto id = addDownload("../../a.mov");
    EXPECT_EQ(model->activeItem("row-1")->id, id);
    untilEngineRuns(1);
    const auto& request = downloads.requests[0];
    EXPECT_EQ(request.address, address.toUtf8());
    EXPECT_EQ(request.destination, folder + "/a 2.mov");
    EXPECT_EQ(request.source, "object-1");
    EXPECT_EQ(model->find(id)->file, request.destination);
    request.onProgress({.received = 4, .total = 8, .bytesPerSecond = 2.0});
    world.settle();
    EXPECT_EQ(model->find(id)->sent, 4);
    runUntilState(id, "done");
    EXPECT_THAT(client.requests(), IsEmpty()) << "the platform hears nothing of downloads";
}

TEST_F(DownloadsTest, aFailureIsFinalAndLeavesNoEmptyFile)
{
    for (const char* text : {"", "not an address", "file:///etc/passwd", "https://", "https://storage.test/a\r\nb"}) {
        address = text;
        auto id = addDownload();
        world.runUntil([&] { return stateOf(id) != "running"; });
        EXPECT_EQ(stateOf(id), "failed: That file has no address.") << text;
    }
    noAddress = platformSays(503);
    runUntilState(addDownload(), "failed: The platform says 503.");
    EXPECT_THAT(downloads.requests, IsEmpty());
    noAddress = nullptr;
    address = "https://storage.test/object";
    downloads.ends = {platformSays(503)};
    runUntilState(addDownload(), "failed: The platform says 503.");
    EXPECT_EQ(downloads.requests.size(), 1u);
    EXPECT_THAT(entriesOf(folder), IsEmpty());
}

TEST_F(DownloadsTest, aStopIsFinalWhereverItIs)
{
    auto asking = addDownload();
    world.settle();
    model->stop(asking);
    EXPECT_EQ(stateOf(asking), "stopped");
    world.settle();
    EXPECT_EQ(elapsed(), 0) << "it does not wait for the address";

    auto running = addDownload();
    untilEngineRuns(1);
    model->stop(running);
    world.settle();
    EXPECT_EQ(stateOf(running), "stopped");
    EXPECT_THAT(entriesOf(folder), IsEmpty());
}

TEST_F(DownloadsTest, theSameObjectIsNotWrittenTwiceAtOnce)
{
    auto first = addDownload();
    folder = disk.filePath("Downloads/../Downloads"); // another way there
    auto second = addDownload();
    untilEngineRuns(1);
    world.settle();
    EXPECT_EQ(stateOf(second), "failed: “a.mov” is being downloaded to that folder already.");
    EXPECT_EQ(stateOf(first), "running");
    EXPECT_EQ(downloads.requests.size(), 1u);
    EXPECT_TRUE(entriesOf(folder).contains("a.mov")) << "the second one's end leaves the first one's file";

    model->stop(first);
    world.settle();
    addDownload();
    untilEngineRuns(2);
    EXPECT_EQ(downloads.requests[1].destination, downloads.requests[0].destination) << "free again";
}

Task<std::optional<qint64>> listing(qint64 bytes)
{
    co_return bytes;
}

TEST_F(DownloadsTest, fewerBytesThanTheListingStillSaysAreNoFileAndMoreAreRemarked)
{
    const struct {
        qint64 listed, listedAgain, total;
        bool isRefused, isRemarked;
    } cases[] = {{10, 10, 4, true, false},
                 {10, 4, 4, false, false},
                 {10, 10, 10, false, false},
                 {10, 10, 12, false, true},
                 {0, 9, 4, false, false}};
    for (const auto& [listed, listedAgain, total, isRefused, isRemarked] : cases) {
        SCOPED_TRACE(total);
        auto before = downloads.requests.size();
        auto id =
            model->addDownload({.object = {.target = TransferTarget::Deliverable{"org", "salt", "row-1"},
                                           .identity = QString::number(before),
                                           .address = [this] { return addressOf(world.clock, address, noAddress); },
                                           .listedSize = [again = listedAgain] { return listing(again); }},
                                .listedSize = listed,
                                .name = "a.mov",
                                .folder = folder});
        untilEngineRuns(before + 1);
        auto failure = world.run(outcomeOf(downloads.requests.back().checkTotal(total))).failure;
        world.settle();
        EXPECT_EQ(failureAs<FileError>(failure).has_value(), isRefused);
        EXPECT_EQ(model->find(id)->remark.contains("more than"), isRemarked);
        model->stop(id);
    }
}

TEST_F(DownloadsTest, aFewComeDownAtATimeInTheOrderInWhichTheyWereAskedFor)
{
    QList<QUuid> ids;
    for (int i = 0; i < 5; ++i)
        ids.append(
            model->addDownload({.object = {.target = TransferTarget::Bin{"org", {}},
                                           .identity = QString::number(i),
                                           .address = [this] { return addressOf(world.clock, address, noAddress); }},
                                .name = QString("%1.mov").arg(i),
                                .folder = folder}));
    auto states = [&] {
        std::string all;
        for (const auto& id : ids)
            all += stateOf(id) + " ";
        return all;
    };
    untilEngineRuns(3);
    world.settle();
    EXPECT_EQ(states(), "running running running waiting waiting ");
    model->stop(ids[3]);
    model->stop(ids[0]);
    untilEngineRuns(4);
    EXPECT_EQ(states(), "stopped running running stopped running ");
}

TEST_F(DownloadsTest, anotherDownloadOfAnObjectWaitsForOneThatWasStoppedAndNotForTheEndOfTheProgram)
{
    downloads.deafFor = std::chrono::seconds(5);
    auto first = addDownload();
    untilEngineRuns(1);
    model->stop(first);
    EXPECT_EQ(stateOf(first), "stopped");
    auto second = addDownload();
    runUntilState(second, "waiting");
    untilEngineRuns(2);
    EXPECT_EQ(elapsed(), 6) << "an address takes a second, the first one's end five";
    EXPECT_EQ(downloads.requests[1].destination, downloads.requests[0].destination);
    world.run(model->suspend());
    EXPECT_EQ(elapsed(), 6);
}

TEST_F(DownloadsTest, storedObjectsAreToldApartAndKnowTheirWay)
{
    auto delivered = deliveredFile(*api, {"org", "salt", "row 1"}, "deliveries/a&b.mov");
    auto inBin = binObject(*api, "org", "deliveries/a&b.mov");
    EXPECT_NE(delivered.identity, deliveredFile(*api, {"org", "salt", "row-2"}, "deliveries/a&b.mov").identity);
    EXPECT_NE(delivered.identity, inBin.identity);
    EXPECT_EQ(delivered.identity, deliveredFile(*api, {"org", "salt", "row 1"}, "deliveries/a&b.mov").identity);
    client.handler = [](const HttpRequest&) { return HttpResponse{.status = 200, .body = R"({"url":"here"})"}; };
    EXPECT_EQ(world.run(delivered.address()) + world.run(inBin.address()), "herehere");
    EXPECT_THAT(asked(), ElementsAre(StartsWith("GET orgs/org/projects/salt/deliverables/row%201/asset-url"),
                                     StartsWith("GET orgs/org/bin/download")));
}

} // namespace
} // namespace palvera
