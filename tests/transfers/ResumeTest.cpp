#include "TransfersHarness.h"

#include "files/Bookmark.h"

namespace palvera {
namespace {

using testing::SizeIs;
using testing::UnorderedElementsAre;

using ResumeTest = TransfersTest;

TEST_F(ResumeTest, listsWhatAnEarlierRunLeftAndGoesOnWithItOnce)
{
    auto intoBin = journal("bin-1");
    intoBin.target = TransferTarget::Bin{.orgId = "org", .folder = "Reel/"};
    journals.saveJournal(intoBin);
    auto toRow = journal();
    makeModel({});
    EXPECT_THAT(interruptedKeys(), UnorderedElementsAre("bin-1", "row-1"));
    EXPECT_THAT(uploads.requests, IsEmpty()) << "nothing is resumed by itself";
    int announced = 0;
    QObject::connect(&*model, &Transfers::journalsChanged, [&] { ++announced; });
    for (const auto& [left, label] : {std::pair(intoBin, "Assets"), std::pair(toRow, "master.mov")}) {
        auto id = model->resume(left);
        ASSERT_TRUE(id);
        EXPECT_FALSE(interruptedKeys().contains(left.key));
        EXPECT_EQ(model->resume(left), std::nullopt);
        EXPECT_EQ(model->find(*id)->label, label);
        world.settle();
        EXPECT_EQ(uploads.requests.back().target, left.destination());
        EXPECT_EQ(uploads.requests.back().key, left.key);
    }
    EXPECT_EQ(announced, 2);
}

TEST_F(ResumeTest, whatIsInFlightIsNotInterrupted)
{
    auto id = addUpload();
    journal();
    journal("row-2");
    world.run(model->loadJournals());
    EXPECT_EQ(interruptedKeys(), QStringList("row-2"));
    EXPECT_EQ(model->resume(*journals.loadJournal("row-1")), std::nullopt);
    model->stop(id);
    EXPECT_EQ(interruptedKeys(), QStringList("row-2")) << "it is being given up";
    world.settle();
    EXPECT_EQ(interruptedKeys(), QStringList("row-2"));
}

TEST_F(ResumeTest, whatIsRefusedOrDoubtedAgainCanBeResumedAgain)
{
    auto left = journal();
    makeModel({});
    for (const auto& end : {platformSays(403), platformSays(409, "delivery_doubt"), platformSays(403)}) {
        SCOPED_TRACE(describe(end).toStdString());
        uploads.ends = {end};
        auto id = model->resume(left);
        ASSERT_TRUE(id);
        EXPECT_THAT(interruptedKeys(), IsEmpty());
        world.runUntil([&] { return stateOf(*id) != "running"; });
        world.settle();
        EXPECT_EQ(interruptedKeys(), QStringList("row-1"));
    }
}

TEST_F(ResumeTest, aJournalThatWasSetAsideStillBelongsToItsDeliverable)
{
    auto left = journal("row-1~2");
    left.target = TransferTarget::Deliverable{"org", "salt", "row-1"};
    uploads.ends = {platformSays(409, "delivery_doubt")};
    model->resume(left);
    world.runUntil([&] { return model->doubt().has_value(); });
    model->confirmDoubt();
    world.settle();
    EXPECT_EQ(uploads.requests.back().target, *left.target);
}

TEST_F(ResumeTest, findsAFileUnderItsOtherName)
{
    auto left = journal();
    left.bookmark = bookmark::make(left.filePath);
    QDir(disk.path()).rename("master.mov", "final.mov");
    auto id = model->resume(left);
    world.settle();
    EXPECT_EQ(uploads.requests.at(0).file, left.filePath) << "under which nothing else may be sent afresh";
    EXPECT_EQ(uploads.requests.at(0).bookmark, left.bookmark);
    EXPECT_EQ(model->find(*id)->name, "final.mov");
}

TEST_F(ResumeTest, aStopDoesNotDiscardWhatAnotherProcessHasGoneOnWith)
{
    journal();
    auto other = journals.lockOf("row-1");
    ASSERT_EQ(other.tryLock(), LockFile::Outcome::taken);
    world.run(model->loadJournals());
    EXPECT_THAT(interruptedKeys(), IsEmpty());
    auto id = addUpload();
    world.settle();
    model->stop(id);
    world.settle();
    EXPECT_EQ(stateOf(id), "stopped");
    EXPECT_TRUE(journals.loadJournal("row-1"));
}

TEST_F(ResumeTest, suspendingLeavesWhatCanBeGoneOnWith)
{
    for (const auto* row : {"row-1", "row-2", "row-3"})
        journal(row);
    uploads.ends = {platformSays(503)};
    auto retrying = addUpload("row-1");
    runUntilState(retrying, "retrying: The platform says 503.");
    auto running = addUpload("row-2");
    auto stopped = addUpload("row-3");
    world.settle();
    client.latency = 5s;
    model->stop(stopped);
    world.settle();
    QList<QUuid> ended;
    QObject::connect(&*model, &Transfers::itemEnded, [&](const QUuid& id) { ended.append(id); });
    auto before = elapsed();
    world.run(model->suspend());
    EXPECT_THAT(ended, UnorderedElementsAre(retrying, running, stopped));
    EXPECT_EQ(elapsed() - before, 0.5) << "the platform is slow to hear of the one that the user has stopped";
    EXPECT_THAT(asked(), SizeIs(1)) << "it hears of no other";
    for (const auto* row : {"row-1", "row-2", "row-3"})
        EXPECT_TRUE(journals.loadJournal(row)) << row;
    EXPECT_EQ(stateOf(running), "running");
    world.run(model->suspend());
}

} // namespace
} // namespace palvera
