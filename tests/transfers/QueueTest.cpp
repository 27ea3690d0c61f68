#include "TransfersHarness.h"

namespace palvera {
namespace {

/// The order of the transfers, and what holds them up.
struct QueueTest : TransfersTest {
    /// Uploads to as many deliverables, or downloads.
    QList<QUuid> addAll(bool isUpload, int count)
    {
        QList<QUuid> ids;
        for (int i = 0; i < count; ++i)
            ids.append(isUpload ? addUpload(QString("row-%1").arg(i)) : addDownload(QString("%1.mov").arg(i)));
        EXPECT_EQ(statesOf(ids).substr(0, 23), "running running running") << "before anything else happens";
        settleFor(2s);
        return ids;
    }
    void settleFor(std::chrono::seconds time) { world.run(world.clock.sleep(time)); }
};

TEST_F(QueueTest, aFewOfEachKindRunInTheOrderThatTheUserGivesThem)
{
    for (const bool isUpload : {true, false}) {
        SCOPED_TRACE(isUpload);
        const auto ids = addAll(isUpload, 7);
        EXPECT_EQ(statesOf(ids), "running running running waiting waiting waiting waiting");
        model->move(ids[5], ids[4]);
        model->move(ids[3], {});
        model->stop(ids[0]);
        settleFor(2s);
        EXPECT_EQ(statesOf(ids), "stopped running running waiting waiting running waiting");
        model->startNow(ids[6]);
        settleFor(2s);
        EXPECT_EQ(statesOf(ids), "stopped running running waiting waiting running running");
        model->stop(ids[1]); // one more than may, is gone
        settleFor(2s);
        EXPECT_EQ(statesOf(ids), "stopped stopped running waiting waiting running running");
        model->stop(ids[4]); // whose turn has not come
        model->stop(ids[2]);
        settleFor(2s);
        EXPECT_EQ(statesOf(ids), "stopped stopped stopped running stopped running running");
        EXPECT_EQ(isUpload ? uploads.requests.size() : downloads.requests.size(), 6u);
        model->setAtOnce(1, 1);
        const QList<QUuid> another{isUpload ? addUpload("row-8") : addDownload("8.mov")};
        settleFor(2s);
        EXPECT_EQ(statesOf(ids + another), "stopped stopped stopped running stopped running running waiting");
        model->setAtOnce(isUpload ? 4 : 1, isUpload ? 1 : 4);
        settleFor(2s);
        EXPECT_EQ(statesOf(another), "running");
        model->setAtOnce(3, 3);
        model->setKeepsAwake(false);
        EXPECT_FALSE(sleep.held);
        model->setKeepsAwake(true);
        EXPECT_TRUE(sleep.held);
        model->stopAll();
        EXPECT_EQ(model->inFlightCount(), 0);
        settleFor(2s);
    }
}

TEST_F(QueueTest, oneThatWaitsToBeTriedAgainLetsOthersGoUntilTheUserWantsIt)
{
    uploads.ends = {platformSays(500)};
    const auto ids = addAll(true, 4);
    EXPECT_EQ(statesOf(ids), "retrying running running running");
    settleFor(10s);
    EXPECT_EQ(statesOf(ids), "waiting running running running");
    model->stop(ids[1]);
    world.settle();
    EXPECT_EQ(statesOf(ids), "running stopped running running");

    uploads.ends = {platformSays(500)};
    model->stop(ids[2]);
    const auto other = addUpload("other");
    settleFor(2s);
    const auto more = addUpload("more");
    EXPECT_EQ(statesOf({other, more}), "retrying running");
    world.settle();
    uploads.ends = {platformSays(500)};
    model->startNow(other);
    settleFor(2s);
    EXPECT_EQ(statesOf({ids[0], ids[3], other, more}), "running running retrying running");
    settleFor(30s);
    EXPECT_EQ(statesOf({ids[0], ids[3], other, more}), "running running running running") << "it stays wanted";
}

TEST_F(QueueTest, whatIsPausedKeepsItsPlaceAndLetsOthersGo)
{
    for (const bool isUpload : {true, false}) {
        SCOPED_TRACE(isUpload);
        const auto ids = addAll(isUpload, 4);
        auto runs = [&] { return isUpload ? uploads.requests.size() : downloads.requests.size(); };
        const auto before = runs();
        if (!isUpload)
            downloads.deafFor = 60s; // it goes on after a stop, but not after a pause
        model->pause(ids[1]);
        if (isUpload)
            uploads.requests[1].onProgress({.sent = 9, .total = 9, .bytesPerSecond = 9});
        settleFor(2s);
        EXPECT_EQ(statesOf(ids), "running paused running running");
        EXPECT_EQ(model->find(ids[1])->rate, std::nullopt) << "what comes late is nothing new";
        EXPECT_EQ(model->inFlightCount(), 4);
        EXPECT_EQ(runs(), before + 1);
        if (isUpload)
            EXPECT_TRUE(journals.isRunning("row-1")) << "nobody else may go on with it";
        model->pauseAll();
        EXPECT_FALSE(sleep.held);
        settleFor(2s);
        EXPECT_EQ(statesOf(ids), "paused paused paused paused");
        model->goOn(ids[3]);
        model->goOn(ids[2]);
        settleFor(2s);
        EXPECT_EQ(statesOf(ids), "paused paused running running");
        model->goOnAll();
        EXPECT_EQ(statesOf(ids), "running waiting running running") << "in their order, whoever is ready first";
        settleFor(2s);
        EXPECT_EQ(statesOf(ids), "running waiting running running");
        EXPECT_TRUE(sleep.held);
        EXPECT_EQ(runs(), before + 4);
        model->pause(ids[1]); // while it waits
        model->stop(ids[0]);
        settleFor(2s);
        EXPECT_EQ(statesOf(ids), "stopped paused running running");
        downloads.deafFor.reset();
        model->stopAll();
        settleFor(61s);
    }
}

TEST_F(QueueTest, aPausedUploadKeepsItsJournalUntilItIsStopped)
{
    uploads.ends = {platformSays(500)};
    journal("row-1");
    auto id = addUpload();
    runUntilState(id, "retrying: The platform says 500.");
    model->pause(id); // which ends the wait
    settleFor(60s);
    EXPECT_EQ(stateOf(id), "paused");
    EXPECT_THAT(interruptedKeys(), IsEmpty());
    EXPECT_TRUE(journals.loadJournal("row-1"));
    model->goOn(id);
    settleFor(2s);
    EXPECT_EQ(uploads.requests.size(), 2u);
    model->pause(id);
    model->goOn(id); // before the engine has ended
    settleFor(2s);
    EXPECT_EQ(uploads.requests.size(), 3u);
    EXPECT_EQ(stateOf(id), "running");
    model->pause(id);
    settleFor(1s);
    model->stop(id);
    settleFor(2s);
    EXPECT_FALSE(journals.loadJournal("row-1"));
    EXPECT_EQ(stateOf(id), "stopped");
}

TEST_F(QueueTest, aFailureStaysWithItsDeliverableUntilTheNextTry)
{
    auto fail = [&](const QString& row) {
        uploads.ends = {platformSays(403)};
        auto id = addUpload(row);
        runUntilState(id, "failed: The platform says 403.");
        return id;
    };
    auto id = fail("row-1");
    model->clearFinished();
    EXPECT_EQ(model->failedUpload("row-1")->id, id);
    EXPECT_EQ(model->failedUpload("row-2"), std::nullopt);
    auto second = model->tryAgain(id);
    ASSERT_TRUE(second);
    EXPECT_EQ(model->failedUpload("row-1"), std::nullopt);
    EXPECT_EQ(model->find(*second)->label, "Picture");
    EXPECT_EQ(model->tryAgain(*second), std::nullopt) << "it is on its way";
    settleFor(1s);
    EXPECT_EQ(uploads.requests.back().file, disk.filePath("master.mov"));
    model->stop(*second);
    settleFor(1s);
    EXPECT_TRUE(model->tryAgain(*second));
    EXPECT_EQ(model->find(*second), nullptr) << "in the stead of the other";
    settleFor(1s);

    fail("row-3");
    world.run(model->interrupted().discardUpload("row-3"));
    EXPECT_EQ(model->failedUpload("row-3"), std::nullopt) << "given up";
    fail("row-3");
    model->cutOff();
    EXPECT_EQ(model->failedUpload("row-3"), std::nullopt) << "another user's";

    downloads.ends = {platformSays(500)};
    auto download = addDownload();
    runUntilState(download, "failed: The platform says 500.");
    auto again = model->tryAgain(download);
    settleFor(2s);
    EXPECT_EQ(downloads.requests.back().destination, downloads.requests.front().destination);
    EXPECT_EQ(stateOf(*again), "running");
}

} // namespace
} // namespace palvera
