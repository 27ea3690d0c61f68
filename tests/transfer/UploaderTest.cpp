#include "UploadHarness.h"

#include "files/Bookmark.h"
#include "support/Json.h"
#include "transfer/UploadNote.h"

#include <random>

namespace palvera {
namespace {

TEST(UploaderTest, filesAMasterOfAnyLengthWholeOverEightLanesLowestPartFirst)
{
    for (qint64 size : {qint64(1), partSize - 1, partSize, partSize + 1, 4 * partSize, 40 * partSize}) {
        SCOPED_TRACE(size);
        Delivery delivery(size);
        Life life(delivery);
        life.deliver();
        EXPECT_EQ(life.progress.front(), (UploadProgress{.sent = 0, .total = size}));
        EXPECT_EQ(life.progress.back(), (UploadProgress{.sent = size, .total = size}));
        EXPECT_TRUE(std::ranges::is_sorted(life.progress, {}, &UploadProgress::sent));
        EXPECT_TRUE(std::ranges::is_sorted(life.partsSent()));
        const auto puts = life.network.seen(Operation::put);
        const auto parts = (size + partSize - 1) / partSize;
        EXPECT_EQ(std::ranges::count(puts, puts[0].at, &SeenRequest::at), std::min(parts, 8LL)) << "began at once";
        EXPECT_EQ(readFile(delivery.disk.filePath("Logs/Palvera/transfers.log")).count('\n'), parts + 2)
            << "a start line, the parts, a done line";
    }
}

TEST(UploaderTest, aDeliverablesUploadIsReportedEveryTwoSecondsAndFiledABinsIsNeither)
{
    for (const auto& target : bothTargets) {
        Delivery delivery(8 * partSize);
        Life life(delivery);
        life.network.conditions.bytesPerSecond = 2e4; // five seconds a part
        life.deliver(target);
        auto reports = life.network.seen(Operation::progress);
        std::string rates;
        for (const auto& progress : life.progress)
            rates += progress.bytesPerSecond ? 'r' : '-';
        EXPECT_THAT(rates, StartsWith("---rrrrrrrr--rrrrrrr"));
        EXPECT_NEAR(life.progress[18].bytesPerSecond.value(), 8 * 2e4, 2e4);
        ASSERT_EQ(reports.size(), target.asBin() ? 0u : 2u);
        EXPECT_EQ(life.count(Operation::asset), target.asBin() ? 0u : 1u);
        if (target.asBin())
            EXPECT_EQ(delivery.upload()["object"], "Masters/Reel 1/Der Föhn 100% (v2).mov");
        else
            EXPECT_EQ(jsonObject(reports[0].body)["bytesPerSecond"], life.progress[10].bytesPerSecond.value());
    }
}

TEST(UploaderTest, nothingIsSentInThePlaceOfAFileThatIsGoneAndOneThatChangedSinceTheJournalStartsAfresh)
{
    Delivery delivery;
    cutOff(delivery);
    const auto kept = delivery.journal();
    Life life(delivery);
    ASSERT_TRUE(QFile::remove(delivery.path()));
    // Often under the inode number of what was removed.
    writeFile(delivery.disk.filePath("Private notes.txt"), QByteArray(kept.byteSize, 'x'));
    EXPECT_EQ(life.send(), "“Der Föhn 100% (v2).mov” is no longer in " + delivery.disk.path().toStdString() + ".");
    delivery.write(0, 0);
    EXPECT_EQ(life.send(), "That file is empty.");
    ASSERT_TRUE(QFile::remove(delivery.path()) && QDir().mkpath(delivery.path()));
    EXPECT_THAT(life.send(), HasSubstr("is a folder"));
    EXPECT_THAT(life.network.seen(), IsEmpty());
    EXPECT_EQ(delivery.journal(), kept);
    ASSERT_TRUE(QDir().rmdir(delivery.path()) && kept.done.size() == 5);
    delivery.write(3 * partSize, 7);
    life.deliver();
    EXPECT_EQ(life.count(Operation::start), 1u);
}

TEST(UploaderTest, aFileThatChangesWhileItIsSentIsNeverCompletedAndItsUploadGivenUp)
{
    for (qint64 newSize : {150'000LL, 40 * partSize}) {
        Delivery delivery(40 * partSize);
        delivery.fail(Operation::put, {.latency = 500ms}, 7, 1); // the first lane takes the ninth part well before
        {
            Life life(delivery);
            life.begin(8);
            life.world.settle();
            delivery.write(newSize, 9);
            EXPECT_EQ(life.end(), "The file changed while it was being sent, so it was not delivered. Send it again.");
            EXPECT_EQ(life.count(Operation::put), 8u) << "no lane goes on with another part";
            EXPECT_EQ(life.count(Operation::complete), 0u);
            EXPECT_EQ(delivery.upload()["phase"], "aborted");
            EXPECT_EQ(delivery.journal(), Journal{});
        }
        Life(delivery).deliver();
    }
}

TEST(UploaderTest, whateverBecomesOfItsNameAFileIsSentToItsEnd)
{
    for (bool removed : {true, false}) {
        Delivery delivery(20 * partSize);
        Life life(delivery);
        life.begin(8);
        EXPECT_TRUE(removed ? QFile::remove(delivery.path()) : QFile::rename(delivery.path(), delivery.path() + "x"));
        writeFile(delivery.path(), "another");
        EXPECT_EQ(life.end(), "");
        expectDelivered(delivery);
    }
}

TEST(UploaderTest, aStopAmongPartsInABackOffOrInTheCompletionCutsAllOffAtOnceAndKeepsWhatWasConfirmed)
{
    const std::tuple<Operation, Kind, std::chrono::milliseconds, std::size_t> cases[] = {
        {Operation::put, Kind::none, 1500ms, 8},
        {Operation::put, Kind::status, 15s, 0},
        {Operation::complete, Kind::stallAfterBody, 15s, 40},
    };
    for (const auto& [operation, kind, moment, confirmed] : cases)
        for (bool byCaller : {false, true}) {
            Delivery delivery(40 * partSize);
            delivery.fail(operation, {.kind = kind}, 0);
            {
                Life life(delivery);
                life.network.conditions.bytesPerSecond = 1e5; // a second a part
                if (byCaller) {
                    life.world.run(firstOf(life.sending(), life.world.clock.sleep(moment)));
                } else {
                    life.world.start(life.sending());
                    life.world.run(life.world.clock.sleep(moment));
                    life.flag->stop();
                }
                EXPECT_EQ(life.end(), "cancelled");
                EXPECT_EQ(life.world.clock.elapsed(), moment);
                EXPECT_FALSE(life.isAnythingInFlight());
                EXPECT_EQ(delivery.journal().done.size(), confirmed);
            }
            delivery.platform.faults().clear();
            Life(delivery).deliver();
            for (int part = 1; part <= 40; ++part)
                EXPECT_EQ(delivery.timesStored(part), 1) << part;
        }
}

TEST(UploadClaimTest, aFileThatIsBeingSentAlreadyIsWaitedForAndAnotherIsRefused)
{
    for (bool isDone : {true, false}) {
        Delivery delivery;
        Life life(delivery);
        std::optional other(delivery.journals.lockOf(pictureMaster.deliverableId)); // that of another program
        ASSERT_EQ(other->tryLock(), LockFile::Outcome::taken);
        const auto say = [&](const QString& path, bool hasSent) {
            const UploadSubject subject{path, identityOf(path).value(), pictureMaster, "http://platform.test/api/"};
            other->setNote(encodeNote({.subject = subject, .isDone = hasSent}));
        };
        say(delivery.disk.filePath("."), false);
        EXPECT_EQ(life.send(), "“.” is on its way there already.");
        say(delivery.path(), false);
        life.world.start(life.sending());
        life.world.run(life.world.clock.sleep(60s));
        ASSERT_THAT(life.remarks, ElementsAre("This file is being sent already. Waiting for that."));
        EXPECT_THAT(life.network.seen(), IsEmpty());
        if (isDone)
            say(delivery.path(), true);
        other.reset();
        EXPECT_EQ(life.end(), "");
        EXPECT_EQ(life.network.seen().empty(), isDone) << "nothing is sent twice";
        EXPECT_EQ(life.remarks.size(), isDone ? 1u : 2u);
        EXPECT_EQ(life.remarks.back().isEmpty(), !isDone) << "it waits no more";
    }
}

TEST(UploadClaimTest, whereNeitherLockNorJournalCanBeWrittenTheUploadGoesOnAndSaysSoOnce)
{
    Delivery delivery;
    ASSERT_TRUE(QDir(delivery.disk.filePath("Palvera")).removeRecursively());
    writeFile(delivery.disk.filePath("Palvera"), "in the way");
    Life life(delivery);
    life.deliver();
    ASSERT_EQ(life.remarks.size(), 1u);
    EXPECT_THAT(life.remarks.front().toStdString(), HasSubstr("cannot be kept"));
}

TEST(UploadClaimTest, anotherFileForTheSamePlaceStartsAfreshAndTheFirstIsKeptAndGoneOnWithLater)
{
    Delivery delivery;
    cutOff(delivery);
    auto aside = delivery.journal();
    aside.filePath = delivery.disk.filePath("L.wav");
    ASSERT_TRUE(QFile::rename(delivery.path(), aside.filePath) && QFile::copy(aside.filePath, delivery.path()));
    QFile stem(delivery.path()); // as the stems of one export: of one length and one moment
    ASSERT_TRUE(stem.open(QIODevice::ReadWrite) &&
                stem.setFileTime(QFileInfo(aside.filePath).lastModified(), QFileDevice::FileModificationTime));
    aside.bookmark = bookmark::make(aside.filePath);
    delivery.journals.saveJournal(aside);

    delivery.fail(Operation::complete, status(503));
    Life second(delivery);
    EXPECT_EQ(second.send(), "The platform is having trouble.");
    EXPECT_THAT(second.remarks, ElementsAre("The upload of “Der Föhn 100% (v2).mov” that was cut off here is kept."));
    EXPECT_EQ(second.count(Operation::start), 1u);
    EXPECT_EQ(delivery.journals.loadJournal("salt-row-1~2").value().uploadId, aside.uploadId);

    ASSERT_TRUE(QFile::remove(delivery.path()) && QFile::rename(aside.filePath, delivery.path()));
    Life third(delivery);
    EXPECT_EQ(third.send(), "");
    EXPECT_EQ(third.count(Operation::put), 0u) << "the first upload has every part";
}

TEST(CompletionTest, orFilingWhoseAnswerWasLostIsRecognised)
{
    const local::Fault fault{.kind = Kind::loseAnswer};
    const std::pair<Operation, TransferTarget> cases[] = {
        {Operation::complete, pictureMaster}, {Operation::complete, binFolder}, {Operation::asset, pictureMaster}};
    for (const auto& [operation, target] : cases) {
        Delivery once;
        once.fail(operation, fault);
        Life(once).deliver(target);
        Delivery delivery;
        for (auto each : {operation, Operation::asset, Operation::bin})
            delivery.fail(each, fault, 0);
        {
            Life life(delivery);
            EXPECT_EQ(life.send(target), "The connection was cut.");
            EXPECT_LT(life.world.clock.elapsed(), 10s);
        }
        delivery.platform.faults().clear();
        Life again(delivery);
        again.deliver(target);
        EXPECT_THAT(again.partsSent(), IsEmpty());
    }
}

TEST(CompletionTest, ofAnUploadThatThePlatformForgotIsSentAfreshAndNotCalledDone)
{
    const local::Fault forgotten{.kind = Kind::status, .status = 404, .message = "No such upload."};
    for (const auto& target : bothTargets) {
        Delivery delivery;
        cutOff(delivery, target);
        delivery.fail(Operation::complete, forgotten);
        delivery.fail(Operation::asset, forgotten);
        const auto object = delivery.upload()["object"].toString();
        QJsonArray others{QJsonObject{{"key", object}, {"size", delivery.content().size() - 1}},
                          QJsonObject{{"key", "2. " + object}, {"size", delivery.content().size()}}};
        delivery.fail(Operation::bin, answering({{"objects", others}}));
        Life again(delivery);
        again.deliver(target);
        EXPECT_THAT(again.remarks, ElementsAre("The platform does not know this upload any more: "
                                               "it is sent from its start."));
        EXPECT_EQ(again.count(Operation::put), 5u);
    }
    Delivery delivery;
    cutOff(delivery);
    auto halfWay = delivery.journal();
    halfWay.done.erase(3);
    delivery.journals.saveJournal(halfWay);
    delivery.fail(Operation::parts, forgotten, 3);
    Life(delivery).deliver();
}

TEST(CompletionTest, thatThePlatformIsStillAtIsWaitedFor)
{
    const std::tuple<Operation, local::Fault, TransferTarget> cases[] = {
        {Operation::complete, status(409), pictureMaster},
        {Operation::complete, {.kind = Kind::stallAfterBody}, pictureMaster},
        {Operation::complete, answering({{"object", "another"}}), binFolder}};
    for (const auto& [operation, fault, target] : cases) {
        Delivery delivery;
        delivery.fail(operation, fault, 3);
        delivery.fail(Operation::asset, status(409), 3);
        delivery.fail(Operation::bin, answering({{"objects", QJsonArray()}}), 3);
        Life life(delivery);
        life.deliver(target);
        EXPECT_TRUE(std::ranges::any_of(life.progress, [](const UploadProgress& now) {
            return now.trouble && now.trouble->reason == "Finishing on the platform.";
        }));
    }
}

/// What has happened so far that a crash might come right after: requests begun and ended, and journal writes.
QByteArray stateOf(const Life& life)
{
    const auto& seen = life.network.seen();
    const auto inFlight = std::ranges::count(seen, true, &SeenRequest::inFlight);
    auto state = QByteArray::number(seen.size()) + ' ' + QByteArray::number(inFlight);
    for (const auto& journal : life.delivery.journals.loadJournals())
        state += encodeJournal(journal);
    return state;
}

/// Runs an upload and kills it right after its step number `steps` (from 1). False when it ended before that.
bool killAfter(Life& life, const TransferTarget& target, int steps)
{
    life.world.start(life.sending(target));
    auto last = stateOf(life);
    life.world.runUntil([&] {
        auto now = stateOf(life);
        if (now == last)
            return life.ended.has_value();
        last = now;
        return --steps == 0 || life.ended;
    });
    return !life.ended;
}

TEST(KillTest, atEveryStepLosesNothingThatWasRecorded)
{
    for (const auto& target : bothTargets) {
        int step = 1;
        for (;; ++step) {
            SCOPED_TRACE(step);
            Delivery delivery(12 * partSize + 1);
            std::vector<Journal> journals;
            {
                Life life(delivery);
                if (!killAfter(life, target, step))
                    break;
                journals = delivery.journals.loadJournals();
                EXPECT_TRUE(!journals.empty() || life.count(Operation::put) == 0 ||
                            delivery.upload()["phase"] == "complete")
                    << "a part left before the journal was on the disk";
            }
            std::map<int, int> recorded; // and how often each was stored
            for (const auto& journal : journals)
                for (const auto& [part, etag] : journal.done)
                    recorded[part] = delivery.timesStored(part);
            Life again(delivery);
            again.deliver(target);
            EXPECT_EQ(again.count(Operation::start) + again.count(Operation::binStart), journals.empty() ? 1u : 0u);
            for (auto [part, times] : recorded)
                EXPECT_EQ(delivery.timesStored(part), times) << "part " << part << " was recorded and sent again";
        }
        EXPECT_GT(step, 25) << "far fewer steps than an upload of thirteen parts has";
    }
}

TEST(KillTest, againAndAgainAmidTroubleEndsInTheSameBytes)
{
    for (unsigned seed = 1; seed <= 15; ++seed) {
        SCOPED_TRACE(seed);
        std::minstd_rand chance(seed);
        Delivery delivery(20 * partSize + 1);
        for (auto kind : {Kind::resetMidBody, Kind::loseAnswer, Kind::stallMidBody, Kind::status, Kind::noTag})
            delivery.platform.faults().add({.operation = Operation::put,
                                            .times = 0,
                                            .chance = 0.06,
                                            .seed = seed,
                                            .fault = {.kind = kind, .bytes = 777}});
        for (auto operation : {Operation::complete, Operation::asset, Operation::parts})
            delivery.fail(operation, {.kind = Kind::loseAnswer});
        std::string result = "killed";
        for (int life = 0; life < 30 && !result.empty(); ++life) {
            Life next(delivery);
            if (life % 3 != 2)
                killAfter(next, pictureMaster, int(chance() % 40) + 1);
            else
                result = next.send();
        }
        EXPECT_EQ(result, "");
        expectDelivered(delivery);
    }
}

} // namespace
} // namespace palvera
