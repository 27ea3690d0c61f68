#include "TransfersHarness.h"

#include "files/Bookmark.h"

#include <QDir>

namespace palvera {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

struct ResumeTest : TransfersTest {
    int announced = 0;

    void restart()
    {
        makeModel({});
        announced = 0;
        QObject::connect(&*model, &Transfers::journalsChanged, [this] { ++announced; });
    }
};

TEST_F(ResumeTest, listsWhatAnEarlierRunLeftAndGoesOnWithItOnce)
{
    auto left = journal();
    restart();
    EXPECT_EQ(interruptedKeys(), QStringList("row-1"));
    EXPECT_THAT(uploads.requests, IsEmpty()) << "nothing is resumed by itself";

    auto id = model->resume(left);
    ASSERT_TRUE(id);
    EXPECT_THAT(interruptedKeys(), IsEmpty());
    EXPECT_EQ(announced, 1);
    EXPECT_EQ(model->resume(left), std::nullopt);
    EXPECT_EQ(model->find(*id)->label, "master.mov");
    EXPECT_EQ(model->find(*id)->journalKey, "row-1");
    world.settle();
    EXPECT_EQ(uploads.requests.size(), 1u);
    EXPECT_EQ(uploads.requests[0].target, left.destination());
}

TEST_F(ResumeTest, whatIsInFlightIsNotInterrupted)
{
    auto id = addUpload();
    journal();
    journal("row-2");
    world.run(model->loadJournals());
    EXPECT_EQ(interruptedKeys(), QStringList("row-2"));
    EXPECT_EQ(model->resume(*journals.loadJournal("row-1")), std::nullopt);
    uploads.ends = {};
    model->stop(id);
    EXPECT_EQ(interruptedKeys(), QStringList("row-2")) << "it is being given up";
    world.settle();
    EXPECT_EQ(interruptedKeys(), QStringList("row-2"));
}

TEST_F(ResumeTest, whatFailsAgainCanBeResumedAgain)
{
    auto left = journal();
    restart();
    for (int round = 0; round < 2; ++round) {
        SCOPED_TRACE(round);
        uploads.ends = {platformSays(403)};
        auto id = model->resume(left);
        ASSERT_TRUE(id);
        EXPECT_THAT(interruptedKeys(), IsEmpty());
        runUntilState(*id, "failed: The platform says 403.");
        world.settle();
        EXPECT_EQ(interruptedKeys(), QStringList("row-1"));
    }
}

TEST_F(ResumeTest, whatIsDoneLeavesTheList)
{
    auto left = journal();
    restart();
    uploads.ends = {nullptr};
    auto id = model->resume(left);
    journals.removeJournal("row-1"); // as the engine does
    runUntilState(*id, "done");
    world.settle();
    EXPECT_THAT(interruptedKeys(), IsEmpty());
}

TEST_F(ResumeTest, findsAFileUnderItsOtherName)
{
    auto left = journal();
    left.bookmark = bookmark::make(left.filePath);
    QDir(disk.path()).rename("master.mov", "final.mov");
    auto id = model->resume(left);
    EXPECT_EQ(model->find(*id)->name, "master.mov");
    world.settle();
    EXPECT_EQ(uploads.requests.at(0).file, disk.filePath("final.mov"));
    EXPECT_EQ(uploads.requests.at(0).bookmark, bookmark::make(disk.filePath("final.mov")));
    EXPECT_EQ(model->find(*id)->name, "final.mov");
}

TEST_F(ResumeTest, goesOnIntoTheBin)
{
    auto left = journal("bin-1");
    left.target = TransferTarget::Bin{.orgId = "org", .folder = "Reel/"};
    auto id = model->resume(left);
    ASSERT_TRUE(id);
    EXPECT_EQ(model->find(*id)->label, "Assets");
    EXPECT_EQ(model->find(*id)->titleName, std::nullopt);
    world.settle();
    EXPECT_EQ(uploads.requests.at(0).target, *left.target);
    EXPECT_EQ(uploads.requests.at(0).key, "bin-1");
}

TEST_F(ResumeTest, aStopDoesNotDiscardWhatAnotherProcessHasGoneOnWith)
{
    journal();
    auto id = addUpload();
    world.settle();
    auto other = journals.tryLock("row-1");
    ASSERT_TRUE(other);
    model->stop(id);
    world.settle();
    EXPECT_TRUE(journals.loadJournal("row-1"));
}

TEST_F(ResumeTest, suspendingLeavesWhatCanBeGoneOnWith)
{
    journal("row-1");
    journal("row-2");
    journal("row-3");
    uploads.ends = {platformSays(503)};
    auto retrying = addUpload("row-1");
    runUntilState(retrying, "retrying: The platform says 503.");
    auto running = addUpload("row-2");
    auto stopped = addUpload("row-3");
    world.settle();
    client.latency = 5s;
    model->stop(stopped);
    QList<QUuid> ended;
    QObject::connect(&*model, &Transfers::itemEnded, [&](const QUuid& id) { ended.append(id); });
    auto before = elapsed();
    world.run(model->suspend());
    EXPECT_THAT(ended, UnorderedElementsAre(retrying, running, stopped));
    EXPECT_EQ(elapsed() - before, 10) << "the abort and the report of the one that the user has stopped";
    EXPECT_THAT(asked(), SizeIs(2)) << "the platform hears of no other";
    EXPECT_TRUE(journals.loadJournal("row-1") && journals.loadJournal("row-2"));
    EXPECT_EQ(journals.loadJournal("row-3"), std::nullopt);
    EXPECT_EQ(stateOf(running), "running");
    world.run(model->suspend());
}

} // namespace
} // namespace palvera
