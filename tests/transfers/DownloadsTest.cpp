#include "TransfersHarness.h"

#include "files/FileError.h"

namespace palvera {
namespace {

using testing::StartsWith;

struct DownloadsTest : TransfersTest {
    void untilEngineRuns(std::size_t runs)
    {
        world.runUntil([&] { return downloads.requests.size() == runs; });
    }
};

TEST_F(DownloadsTest, asksForTheAddressAndBringsTheFileDownToAPlaceOfItsOwnInTheFolder)
{
    auto asked = download("../../a.mov");
    writeFile(downloadsFolder + "/a.mov", "the user's");
    downloads.ends = {nullptr};
    auto id = model->addDownload(asked);
    EXPECT_EQ(model->activeItem("row-1")->id, id);
    untilEngineRuns(1);
    const auto& request = downloads.requests[0];
    EXPECT_EQ(request.address, address.toUtf8());
    EXPECT_EQ(request.destination, downloadsFolder + "/a 2.mov");
    EXPECT_EQ(request.source, asked.object.identity);
    EXPECT_EQ(model->find(id)->file, request.destination);
    request.onProgress({.received = 4, .total = 8, .bytesPerSecond = 2.0});
    world.settle();
    EXPECT_EQ(model->find(id)->sent, 4);
    runUntilState(id, "done");
    EXPECT_THAT(client.requests(), IsEmpty()) << "the platform hears nothing of downloads";
}

TEST_F(DownloadsTest, aFailureOrAStopIsFinalWhereverItIsAndLeavesNoEmptyFile)
{
    auto asking = addDownload();
    world.settle();
    model->stop(asking);
    world.settle();
    EXPECT_EQ(stateOf(asking), "stopped");
    EXPECT_FALSE(world.clock.advanceToNextWake()) << "it does not wait for the address";
    const auto allowed = std::exchange(address, "file:///etc/passwd");
    runUntilState(addDownload(), "failed: That file has no address.");
    noAddress = platformSays(503);
    runUntilState(addDownload(), "failed: The platform says 503.");
    EXPECT_THAT(downloads.requests, IsEmpty());
    noAddress = nullptr;
    address = allowed;
    downloads.ends = {platformSays(503)};
    runUntilState(addDownload(), "failed: The platform says 503.");
    auto running = addDownload();
    untilEngineRuns(2);
    model->stop(running);
    world.settle();
    EXPECT_EQ(stateOf(running), "stopped");
    EXPECT_THAT(entriesOf(downloadsFolder), IsEmpty());
}

TEST_F(DownloadsTest, theSameObjectIsNotWrittenTwiceAtOnceAndOneThatWasStoppedIsWaitedForUntilTheProgramEnds)
{
    downloads.deafFor = 5s;
    auto first = addDownload();
    downloadsFolder += "/../Downloads"; // another way there
    auto second = addDownload();
    untilEngineRuns(1);
    world.settle();
    EXPECT_EQ(stateOf(second), "failed: “a.mov” is being downloaded to that folder already.");
    EXPECT_EQ(stateOf(first), "running");
    EXPECT_TRUE(entriesOf(downloadsFolder).contains("a.mov")) << "the second one's end leaves the first one's file";
    model->stop(first);
    EXPECT_EQ(stateOf(first), "stopped");
    auto third = addDownload();
    runUntilState(third, "waiting");
    untilEngineRuns(2);
    EXPECT_EQ(elapsed(), 6) << "an address takes a second, the first one's end five";
    EXPECT_EQ(downloads.requests[1].destination, downloads.requests[0].destination);
    world.run(model->suspend());
    EXPECT_EQ(elapsed(), 6);
}

Task<std::optional<qint64>> listing(qint64 bytes)
{
    co_return bytes;
}

TEST_F(DownloadsTest, fewerBytesThanTheListingStillSaysAreNoFileAndMoreAreRemarked)
{
    const std::tuple<qint64, qint64, qint64, bool, bool> cases[] = {
        {10, 10, 4, true, false},  {10, 4, 4, false, false}, {10, 10, 10, false, false},
        {10, 10, 12, false, true}, {0, 9, 4, false, false},
    };
    for (const auto& [listed, listedAgain, total, isRefused, isRemarked] : cases) {
        SCOPED_TRACE(total);
        auto asked = download();
        asked.listedSize = listed;
        asked.object.listedSize = [again = listedAgain] { return listing(again); };
        const auto id = model->addDownload(std::move(asked));
        untilEngineRuns(downloads.requests.size() + 1);
        auto failure = world.run(outcomeOf(downloads.requests.back().checkTotal(total))).failure;
        world.settle();
        EXPECT_EQ(failureAs<FileError>(failure).has_value(), isRefused);
        EXPECT_EQ(model->find(id)->remark.contains("more than"), isRemarked);
        model->stop(id);
        world.settle();
    }
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
