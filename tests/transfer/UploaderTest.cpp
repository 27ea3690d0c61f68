#include "UploadHarness.h"

namespace palvera {
namespace {

using namespace std::chrono_literals;
using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using Kind = local::Fault::Kind;
using Operation = local::Operation;

constexpr qint64 partSize = Delivery::partSize;

Journal journalOf(const Delivery& delivery)
{
    return delivery.journals.loadJournal(pictureMaster.deliverableId).value_or(Journal{});
}

TEST(UploaderTest, filesAMasterOfAnyLengthWhole)
{
    for (qint64 size : {qint64(1), partSize - 1, partSize, partSize + 1, 4 * partSize, 4 * partSize + 1}) {
        SCOPED_TRACE(size);
        Delivery delivery(size);
        Life life(delivery);
        EXPECT_EQ(life.send(), "");
        expectDelivered(delivery);
        EXPECT_EQ(life.progress.front(), (UploadProgress{.sent = 0, .total = size}));
        EXPECT_EQ(life.progress.back(), (UploadProgress{.sent = size, .total = size}));
        EXPECT_EQ(life.network.mostInFlight(Operation::put), int((size + partSize - 1) / partSize));
    }
}

TEST(UploaderTest, runsEightLanesOverManyPartsLowestFirst)
{
    Delivery delivery(40 * partSize);
    Life life(delivery);
    EXPECT_EQ(life.send(), "");
    EXPECT_EQ(life.network.mostInFlight(Operation::put), 8);
    auto sent = life.partsSent();
    EXPECT_TRUE(std::is_sorted(sent.begin(), sent.end()));
    expectDelivered(delivery);
    for (std::size_t i = 1; i < life.progress.size(); ++i)
        EXPECT_GE(life.progress[i].sent, life.progress[i - 1].sent);
    QFile log(delivery.disk.filePath("Logs/Palvera/transfers.log"));
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_EQ(log.readAll().count('\n'), 42) << "a start line, 40 parts, a done line";
}

TEST(UploaderTest, tellsThePlatformEveryTwoSecondsHowFarADeliverableIs)
{
    Delivery delivery(8 * partSize);
    Life life(delivery);
    life.network.conditions.bytesPerSecond = 2e4; // five seconds a part
    EXPECT_EQ(life.send(), "");
    auto reports = life.network.seen(Operation::progress);
    ASSERT_GE(reports.size(), 2u);
    EXPECT_EQ(reports[1].at - reports[0].at, 2s);
    EXPECT_EQ(delivery.platform.violations(), QStringList());
}

TEST(UploaderTest, sendsIntoABinWithoutFilingOrReporting)
{
    Delivery delivery(8 * partSize);
    Life life(delivery);
    life.network.conditions.bytesPerSecond = 2e4;
    EXPECT_EQ(life.send(binFolder), "");
    expectDelivered(delivery, false);
    EXPECT_EQ(life.count(Operation::asset), 0u);
    EXPECT_EQ(life.count(Operation::progress), 0u);
}

TEST(UploaderTest, identifiersWithOddCharactersStayOneSegment)
{
    Delivery delivery;
    Life life(delivery);
    EXPECT_EQ(life.send(TransferTarget::Deliverable{"org harbour", "spring slate", "spring slate row 2 of many"}), "");
    expectDelivered(delivery);
}

TEST(UploaderTest, goesOnFromTheJournalWithThePartsItLacks)
{
    Delivery delivery(4 * partSize + 1);
    {
        Life first(delivery);
        delivery.fail(Operation::put, {.kind = Kind::stallMidBody, .bytes = 10}, 1, 0, 2);
        delivery.fail(Operation::put, {.kind = Kind::stallMidBody, .bytes = 10}, 1, 0, 4);
        first.world.start([](Task<void> sending) -> Task<void> { co_await std::move(sending); }(first.sending()));
        first.world.runUntil([&] { return journalOf(delivery).done.size() == 3; });
    }
    delivery.platform.faults().clear();
    Life second(delivery);
    EXPECT_EQ(second.send(), "");
    EXPECT_EQ(second.progress.front().sent, 3 * partSize);
    EXPECT_THAT(second.partsSent(), ElementsAre(2, 4));
    EXPECT_EQ(second.count(Operation::start), 0u);
    expectDelivered(delivery);
}

TEST(UploaderTest, aFileThatChangedSinceTheJournalStartsAfresh)
{
    Delivery delivery;
    {
        Life first(delivery);
        delivery.fail(Operation::complete, {.kind = Kind::status, .status = 500});
        EXPECT_EQ(first.send(), "The platform is having trouble.");
        ASSERT_EQ(journalOf(delivery).done.size(), 5u);
    }
    delivery.write(3 * partSize, 7);
    Life second(delivery);
    EXPECT_EQ(second.send(), "");
    EXPECT_EQ(second.count(Operation::start), 1u);
    expectDelivered(delivery);
}

TEST(UploaderTest, aPartIsTriedEightTimesAndTheOthersAreStillSent)
{
    Delivery delivery(12 * partSize);
    delivery.fail(Operation::put, {.kind = Kind::status, .status = 503}, 8, 0, 3);
    {
        Life life(delivery);
        EXPECT_EQ(life.send(), "Storage answered 503 on a part.");
        auto sent = life.partsSent();
        EXPECT_EQ(std::count(sent.begin(), sent.end(), 3), 8);
        EXPECT_EQ(journalOf(delivery).done.size(), 11u);
        EXPECT_EQ(life.count(Operation::complete), 0u);
        std::vector<double> waits;
        std::optional<Clock::Moment> failedAt;
        for (const auto& put : life.network.seen(Operation::put)) {
            if (put.part != 3)
                continue;
            if (failedAt)
                waits.push_back(std::round(10 * secondsBetween(*failedAt, put.at)) / 10);
            failedAt = put.ended;
        }
        EXPECT_THAT(waits, ElementsAre(1, 2, 4, 8, 16, 30, 30)) << "the signing before each takes hundredths";
    }
    Life again(delivery);
    EXPECT_EQ(again.send(), "");
    EXPECT_THAT(again.partsSent(), ElementsAre(3));
    expectDelivered(delivery);
}

struct Trouble {
    const char* name;
    Operation operation;
    local::Fault fault;
};
void PrintTo(const Trouble& trouble, std::ostream* out)
{
    *out << trouble.name;
}

struct PassingTrouble : testing::TestWithParam<Trouble> {};

TEST_P(PassingTrouble, endsInAFiledFileAllTheSame)
{
    Delivery delivery;
    auto [name, operation, fault] = GetParam();
    delivery.fail(operation, fault, 3, 1);
    Life life(delivery);
    EXPECT_EQ(life.send(), "");
    expectDelivered(delivery);
}

INSTANTIATE_TEST_SUITE_P(
    Uploader, PassingTrouble,
    testing::Values(Trouble{"unavailable", Operation::put, {.kind = Kind::status, .status = 503}},
                    Trouble{"resetAtOnce", Operation::put, {.kind = Kind::resetBeforeReading}},
                    Trouble{"resetMidBody", Operation::put, {.kind = Kind::resetMidBody, .bytes = 33'333}},
                    Trouble{"stallMidBody", Operation::put, {.kind = Kind::stallMidBody, .bytes = 50'000}},
                    Trouble{"stallBeforeAnswer", Operation::put, {.kind = Kind::stallAfterBody}},
                    Trouble{"answerLost", Operation::put, {.kind = Kind::loseAnswer}},
                    Trouble{"expired", Operation::put, {.kind = Kind::expired}},
                    Trouble{"noTag", Operation::put, {.kind = Kind::noTag}},
                    Trouble{"lowerCaseTag", Operation::put, {.kind = Kind::lowerCaseTag}},
                    Trouble{"capitalTag", Operation::put, {.kind = Kind::capitalTag}},
                    Trouble{"bareTag", Operation::put, {.kind = Kind::bareTag}},
                    Trouble{"slowAnswer", Operation::put, {.latency = 40s}},
                    Trouble{"unsignedPart", Operation::parts, {.kind = Kind::unsignedPart, .part = 2}},
                    Trouble{"signingFails", Operation::parts, {.kind = Kind::status, .status = 500}},
                    Trouble{"signingIsHtml", Operation::parts, {.kind = Kind::html}},
                    Trouble{"signingIsCut", Operation::parts, {.kind = Kind::truncated}},
                    Trouble{"signingIsLost", Operation::parts, {.kind = Kind::loseAnswer}},
                    Trouble{"reportsFail", Operation::progress, {.kind = Kind::status, .status = 500}}),
    [](const auto& info) { return info.param.name; });

struct LastingTrouble : testing::TestWithParam<std::tuple<Trouble, const char*>> {};

TEST_P(LastingTrouble, endsInItsOwnMessageAndAJournalToGoOnFrom)
{
    Delivery delivery;
    auto [trouble, message] = GetParam();
    delivery.fail(trouble.operation, trouble.fault, 0);
    {
        Life life(delivery);
        EXPECT_EQ(life.send(), message);
        EXPECT_EQ(life.network.seen(Operation::put).empty() || !journalOf(delivery).key.isEmpty(), true);
        for (const auto& request : life.network.seen())
            EXPECT_FALSE(request.inFlight);
    }
    delivery.platform.faults().clear();
    Life again(delivery);
    EXPECT_EQ(again.send(), "");
    expectDelivered(delivery);
}

INSTANTIATE_TEST_SUITE_P(
    Uploader, LastingTrouble,
    testing::Values(
        std::tuple{Trouble{"refused", Operation::put, {.kind = Kind::status, .status = 403}},
                   "Storage answered 403 on a part."},
        std::tuple{Trouble{"stalled", Operation::put, {.kind = Kind::stallMidBody, .bytes = 5}},
                   "The connection stopped moving for 20 seconds."},
        std::tuple{Trouble{"noTag", Operation::put, {.kind = Kind::noTag}}, "The storage service returned no ETag."},
        std::tuple{Trouble{"cut", Operation::put, {.kind = Kind::resetMidBody, .bytes = 5}}, "The connection was cut."},
        std::tuple{Trouble{"unsigned", Operation::parts, {.kind = Kind::unsignedPart, .part = 2}},
                   "The platform did not sign part 2."},
        std::tuple{Trouble{"noSigning",
                           Operation::parts,
                           {.kind = Kind::status, .status = 502, .answer = local::Fault::Answer::html}},
                   "The platform answered 502."},
        std::tuple{Trouble{"noStart",
                           Operation::start,
                           {.kind = Kind::status, .status = 500, .answer = local::Fault::Answer::empty}},
                   "The platform answered 500."},
        std::tuple{Trouble{"noCompletion", Operation::complete, {.kind = Kind::status, .status = 503}},
                   "The platform is having trouble."},
        std::tuple{Trouble{"completionRefused", Operation::complete, {.kind = Kind::status, .status = 409}},
                   "The platform is having trouble."},
        std::tuple{Trouble{"notFiled", Operation::asset, {.kind = Kind::status, .status = 400}},
                   "The platform is having trouble."},
        std::tuple{Trouble{"partsOfNothing", Operation::start, {.kind = Kind::overwrite, .members = {{"partSize", 0}}}},
                   "The platform cut the file into parts that do not add up to it."},
        std::tuple{Trouble{"noParts", Operation::start, {.kind = Kind::overwrite, .members = {{"partCount", 0}}}},
                   "The platform cut the file into parts that do not add up to it."},
        std::tuple{Trouble{"partTooFew", Operation::start, {.kind = Kind::overwrite, .members = {{"partCount", 4}}}},
                   "The platform cut the file into parts that do not add up to it."}),
    [](const auto& info) { return std::get<0>(info.param).name; });

TEST(UploaderTest, anUnusableAddressIsAFailedAttempt)
{
    Delivery delivery(1);
    QJsonArray urls{QJsonObject{{"partNumber", 1}, {"url", "not an address"}}};
    delivery.fail(Operation::parts, {.kind = Kind::overwrite, .members = {{"urls", urls}}}, 0);
    Life life(delivery);
    EXPECT_EQ(life.send(), "The upload failed.");
    EXPECT_EQ(life.count(Operation::put), 0u);
}

TEST(UploaderTest, nothingIsSentForWhatIsNoFileWithBytes)
{
    Delivery delivery;
    delivery.write(0, 0);
    EXPECT_EQ(Life(delivery).send(), "That file is empty.");
    QFile::remove(delivery.path());
    EXPECT_EQ(Life(delivery).send(), "That file is empty.");
    QDir().mkpath(delivery.path());
    Life life(delivery);
    EXPECT_EQ(life.send(), "That file is empty.");
    EXPECT_THAT(life.network.seen(), IsEmpty());
}

TEST(UploaderTest, aFileThatChangesWhileItIsSentIsNeverCompleted)
{
    constexpr auto message = "The file changed while it was being sent, so it was not delivered. Send it again.";
    for (qint64 newSize : {qint64(150'000), 40 * partSize}) { // shorter; the same size with other bytes
        Delivery delivery(40 * partSize);
        delivery.platform.faults().clear();
        {
            Life life(delivery);
            std::optional<std::string> ended;
            life.world.start([](Life& running, std::optional<std::string>& how) -> Task<void> {
                auto outcome = co_await outcomeOf(running.sending());
                how = outcome.failure ? describe(outcome.failure).toStdString() : "";
            }(life, ended));
            life.world.runUntil([&] { return life.count(Operation::put) > 10; });
            delivery.write(newSize, 9);
            life.world.runUntil([&] { return ended.has_value(); });
            EXPECT_EQ(*ended, message);
            EXPECT_EQ(life.count(Operation::complete), 0u);
        }
        Life again(delivery);
        EXPECT_EQ(again.send(), "");
        expectDelivered(delivery);
    }
}

TEST(UploaderTest, aStopCutsEverythingOffAtOnceAndKeepsWhatWasConfirmed)
{
    Delivery delivery(40 * partSize);
    {
        Life life(delivery);
        life.network.conditions.bytesPerSecond = 1e5; // a second a part
        life.world.start([](Life& running) -> Task<void> {
            co_await running.world.clock.sleep(1500ms);
            running.flag->stop();
        }(life));
        EXPECT_EQ(life.send(), "cancelled");
        EXPECT_EQ(life.world.clock.elapsed(), 1500ms);
        for (const auto& request : life.network.seen())
            EXPECT_FALSE(request.inFlight);
        EXPECT_EQ(journalOf(delivery).done.size(), 8u);
    }
    Life again(delivery);
    EXPECT_EQ(again.send(), "");
    expectDelivered(delivery);
    for (int part = 1; part <= 8; ++part)
        EXPECT_EQ(delivery.timesStored(part), 1) << part;
}

TEST(UploaderTest, aCancelledCallerEndsTheRunTheSameWay)
{
    Delivery delivery(40 * partSize);
    Life life(delivery);
    life.network.conditions.bytesPerSecond = 1e5;
    auto first = life.world.run(firstOf(life.sending(), life.world.clock.sleep(1500ms)));
    EXPECT_EQ(first.index(), 1u);
    EXPECT_EQ(life.world.clock.elapsed(), 1500ms);
    EXPECT_EQ(journalOf(delivery).done.size(), 8u);
    EXPECT_TRUE(delivery.journals.tryLock(pictureMaster.deliverableId)) << "the run is over";
}

TEST(UploaderTest, aStopDuringABackOffOrACompletionIsNotWaitedOut)
{
    for (auto [operation, kind] :
         {std::pair(Operation::put, Kind::status), std::pair(Operation::complete, Kind::stallAfterBody)}) {
        Delivery delivery(2 * partSize);
        delivery.fail(operation, {.kind = kind}, 0);
        Life life(delivery);
        life.world.start([](Life& running) -> Task<void> {
            co_await running.world.clock.sleep(20s);
            running.flag->stop();
        }(life));
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
    auto failure = life.world.run(outcomeOf(life.sending())).failure;
    try {
        std::rethrow_exception(failure);
    } catch (const APIError& error) {
        EXPECT_EQ(error.code(), "delivery_doubt");
        EXPECT_EQ(error.message(), "Check the length.");
    }
    EXPECT_EQ(life.send(pictureMaster, true), "");
    auto starts = life.network.seen(Operation::start);
    EXPECT_FALSE(starts[0].body.contains("confirmed"));
    EXPECT_TRUE(starts[1].body.contains("\"confirmed\":true"));
    expectDelivered(delivery);
}

TEST(UploaderTest, aCompletionWhoseAnswerWasLostIsRecognised)
{
    for (const TransferTarget& target : {TransferTarget(pictureMaster), TransferTarget(binFolder)}) {
        Delivery delivery;
        delivery.fail(Operation::complete, {.kind = Kind::loseAnswer});
        EXPECT_EQ(Life(delivery).send(target), "The connection was cut.");
        Life again(delivery);
        EXPECT_EQ(again.send(target), "");
        EXPECT_THAT(again.partsSent(), IsEmpty());
        expectDelivered(delivery, !target.asBin());
    }
}

TEST(UploaderTest, aCompletionThatTheSessionRepeatedIsRecognisedWithinTheRun)
{
    for (const TransferTarget& target : {TransferTarget(pictureMaster), TransferTarget(binFolder)}) {
        Delivery delivery;
        Life life(delivery);
        life.client.repeatsCompletions = true;
        EXPECT_EQ(life.send(target), "");
        EXPECT_EQ(life.count(Operation::complete), 2u);
        expectDelivered(delivery, !target.asBin());
    }
}

TEST(UploaderTest, anUploadThatThePlatformForgotIsNotCalledDone)
{
    for (const TransferTarget& target : {TransferTarget(pictureMaster), TransferTarget(binFolder)}) {
        Delivery delivery;
        delivery.fail(Operation::complete, {.kind = Kind::status, .status = 500});
        EXPECT_EQ(Life(delivery).send(target), "The platform is having trouble.");
        Life again(delivery);
        delivery.fail(Operation::complete, {.kind = Kind::status, .status = 404, .message = "No such upload."}, 0);
        EXPECT_EQ(again.send(target), "No such upload.");
        EXPECT_EQ(delivery.journals.loadJournals().size(), 1u);
    }
}

TEST(UploaderTest, aFilingWhoseAnswerWasLostIsRepeated)
{
    Delivery delivery;
    delivery.fail(Operation::asset, {.kind = Kind::loseAnswer});
    EXPECT_EQ(Life(delivery).send(), "The connection was cut.");
    EXPECT_EQ(Life(delivery).send(), "");
    expectDelivered(delivery);
}

TEST(UploaderTest, oneRunAtATimeWritesAJournal)
{
    Delivery delivery;
    auto elsewhere = delivery.journals.tryLock(pictureMaster.deliverableId);
    Life life(delivery);
    EXPECT_EQ(life.send(), "This upload is already running.");
    EXPECT_THAT(life.network.seen(), IsEmpty());
}

TEST(UploaderTest, aJournalThatDoesNotAddUpCountsAsNone)
{
    Delivery delivery;
    {
        Life first(delivery);
        delivery.fail(Operation::complete, {.kind = Kind::status, .status = 500});
        first.send();
    }
    QFile file(delivery.journals.journalFolder() + "/salt-row-1.json");
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    QByteArray text = file.readAll().replace("\"partCount\":5", "\"partCount\":6");
    file.seek(0);
    file.write(text);
    file.close();
    Life again(delivery);
    EXPECT_EQ(again.send(), "");
    EXPECT_EQ(again.count(Operation::start), 1u);
    expectDelivered(delivery);
}

} // namespace
} // namespace palvera
