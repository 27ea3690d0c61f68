#include "UploadHarness.h"

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
            EXPECT_EQ(reports[1].at - reports[0].at, 2s);
    }
}

TEST(UploaderTest, identifiersWithOddCharactersStayOneSegment)
{
    Delivery delivery;
    Life(delivery).deliver(TransferTarget::Deliverable{"org harbour", "spring slate", "spring slate row 2 of many"});
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

struct Trouble {
    const char* name;
    Operation operation;
    local::Fault fault;
    const char* message = ""; ///< in which an upload ends that meets it again and again
};
void PrintTo(const Trouble& trouble, std::ostream* out)
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

struct PassingTrouble : testing::TestWithParam<Trouble> {};

TEST_P(PassingTrouble, endsInAFiledFileAllTheSame)
{
    Delivery delivery;
    delivery.fail(GetParam().operation, GetParam().fault, 3, 1);
    Life(delivery).deliver();
}

INSTANTIATE_TEST_SUITE_P(Uploader, PassingTrouble,
                         testing::ValuesIn(std::vector<Trouble>{
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

struct LastingTrouble : testing::TestWithParam<Trouble> {};

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
    testing::ValuesIn(std::vector<Trouble>{
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

TEST(UploaderTest, nothingIsSentForWhatIsNoFileWithBytesOrIsBeingSentAlready)
{
    Delivery delivery;
    Life life(delivery);
    {
        auto elsewhere = delivery.journals.tryLock(pictureMaster.deliverableId);
        EXPECT_EQ(life.send(), "This upload is already running.");
    }
    delivery.write(0, 0);
    EXPECT_EQ(life.send(), "That file is empty.");
    QFile::remove(delivery.path());
    EXPECT_EQ(life.send(), "That file is empty.");
    QDir().mkpath(delivery.path());
    EXPECT_EQ(life.send(), "That file is empty.");
    EXPECT_THAT(life.network.seen(), IsEmpty());
}

TEST(UploaderTest, aFileThatChangesWhileItIsSentIsNeverCompleted)
{
    struct Case {
        qint64 newSize;
        std::size_t partsBegun;
    };
    for (auto [newSize, partsBegun] : {
             Case{150'000, 9},       // shorter: one lane finds out, and none goes on
             Case{40 * partSize, 40} // the same size with other bytes shows when all is sent
         }) {
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
            EXPECT_EQ(life.count(Operation::put), partsBegun);
            EXPECT_EQ(life.count(Operation::complete), 0u);
        }
        Life(delivery).deliver();
    }
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

TEST(UploaderTest, anUploadThatThePlatformForgotIsNotCalledDone)
{
    for (const auto& target : bothTargets) {
        Delivery delivery;
        delivery.fail(Operation::complete, status(500));
        EXPECT_EQ(Life(delivery).send(target), "The platform is having trouble.");
        delivery.fail(Operation::complete, {.kind = Kind::status, .status = 404, .message = "No such upload."}, 0);
        const auto object = delivery.upload()["object"].toString();
        QJsonArray others{QJsonObject{{"key", object}, {"size", delivery.content().size() - 1}},
                          QJsonObject{{"key", "2. " + object}, {"size", delivery.content().size()}}};
        delivery.fail(Operation::bin, answering({{"objects", others}}), 0);
        EXPECT_EQ(Life(delivery).send(target), "No such upload.");
        EXPECT_EQ(delivery.journals.loadJournals().size(), 1u);
    }
}

} // namespace
} // namespace palvera
