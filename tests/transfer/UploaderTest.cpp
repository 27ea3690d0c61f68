#include "UploadHarness.h"

#include "files/Bookmark.h"
#include "transfer/UploadNote.h"

namespace palvera {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using Kind = local::Fault::Kind;
using Operation = local::Operation;

constexpr qint64 partSize = Delivery::partSize;

Journal journalOf(const Delivery& delivery)
{
    return delivery.journals.loadJournal(pictureMaster.deliverableId).value_or(Journal{});
}

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
        const auto parts = int((size + partSize - 1) / partSize);
        EXPECT_EQ(life.network.mostInFlight(Operation::put), std::min(parts, 8));
        QFile log(delivery.disk.filePath("Logs/Palvera/transfers.log"));
        EXPECT_TRUE(log.open(QIODevice::ReadOnly));
        EXPECT_EQ(log.readAll().count('\n'), parts + 2) << "a start line, the parts, a done line";
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
        ASSERT_EQ(reports.size(), target.asBin() ? 0u : 2u);
        EXPECT_EQ(life.count(Operation::asset), target.asBin() ? 0u : 1u);
        if (target.asBin())
            EXPECT_EQ(delivery.upload()["object"], "Masters/Reel 1/Der Föhn 100% (v2).mov");
        else
            EXPECT_EQ(reports[1].at - reports[0].at, 2200ms) << "two seconds after the answer";
    }
}

TEST(UploaderTest, goesOnFromTheJournalWithThePartsItLacks)
{
    Delivery delivery(4 * partSize + 1);
    {
        Life first(delivery);
        for (int part : {2, 4})
            delivery.fail(Operation::put, {.kind = Kind::stallMidBody, .bytes = 10}, 1, 0, part);
        first.world.start(first.sending());
        first.world.runUntil([&] { return first.count(Operation::put) == 1; });
        EXPECT_EQ(journalOf(delivery).partCount, 5) << "the journal is on the disk before the first part leaves";
        first.world.runUntil([&] { return journalOf(delivery).done.size() == 3; });
    }
    delivery.platform.faults().clear();
    Life second(delivery);
    second.deliver();
    EXPECT_EQ(second.progress.front().sent, 3 * partSize);
    EXPECT_THAT(second.partsSent(), ElementsAre(2, 4));
    EXPECT_EQ(second.count(Operation::start), 0u);
}

TEST(UploaderTest, aFileThatChangedSinceTheJournalStartsAfresh)
{
    Delivery delivery;
    delivery.fail(Operation::complete, {.kind = Kind::status, .status = 500});
    EXPECT_EQ(Life(delivery).send(), "The platform is having trouble.");
    ASSERT_EQ(journalOf(delivery).done.size(), 5u);
    delivery.write(3 * partSize, 7);
    Life second(delivery);
    second.deliver();
    EXPECT_EQ(second.count(Operation::start), 1u);
}

TEST(UploaderTest, aPartIsTriedEightTimesEachAtAFreshAddressAndTheOthersAreStillSent)
{
    Delivery delivery(12 * partSize);
    delivery.fail(Operation::put, {.kind = Kind::status, .status = 503}, 8, 0, 3);
    {
        Life life(delivery);
        EXPECT_EQ(life.send(), "Storage answered 503 on a part.");
        EXPECT_EQ(journalOf(delivery).done.size(), 11u);
        EXPECT_EQ(life.count(Operation::complete), 0u);
        auto tries = life.network.seen(Operation::put);
        std::erase_if(tries, [](const auto& put) { return put.part != 3; });
        std::vector<double> waits; // and the signing before each try, which takes hundredths
        for (std::size_t i = 1; i < tries.size(); ++i)
            waits.push_back(std::round(10 * secondsBetween(tries[i - 1].ended, tries[i].at)) / 10);
        EXPECT_THAT(waits, ElementsAre(1, 2, 4, 8, 16, 30, 30));
        EXPECT_EQ(std::ranges::count_if(life.network.seen(Operation::parts),
                                        [](const auto& signing) { return signing.body.contains("\"from\":3,"); }),
                  8);
    }
    Life again(delivery);
    again.deliver();
    EXPECT_THAT(again.partsSent(), ElementsAre(3));
}

TEST(UploaderTest, anAnswerThatIsNoSuccessSettlesNoPartThoughItHasATag)
{
    Delivery delivery(1);
    Life life(delivery);
    life.storageStatus = 302;
    EXPECT_EQ(life.send(), "Storage answered 302 on a part.");
    EXPECT_THAT(journalOf(delivery).done, IsEmpty());
}

