#include "UploadHarness.h"

#include <random>

namespace palvera {
namespace {

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
