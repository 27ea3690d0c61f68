#include "UploadHarness.h"

#include "support/Json.h"

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

TEST(UploaderTest, nothingIsSentForWhatIsNoFileWithBytesNorAnythingElseInThePlaceOfAFileThatIsGone)
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

} // namespace
} // namespace palvera