struct Failing {
    const char* name;
    Operation operation;
    local::Fault fault;
    const char* message = ""; ///< in which an upload ends that meets it again and again
};
void PrintTo(const Failing& trouble, std::ostream* out)
{
    *out << trouble.name;
}

local::Fault status(int number)
{
    return {.kind = Kind::status, .status = number};
}
local::Fault answering(const QJsonObject& members)
{
    return {.kind = Kind::overwrite, .members = members};
}

const local::Fault unsignedPart{.kind = Kind::unsignedPart, .part = 2};
const local::Fault stall{.kind = Kind::stallMidBody, .bytes = 5};
const local::Fault noAddress =
    answering({{"urls", QJsonArray{QJsonObject{{"partNumber", 1}, {"url", "not an address"}}}}});
const local::Fault tooFewParts = answering({{"partCount", 4}});

struct PassingTrouble : testing::TestWithParam<Failing> {};

TEST_P(PassingTrouble, endsInAFiledFileAllTheSame)
{
    Delivery delivery;
    delivery.fail(GetParam().operation, GetParam().fault, 3, 1);
    Life(delivery).deliver();
}

INSTANTIATE_TEST_SUITE_P(Uploader, PassingTrouble,
                         testing::ValuesIn(std::vector<Failing>{
                             {"resetAtOnce", Operation::put, {.kind = Kind::resetBeforeReading}},
                             {"resetMidBody", Operation::put, {.kind = Kind::resetMidBody, .bytes = 33'333}},
                             {"stallMidBody", Operation::put, {.kind = Kind::stallMidBody, .bytes = 50'000}},
                             {"stallBeforeAnswer", Operation::put, {.kind = Kind::stallAfterBody}},
                             {"answerLost", Operation::put, {.kind = Kind::loseAnswer}},
                             {"expired", Operation::put, {.kind = Kind::expired}},
                             {"noTag", Operation::put, {.kind = Kind::noTag}},
                             {"lowerCaseTag", Operation::put, {.kind = Kind::lowerCaseTag}},
                             {"bareTag", Operation::put, {.kind = Kind::bareTag}},
                             {"slowAnswer", Operation::put, {.latency = 40s}},
                             {"unsignedPart", Operation::parts, unsignedPart},
                             {"signingFails", Operation::parts, status(500)},
                             {"signingIsHtml", Operation::parts, {.kind = Kind::html}},
                             {"signingIsLost", Operation::parts, {.kind = Kind::loseAnswer}},
                         }),
                         testing::PrintToStringParamName());

struct LastingTrouble : testing::TestWithParam<Failing> {};

TEST_P(LastingTrouble, endsInItsOwnMessageAndAJournalToGoOnFrom)
{
    Delivery delivery;
    const auto& [name, operation, fault, message] = GetParam();
    delivery.fail(operation, fault, 0);
    {
        Life life(delivery);
        EXPECT_EQ(life.send(), message);
        EXPECT_TRUE(life.count(Operation::put) == 0 || !journalOf(delivery).key.isEmpty());
        EXPECT_FALSE(life.isAnythingInFlight());
    }
    delivery.platform.faults().clear();
    Life(delivery).deliver();
}

INSTANTIATE_TEST_SUITE_P(
    Uploader, LastingTrouble,
    testing::ValuesIn(std::vector<Failing>{
        {"refused", Operation::put, status(403), "Storage answered 403 on a part."},
        {"stalled", Operation::put, stall, "The connection stopped moving for 20 seconds."},
        {"noTag", Operation::put, {.kind = Kind::noTag}, "The storage service returned no ETag."},
        {"cut", Operation::put, {.kind = Kind::resetMidBody, .bytes = 5}, "The connection was cut."},
        {"noAddress", Operation::parts, noAddress, "The upload failed."},
        {"unsigned", Operation::parts, unsignedPart, "The platform did not sign part 2."},
        {"noStart", Operation::start, status(500), "The platform is having trouble."},
        {"noCompletion", Operation::complete, status(503), "The platform is having trouble."},
        {"completionRefused", Operation::complete, status(409), "The platform is having trouble."},
        {"notFiled", Operation::asset, status(400), "The platform is having trouble."},
        {"tooFewParts", Operation::start, tooFewParts,
         "The platform cut the file into parts that do not add up to it."},
    }),
    testing::PrintToStringParamName());

TEST(UploaderTest, nothingIsSentForWhatIsNoFileWithBytes)
{
    Delivery delivery;
    Life life(delivery);
    delivery.write(0, 0);
    EXPECT_EQ(life.send(), "That file is empty.");
    QFile::remove(delivery.path());
    EXPECT_EQ(life.send(), "“Der Föhn 100% (v2).mov” is no longer in " + delivery.disk.path().toStdString() + ".");
    QDir().mkpath(delivery.path());
    EXPECT_THAT(life.send(), testing::HasSubstr("is a folder"));
    EXPECT_THAT(life.network.seen(), IsEmpty());
}

/// Another program that sends the master, or something else, to the picture master's row.
struct Elsewhere {
    LockFile lock;

    explicit Elsewhere(const Delivery& delivery) : lock(delivery.journals.lockOf(pictureMaster.deliverableId))
    {
        EXPECT_EQ(lock.tryLock(), LockFile::Outcome::taken);
    }
    void say(const QString& path, bool isDone = false) const
    {
        const UploadSubject subject{path, identityOf(path).value(), pictureMaster, "http://platform.test/api/"};
        lock.setNote(encodeNote({.subject = subject, .isDone = isDone}));
    }
};

TEST(UploaderTest, aFileThatIsBeingSentAlreadyIsWaitedForAndAnotherIsRefused)
{
    for (bool isDone : {true, false}) {
        Delivery delivery;
        Life life(delivery);
        std::optional<Elsewhere> other(delivery);
        other->say(delivery.disk.filePath("."));
        EXPECT_EQ(life.send(), "“.” is on its way there already.");
        other->say(delivery.path());
        life.ended.reset();
        life.world.start(life.sending());
        life.world.run(life.world.clock.sleep(60s));
        EXPECT_THAT(life.remarks, ElementsAre("This file is being sent already. Waiting for that."));
        EXPECT_THAT(life.network.seen(), IsEmpty());
        if (isDone)
            other->say(delivery.path(), true);
        other.reset();
        life.world.runUntil([&] { return life.ended.has_value(); });
        EXPECT_EQ(*life.ended, "");
        EXPECT_EQ(life.network.seen().empty(), isDone) << "nothing is sent twice";
        EXPECT_EQ(life.remarks.size(), isDone ? 1u : 2u);
        EXPECT_EQ(life.remarks.back().isEmpty(), !isDone) << "it waits no more";
    }
}

TEST(UploaderTest, whereNeitherLockNorJournalCanBeWrittenTheUploadGoesOnAndSaysSoOnce)
{
    Delivery delivery;
    QFile inTheWay(delivery.disk.filePath("Palvera"));
    ASSERT_TRUE(QDir(delivery.disk.filePath("Palvera")).removeRecursively() && inTheWay.open(QIODevice::WriteOnly));
    Life life(delivery);
    EXPECT_EQ(life.send(), "");
    expectDelivered(delivery);
    ASSERT_EQ(life.remarks.size(), 1u);
    EXPECT_THAT(life.remarks.front().toStdString(), testing::HasSubstr("cannot be kept"));
}

TEST(UploaderTest, aFileThatChangesWhileItIsSentIsNeverCompletedAndItsUploadGivenUp)
{
    for (qint64 newSize : {150'000LL, 40 * partSize}) {
        Delivery delivery(40 * partSize);
        delivery.fail(Operation::put, {.latency = 500ms}, 7, 1); // the first lane takes the ninth part well before
        {
            Life life(delivery);
            life.world.start(life.sending());
            life.world.runUntil([&] { return life.count(Operation::put) == 8; });
            life.world.settle();
            delivery.write(newSize, 9);
            life.world.runUntil([&] { return life.ended.has_value(); });
            EXPECT_EQ(*life.ended, "The file changed while it was being sent, so it was not delivered. Send it again.");
            EXPECT_EQ(life.count(Operation::put), 8u) << "no lane goes on with another part";
            EXPECT_EQ(life.count(Operation::complete), 0u);
            EXPECT_EQ(delivery.upload()["phase"], "aborted");
            EXPECT_EQ(journalOf(delivery), Journal{});
        }
        Life(delivery).deliver();
    }
}

TEST(UploaderTest, whateverBecomesOfItsNameAFileIsSentToItsEnd)
{
    for (bool removed : {true, false}) {
        Delivery delivery(20 * partSize);
        Life life(delivery);
        life.world.start(life.sending());
        life.world.runUntil([&] { return life.count(Operation::put) == 8; });
        EXPECT_TRUE(removed ? QFile::remove(delivery.path()) : QFile::rename(delivery.path(), delivery.path() + "x"));
        QFile another(delivery.path());
        ASSERT_TRUE(another.open(QIODevice::WriteOnly) && another.resize(7));
        life.world.runUntil([&] { return life.ended.has_value(); });
        EXPECT_EQ(*life.ended, "");
        expectDelivered(delivery);
    }
}

/// Ends with every part confirmed, and no completion.
void cutOff(Delivery& delivery)
{
    Life life(delivery);
    delivery.fail(Operation::complete, status(503));
    EXPECT_EQ(life.send(), "The platform is having trouble.");
}

TEST(UploaderTest, anotherFileForTheSamePlaceStartsAfreshAndTheFirstIsKeptAndGoneOnWithLater)
{
    Delivery delivery;
    cutOff(delivery);
    const auto first = journalOf(delivery).uploadId;
    ASSERT_TRUE(QFile::rename(delivery.path(), delivery.disk.filePath("L.wav")));
    ASSERT_TRUE(QFile::copy(delivery.disk.filePath("L.wav"), delivery.path()));
    QFile stem(delivery.path()); // as the stems of one export: of one length and one moment
    ASSERT_TRUE(stem.open(QIODevice::ReadWrite));
    const auto changed = QFileInfo(delivery.disk.filePath("L.wav")).lastModified();
    ASSERT_TRUE(stem.setFileTime(changed, QFileDevice::FileModificationTime));
    auto aside = delivery.journals.loadJournal(pictureMaster.deliverableId).value();
    aside.filePath = delivery.disk.filePath("L.wav");
    aside.bookmark = bookmark::make(aside.filePath);
    delivery.journals.saveJournal(aside);

    delivery.fail(Operation::complete, status(503));
    Life second(delivery);
    EXPECT_EQ(second.send(), "The platform is having trouble.");
    EXPECT_THAT(second.remarks, ElementsAre("The upload of “Der Föhn 100% (v2).mov” that was cut off here is kept."));
    EXPECT_EQ(second.count(Operation::start), 1u);
    EXPECT_EQ(delivery.journals.loadJournal("salt-row-1~2").value().uploadId, first);

    ASSERT_TRUE(QFile::remove(delivery.path()) && QFile::rename(aside.filePath, delivery.path()));
    Life third(delivery);
    EXPECT_EQ(third.send(), "");
    EXPECT_EQ(third.count(Operation::put), 0u) << "the first upload has every part";
}

TEST(UploaderTest, nothingElseIsSentInThePlaceOfAFileThatIsGone)
{
    Delivery delivery;
    cutOff(delivery);
    const auto kept = journalOf(delivery);
    ASSERT_TRUE(QFile::remove(delivery.path()));
    QFile notes(delivery.disk.filePath("Private notes.txt")); // often under the inode number of what was removed
    ASSERT_TRUE(notes.open(QIODevice::WriteOnly) && notes.resize(kept.byteSize));
    Life life(delivery);
    EXPECT_THAT(life.send(), testing::HasSubstr("is no longer in"));
    EXPECT_THAT(life.network.seen(), IsEmpty());
    EXPECT_EQ(journalOf(delivery), kept);
}

TEST(UploaderTest, aPartThatCrawlsIsSentAnewByALaneThatHasNothingToDo)
{
    Delivery delivery(64 * partSize);
    delivery.fail(Operation::put, {.bytesPerSecond = 500}, 1, 0, 5);
    Life life(delivery);
    life.network.conditions.bytesPerSecond = 5e4; // two seconds a part
    EXPECT_EQ(life.send(), "");
    expectDelivered(delivery);
    EXPECT_EQ(delivery.timesStored(5), 1);
    EXPECT_LT(secondsBetween({}, Clock::Moment(life.world.clock.elapsed())), 16 * 1.35);
}

TEST(UploaderTest, aLineThatKeepsBreakingIsGotThroughWithFewerPartsAtOnce)
{
    Delivery delivery(16 * partSize);
    Life life(delivery);
    life.network.conditions.sharedBytesPerSecond = partSize / 0.75; // six seconds a part over eight lanes
    life.network.conditions.breaksEvery = 4s;
    EXPECT_EQ(life.send(), "");
    expectDelivered(delivery);
}

TEST(UploaderTest, aStopCutsEverythingOffAtOnceAndKeepsWhatWasConfirmed)
{
    for (bool byCaller : {false, true}) {
        Delivery delivery(40 * partSize);
        {
            Life life(delivery);
            life.network.conditions.bytesPerSecond = 1e5; // a second a part
            if (byCaller) {
                life.world.run(firstOf(life.sending(), life.world.clock.sleep(1500ms)));
            } else {
                life.stopAfter(1500ms);
                life.send();
            }
            EXPECT_EQ(*life.ended, "cancelled");
            EXPECT_EQ(life.world.clock.elapsed(), 1500ms);
            EXPECT_FALSE(life.isAnythingInFlight());
            EXPECT_EQ(journalOf(delivery).done.size(), 8u);
        }
        Life(delivery).deliver();
        for (int part = 1; part <= 8; ++part)
            EXPECT_EQ(delivery.timesStored(part), 1) << part;
    }
}

TEST(UploaderTest, aStopDuringABackOffOrACompletionIsNotWaitedOut)
{
    for (auto [operation, kind] :
         {std::pair(Operation::put, Kind::status), std::pair(Operation::complete, Kind::stallAfterBody)}) {
        Delivery delivery(2 * partSize);
        delivery.fail(operation, {.kind = kind}, 0);
        Life life(delivery);
        life.stopAfter(20s);
        EXPECT_EQ(life.send(), "cancelled");
        EXPECT_EQ(life.world.clock.elapsed(), 20s);
    }
}

TEST(UploaderTest, theQuestionOfThePlatformComesThroughAndCanBeAnswered)
{
    Delivery delivery;
    delivery.fail(Operation::start,
                  {.kind = Kind::status, .status = 409, .error = "delivery_doubt", .message = "Check the length."});
    Life life(delivery);
    EXPECT_EQ(life.send(), "Check the length.");
    life.deliver(pictureMaster, true);
    auto starts = life.network.seen(Operation::start);
    EXPECT_FALSE(starts[0].body.contains("confirmed"));
    EXPECT_TRUE(starts[1].body.contains("\"confirmed\":true"));
}

TEST(UploaderTest, aCompletionOrFilingWhoseAnswerWasLostIsRecognised)
{
    for (const auto& [operation, target] :
         std::vector<std::pair<Operation, TransferTarget>>{{Operation::complete, pictureMaster},
                                                           {Operation::complete, binFolder},
                                                           {Operation::asset, pictureMaster}}) {
        Delivery delivery;
        delivery.fail(operation, {.kind = Kind::loseAnswer});
        EXPECT_EQ(Life(delivery).send(target), "The connection was cut.");
        Life again(delivery);
        again.deliver(target);
        EXPECT_THAT(again.partsSent(), IsEmpty());
    }
}

TEST(UploaderTest, anUploadThatThePlatformForgotIsSentAfreshAndNotCalledDone)
{
    const local::Fault forgotten{.kind = Kind::status, .status = 404, .message = "No such upload."};
    for (const auto& target : bothTargets) {
        Delivery delivery;
        delivery.fail(Operation::complete, status(500));
        EXPECT_EQ(Life(delivery).send(target), "The platform is having trouble.");
        delivery.fail(Operation::complete, forgotten);
        delivery.fail(Operation::asset, forgotten);
        const auto object = delivery.upload()["object"].toString();
        QJsonArray others{QJsonObject{{"key", object}, {"size", delivery.content().size() - 1}},
                          QJsonObject{{"key", "2. " + object}, {"size", delivery.content().size()}}};
        delivery.fail(Operation::bin, answering({{"objects", others}}));
        Life again(delivery);
        EXPECT_EQ(again.send(target), "");
        EXPECT_THAT(again.remarks,
                    ElementsAre("The platform does not know this upload any more: it is sent from its start."));
        EXPECT_EQ(again.count(Operation::put), 5u);
        expectDelivered(delivery, !target.asBin());
    }
    Delivery delivery;
    cutOff(delivery);
    auto halfWay = journalOf(delivery);
    halfWay.done.erase(3);
    delivery.journals.saveJournal(halfWay);
    delivery.fail(Operation::parts, forgotten, 3);
    Life again(delivery);
    EXPECT_EQ(again.send(), "");
    expectDelivered(delivery);
}

TEST(UploaderTest, aCompletionThatThePlatformIsStillAtIsWaitedFor)
{
    struct Case {
        Operation operation;
        local::Fault fault;
        TransferTarget target;
    };
    for (const auto& [operation, fault, target] :
         {Case{Operation::complete, status(409), pictureMaster},
          Case{Operation::complete, {.kind = Kind::stallAfterBody}, pictureMaster},
          Case{Operation::complete, answering({{"object", "another"}}), binFolder}}) {
        Delivery delivery;
        delivery.fail(operation, fault, 3);
        delivery.fail(Operation::asset, status(409), 3);
        delivery.fail(Operation::bin, answering({{"objects", QJsonArray()}}), 3);
        Life life(delivery);
        EXPECT_EQ(life.send(target), "");
        expectDelivered(delivery, !target.asBin());
        EXPECT_TRUE(std::ranges::any_of(life.progress, [](const UploadProgress& now) {
            return now.trouble && now.trouble->reason == "Finishing on the platform.";
        }));
    }
}

} // namespace
} // namespace palvera
