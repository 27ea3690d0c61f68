#include "TransfersHarness.h"

#include "files/Bookmark.h"
#include "transfer/ResumeRules.h"
#include "transfer/UploadFailures.h"

#include <QFile>
#include <QFileInfo>

namespace palvera {
namespace {

using testing::SizeIs;
using testing::UnorderedElementsAre;

using ResumeTest = TransfersTest;

TEST_F(ResumeTest, listsWhatAnEarlierRunLeftAndGoesOnWithItOnceUnderWhateverName)
{
    auto intoBin = journal("bin-1");
    intoBin.target = TransferTarget::Bin{.orgId = "org", .folder = "Reel/"};
    journals.saveJournal(intoBin);
    auto toRow = journal();
    intoBin.bookmark = toRow.bookmark = bookmark::make(toRow.filePath);
    QDir(disk.path()).rename("master.mov", "final.mov");
    makeModel({});
    EXPECT_THAT(interruptedKeys(), UnorderedElementsAre("bin-1", "row-1"));
    EXPECT_THAT(uploads.requests, IsEmpty()) << "nothing is resumed by itself";
    int announced = 0;
    QObject::connect(&model->interrupted(), &Interrupted::changed, [&] { ++announced; });
    for (const auto& [left, label] : {std::pair(intoBin, "Assets"), std::pair(toRow, "master.mov")}) {
        auto id = model->resume(left);
        ASSERT_TRUE(id);
        EXPECT_FALSE(interruptedKeys().contains(left.key));
        EXPECT_EQ(model->resume(left), std::nullopt);
        EXPECT_EQ(model->find(*id)->label, label);
        world.settle();
        EXPECT_EQ(uploads.requests.back().target, left.destination());
        EXPECT_EQ(uploads.requests.back().key, left.key);
        EXPECT_EQ(uploads.requests.back().file, left.filePath) << "under which nothing else may be sent afresh";
        EXPECT_EQ(uploads.requests.back().bookmark, left.bookmark);
        EXPECT_EQ(model->find(*id)->name, "final.mov");
    }
    EXPECT_EQ(announced, 2);
}

TEST_F(ResumeTest, whatIsRefusedOrDoubtedAgainCanBeResumedAgainAndStillBelongsToItsDeliverable)
{
    auto left = journal("row-1~2"); // which was set aside
    left.target = TransferTarget::Deliverable{"org", "salt", "row-1"};
    for (const auto& end : {platformSays(403), platformSays(409, "delivery_doubt"), platformSays(403)}) {
        SCOPED_TRACE(describe(end).toStdString());
        uploads.ends = {end};
        auto id = model->resume(left);
        ASSERT_TRUE(id);
        EXPECT_THAT(interruptedKeys(), IsEmpty());
        world.runUntil([&] { return stateOf(*id) != "running"; });
        world.settle();
        EXPECT_EQ(interruptedKeys(), QStringList("row-1~2"));
    }
    model->confirmDoubt();
    world.settle();
    EXPECT_EQ(uploads.requests.back().target, *left.target);
    EXPECT_TRUE(uploads.requests.back().confirmed);
}

TEST_F(ResumeTest, aStopDoesNotDiscardWhatAnotherProcessHasGoneOnWith)
{
    journal();
    auto other = journals.lockOf("row-1");
    ASSERT_EQ(other.tryLock(), LockFile::Outcome::taken);
    world.run(model->interrupted().load());
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

TEST_F(ResumeTest, whatHasNotBegunYetIsNotForgotten)
{
    uploads.ends = {nullptr, platformSays(403)};
    QList<QUuid> ids;
    for (int i = 1; i <= 9; ++i)
        ids.append(addUpload(QString("row-%1").arg(i)));
    runUntilState(ids[1], "failed: The platform says 403.");
    model->stop(ids[8]);
    world.settle();
    EXPECT_EQ(statesOf(ids), "done failed running running running waiting waiting waiting stopped");
    journal("row-3"); // as its engine keeps it
    model->pause(ids[6]);
    world.run(model->suspend());
    const auto listed = [&] {
        makeModel({});
        QStringList keys;
        for (const auto& upload : model->interrupted().uploads())
            keys.append(upload.journal.key + (upload.isBegun ? " begun" : ""));
        keys.sort();
        return keys.join(' ').toStdString();
    };
    EXPECT_EQ(listed(), "row-3 begun row-4 row-5 row-6 row-7 row-8");
    auto& list = model->interrupted();
    const auto known = *list.findUpload("row-8");
    EXPECT_EQ(known.journal.label, "Picture");
    world.run(list.discardUpload("row-5"));
    const auto moved = disk.filePath("elsewhere.mov");
    QFile::rename(known.journal.filePath, moved);
    EXPECT_TRUE(world.run(list.isSource("row-4", moved)));
    EXPECT_TRUE(world.run(list.moveSource("row-4", moved)));
    uploads.ends = {nullptr};
    runUntilState(*model->resume(list.findUpload("row-4")->journal), "done");
    EXPECT_EQ(uploads.requests.back().file, moved);
    EXPECT_EQ(listed(), "row-3 begun row-6 row-7 row-8");
    account = {{.service = "https://platform.test/api/", .userId = "another"}};
    EXPECT_EQ(listed(), "row-3 begun") << "of which nobody knows whose it is";
}

TEST_F(ResumeTest, signingOutCutsOffAndEmptiesEverythingAndOnlyTheSameUserFindsItAgain)
{
    uploads.ends = {platformSays(403), platformSays(409, "delivery_doubt")};
    runUntilState(addUpload("row-1"), "failed: The platform says 403.");
    addUpload("row-2");
    world.runUntil([&] { return model->doubt().has_value(); });
    auto id = model->addUpload({.file = file("master.mov"),
                                .orgId = "org",
                                .projectId = "salt",
                                .deliverable = {.id = "row-3", .label = "Picture master"},
                                .client = "Northlight"});
    world.settle();
    auto theirs = journal("row-3"), anothers = journal("row-4"), nobodys = journal("row-5");
    theirs.account = uploads.requests.back().account;
    theirs.label = uploads.requests.back().label;
    theirs.client = uploads.requests.back().client;
    anothers.account = "another";
    journals.saveJournal(theirs);
    journals.saveJournal(anothers);
    model->setPanelOpen(true);
    model->followAccount();
    const auto told = asked();

    model->cutOff();
    const auto user = std::exchange(account, std::nullopt);
    model->followAccount();
    world.settle();
    EXPECT_THAT(model->items(), IsEmpty());
    EXPECT_FALSE(model->isPanelOpen());
    EXPECT_FALSE(model->doubt());
    EXPECT_EQ(model->interrupted().count(), 0) << "nobody is there to see it";
    EXPECT_EQ(asked(), told) << "the platform hears nothing of it";

    account = Account{.service = user->service, .userId = "another"};
    model->followAccount();
    EXPECT_THAT(interruptedKeys(), UnorderedElementsAre("row-4", "row-5"));
    addUpload("row-6");
    account = user; // a browser may have signed in somebody else
    model->followAccount();
    world.settle();
    EXPECT_THAT(model->items(), IsEmpty());
    EXPECT_THAT(interruptedKeys(), UnorderedElementsAre("row-3", "row-5"));
    id = model->resume(*journals.loadJournal("row-3")).value();
    EXPECT_EQ(model->find(id)->label, "Picture master");
    EXPECT_EQ(model->find(id)->client, "Northlight");
    account.reset(); // the sign-in expires
    model->followAccount();
    account = user;
    model->followAccount();
    EXPECT_EQ(model->inFlightCount(), 1);
    model->cutOff();
    world.settle();
    EXPECT_THAT(interruptedKeys(), UnorderedElementsAre("row-3", "row-5"));
}

TEST_F(ResumeTest, aSourceThatIsGoneIsFoundElsewhereByItsSizeAndTimeAlone)
{
    auto left = journal();
    left.fileStamp = fileStamp(*identityOf(left.filePath));
    left.bookmark = bookmark::make(left.filePath);
    left.byteSize = 4;
    left.partSize = 2;
    left.label = "Picture master";
    journals.saveJournal(left);
    auto& list = model->interrupted();
    const auto isGone = [&] {
        world.run(list.load());
        return list.findUpload("row-1")->isSourceGone;
    };
    EXPECT_FALSE(isGone());
    QDir().mkpath(disk.filePath("elsewhere"));
    const auto copy = disk.filePath("elsewhere/copy.mov"), other = file("other.mov");
    QFile::copy(left.filePath, copy); // to another disk
    QFile copied(copy);
    ASSERT_TRUE(copied.open(QIODevice::ReadWrite) &&
                copied.setFileTime(QFileInfo(left.filePath).lastModified(), QFile::FileModificationTime));
    copied.close();
    QFile::remove(left.filePath);
    EXPECT_TRUE(isGone());
    for (const char* content : {"FILM", "another film"}) {
        writeFile(other, content);
        QFile file(other);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite) &&
                    file.setFileTime(QDateTime::fromSecsSinceEpoch(1'000'000'000), QFile::FileModificationTime));
        EXPECT_FALSE(world.run(list.isSource("row-1", other)));
        EXPECT_FALSE(world.run(list.moveSource("row-1", other)));
    }
    EXPECT_FALSE(world.run(list.isSource("row-1", left.filePath)));
    EXPECT_TRUE(world.run(list.isSource("row-1", copy)));
    EXPECT_TRUE(world.run(list.moveSource("row-1", copy)));
    EXPECT_FALSE(isGone());
    const auto moved = *journals.loadJournal("row-1");
    EXPECT_EQ(fitOf(moved, {.path = copy, .identity = *identityOf(copy), .target = moved.destination()}),
              JournalFit::fits);

    EXPECT_TRUE(failureAs<CannotSend>(world.run(outcomeOf(model->sendInstead("row-1", disk.path()))).failure));
    EXPECT_TRUE(journals.loadJournal("row-1")) << "nothing is given up for a folder";
    world.run(model->sendInstead("row-1", other));
    world.settle();
    EXPECT_EQ(journals.loadJournal("row-1"), std::nullopt);
    EXPECT_EQ(uploads.requests.back().file, other);
    EXPECT_EQ(uploads.requests.back().target, left.destination());
    EXPECT_EQ(uploads.requests.back().label, "Picture master");
}

} // namespace
} // namespace palvera
