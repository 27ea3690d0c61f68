#include "UploadHarness.h"

#include <random>

namespace palvera {
namespace {

using Kind = local::Fault::Kind;
using Operation = local::Operation;

/// What has happened so far that a crash might come right after: requests begun and ended, and journal writes.
struct Progress {
    std::size_t begun = 0;
    std::size_t ended = 0;
    QByteArray journal;

    bool operator==(const Progress&) const = default;
};

Progress progressOf(const Life& life)
{
    Progress now{.begun = life.network.seen().size()};
    for (const auto& request : life.network.seen())
        now.ended += request.inFlight ? 0 : 1;
    for (const auto& journal : life.delivery.journals.loadJournals())
        now.journal += encodeJournal(journal);
    return now;
}

/// Runs an upload and kills it right after its step number `steps` (from 1). False when it ended before that.
bool killAfter(Life& life, const TransferTarget& target, int steps)
{
    bool ended = false;
    life.world.start([](Task<void> sending, bool& over) -> Task<void> {
        co_await outcomeOf(std::move(sending));
        over = true;
    }(life.sending(target), ended));
    Progress last = progressOf(life);
    life.world.runUntil([&] {
        auto now = progressOf(life);
        if (now == last)
            return ended;
        last = now;
        return --steps == 0 || ended;
    });
    return !ended;
}

std::set<int> recordedParts(const Delivery& delivery)
{
    std::set<int> recorded;
    for (const auto& journal : delivery.journals.loadJournals())
        for (const auto& [part, etag] : journal.done)
            recorded.insert(part);
    return recorded;
}

struct KillTest : testing::TestWithParam<TransferTarget> {};

TEST_P(KillTest, atEveryStepLosesNothingThatWasRecorded)
{
    int step = 1;
    for (;; ++step) {
        SCOPED_TRACE(step);
        Delivery delivery(12 * Delivery::partSize + 1);
        std::map<int, int> before;
        {
            Life life(delivery);
            if (!killAfter(life, GetParam(), step))
                break;
        }
        for (int part : recordedParts(delivery))
            before[part] = delivery.timesStored(part);
        Life again(delivery);
        ASSERT_EQ(again.send(GetParam()), "");
        expectDelivered(delivery, !GetParam().asBin());
        for (auto [part, times] : before)
            EXPECT_EQ(delivery.timesStored(part), times) << "part " << part << " was recorded and sent again";
    }
    EXPECT_GT(step, 25) << "far fewer steps than an upload of thirteen parts has";
}

INSTANTIATE_TEST_SUITE_P(Uploader, KillTest, testing::Values(TransferTarget(pictureMaster), TransferTarget(binFolder)),
                         [](const auto& info) { return info.param.asBin() ? "bin" : "deliverable"; });

TEST(KillTest, againAndAgainAmidTroubleEndsInTheSameBytes)
{
    for (unsigned seed = 1; seed <= 15; ++seed) {
        SCOPED_TRACE(seed);
        std::minstd_rand chance(seed);
        Delivery delivery(20 * Delivery::partSize + 1);
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
