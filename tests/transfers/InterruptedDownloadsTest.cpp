#include "TransfersHarness.h"

#include "transfer/Partial.h"

#include <QFile>

namespace palvera {
namespace {

struct InterruptedDownloadsTest : TransfersTest {
    InterruptedDownloadsTest()
    {
        client.handler = [](const HttpRequest&) {
            return HttpResponse{.status = 200, .body = R"({"url":"https://storage.test/a"})"};
        };
    }

    /// Downloads "a.mov", of which a chunk arrives before it ends as the script says.
    QUuid downloadAChunk()
    {
        const auto runs = downloads.requests.size();
        auto asked = download();
        asked.label = "Picture master";
        asked.object.key = "deliveries/a.mov";
        asked.object.identity = deliveredFile(*api, *asked.object.target.asDeliverable(), asked.object.key).identity;
        const auto id = model->addDownload(std::move(asked));
        world.runUntil([&] { return downloads.requests.size() > runs; });
        const auto& request = downloads.requests.back();
        writeFile(request.destination, "half");
        savePartial(
            request.destination,
            {.done = {0}, .total = 4, .source = request.source, .file = identityOf(request.destination)->handle});
        return id;
    }
    QStringList interruptedPaths()
    {
        QStringList paths;
        for (const auto& found : model->interrupted().downloads())
            paths.append(found.download.path);
        return paths;
    }
    QString path() const { return downloadsFolder + "/a.mov"; }
};

TEST_F(InterruptedDownloadsTest, whatWasCutOffOrFailedIsListedUntilItIsGoneOnWithDoneOrStopped)
{
    using Ends = std::deque<std::exception_ptr>;
    const std::tuple<const char*, Ends, std::function<void(const QUuid&)>, bool> cases[] = {
        {"failed", {platformSays(503)}, {}, true},
        {"done then", {nullptr}, {}, false},
        {"stopped", {}, [this](const QUuid& id) { model->stop(id); }, false},
        {"signed out", {}, [this](const QUuid&) { model->cutOff(); }, true},
        {"the end of the program", {}, [this](const QUuid&) { world.run(model->suspend()); }, true},
    };
    for (const auto& [how, ends, end, isListed] : cases) {
        SCOPED_TRACE(how);
        downloads.ends = ends;
        const auto id = downloadAChunk();
        EXPECT_THAT(interruptedPaths(), IsEmpty());
        world.run(model->interrupted().load());
        EXPECT_THAT(interruptedPaths(), IsEmpty()) << "it is on its way";
        EXPECT_THAT(index.load(), IsEmpty()) << "for another program, too";
        if (end)
            end(id);
        else
            world.runUntil([&] { return !model->find(id)->isInFlight(); });
        world.settle();
        EXPECT_EQ(interruptedPaths(), isListed ? QStringList(path()) : QStringList());
    }
    makeModel({});
    ASSERT_EQ(interruptedPaths(), QStringList(path()));
    const auto found = model->interrupted().downloads().front();
    EXPECT_EQ(found.received, 4);
    const auto runs = downloads.requests.size();
    const auto id = model->resume(found.download);
    EXPECT_THAT(interruptedPaths(), IsEmpty());
    world.runUntil([&] { return downloads.requests.size() > runs; });
    EXPECT_EQ(downloads.requests.back().destination, path());
    EXPECT_EQ(downloads.requests.back().source, found.download.source);
    EXPECT_EQ(model->find(id)->label, "Picture master");
}

TEST_F(InterruptedDownloadsTest, whatHasNotBegunYetIsNotForgotten)
{
    QList<QUuid> ids;
    for (const char* object : {"1", "2", "3", "4", "5"}) {
        auto asked = download("same.mov");
        asked.object.identity = object;
        asked.listedSize = 7;
        ids.append(model->addDownload(std::move(asked)));
    }
    downloads.ends = {nullptr};
    runUntilState(ids[0], "done");
    runUntilState(ids[3], "running");
    EXPECT_EQ(statesOf(ids), "done running running running waiting");
    model->stop(ids[1]);
    world.run(model->suspend());
    makeModel({});
    auto& list = model->interrupted();
    EXPECT_EQ(interruptedPaths(), QStringList(3, downloadsFolder + "/same.mov"));
    const auto first = list.downloads().at(0);
    EXPECT_EQ(first.total, 7);
    world.run(list.discardDownload(first.download.key()));
    EXPECT_EQ(interruptedPaths().size(), 2);
    const auto next = list.downloads().at(0).download;
    downloads.ends = {nullptr};
    runUntilState(model->resume(next), "done");
    world.settle();
    EXPECT_EQ(interruptedPaths().size(), 1);
    EXPECT_EQ(list.findDownload(next.key()), nullptr);
}

TEST_F(InterruptedDownloadsTest, whatIsDiscardedOrRemovedIsForgottenUnlessItsDiskIsAwayAndNoOtherFileGoes)
{
    for (bool isReplaced : {false, true}) {
        downloadAChunk();
        model->cutOff();
        world.settle();
        if (isReplaced) {
            QFile::remove(path());
            writeFile(downloadsFolder + "/keeps its inode", {});
            writeFile(path(), "the user's own");
        }
        world.run(model->interrupted().discardDownload(path()));
        world.settle();
        EXPECT_EQ(QFile::exists(path()), isReplaced);
        EXPECT_THAT(interruptedPaths(), IsEmpty());
        EXPECT_THAT(entriesOf(disk.filePath("Palvera/Downloads")), IsEmpty());
        QFile::remove(path());
    }
    downloadAChunk();
    model->cutOff();
    world.settle();
    for (bool isAway : {true, false}) { // the disk, or what the user removed from it
        isAway ? QDir().rename(downloadsFolder, disk.filePath("away")) : QDir().mkpath(downloadsFolder);
        world.run(model->interrupted().load());
        EXPECT_THAT(interruptedPaths(), IsEmpty());
        EXPECT_EQ(entriesOf(disk.filePath("Palvera/Downloads")).size(), isAway);
    }
}

} // namespace
} // namespace palvera
