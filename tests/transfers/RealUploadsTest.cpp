// The model on the upload engine itself, against the local platform.

#include "transfer/UploadHarness.h"

#include "TransfersHarness.h"

namespace palvera {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Operation = local::Operation;

const QString key = pictureMaster.deliverableId;

struct RealLife : Life {
    Uploader uploader{{.engine = world.executor(),
                       .clock = world.clock,
                       .api = *api,
                       .storage = network.factory(),
                       .journals = delivery.journals,
                       .libraryFolder = delivery.disk.path(),
                       .spread = [] { return 1.0; }}};
    FakeSleep sleep;
    FakeNetworkPath path{world.clock};
    std::optional<Transfers> model;

    explicit RealLife(Delivery& owner) : Life(owner)
    {
        model.emplace(Transfers::Environment{
            .main = world.executor(),
            .background = world.executor(),
            .clock = world.clock,
            .api = *api,
            .journals = owner.journals,
            .upload = [this](UploadRequest request) { return uploader.upload(std::move(request)); },
            .download = {},
            .sleep = sleep,
            .network = path});
        world.settle();
    }
    ~RealLife() { model.reset(); }

    QUuid add(const QString& file)
    {
        return model->addUpload({.file = file,
                                 .orgId = pictureMaster.orgId,
                                 .projectId = pictureMaster.projectId,
                                 .deliverable = {.id = key}});
    }
    QString stateOf(const QUuid& id) const
    {
        const auto* item = model->find(id);
        return item ? nameOf(item->state) : QString();
    }
    void runUntilState(const QUuid& id, const QString& state)
    {
        world.runUntil([&] { return stateOf(id) == state; });
    }
    bool isInterrupted() const { return model->interruptedJournals().size() == 1; }
};

TEST(RealUploadsTest, deliversAndShowsHowFarItIs)
{
    Delivery delivery;
    RealLife life(delivery);
    auto id = life.add(delivery.path());
    life.runUntilState(id, "done");
    life.world.settle();
    expectDelivered(delivery);
    EXPECT_EQ(life.model->find(id)->sent, delivery.content().size());
    EXPECT_EQ(life.model->find(id)->total, delivery.content().size());
}

TEST(RealUploadsTest, startsEightTimesOverHalfAnHourWhileThePlatformIsInTrouble)
{
    Delivery delivery;
    delivery.fail(Operation::start, {.kind = local::Fault::Kind::status, .status = 503}, 8);
    RealLife life(delivery);
    auto id = life.add(delivery.path());
    life.runUntilState(id, "failed");
    std::vector<double> waits;
    auto starts = life.network.seen(Operation::start);
    for (std::size_t i = 1; i < starts.size(); ++i)
        waits.push_back(secondsBetween(starts[i - 1].ended, starts[i].at));
    EXPECT_THAT(waits, ElementsAre(10, 30, 60, 120, 300, 600, 900));
    life.world.runUntil([&] { return life.count(Operation::progress) == 1; });
    EXPECT_FALSE(life.isInterrupted()) << "the platform never opened it";
}

TEST(RealUploadsTest, aRefusalFailsAtOnceAndItsJournalCanBeResumed)
{
    Delivery delivery;
    delivery.fail(Operation::complete, {.kind = local::Fault::Kind::status, .status = 403, .message = "Not yours."});
    RealLife life(delivery);
    auto id = life.add(delivery.path());
    life.runUntilState(id, "failed");
    EXPECT_EQ(messageOf(life.model->find(id)->state), "Not yours.");
    life.world.runUntil([&] { return life.isInterrupted(); });

    auto again = life.model->resume(life.model->interruptedJournals().front());
    ASSERT_TRUE(again);
    EXPECT_FALSE(life.isInterrupted());
    life.runUntilState(*again, "done");
    EXPECT_EQ(life.count(Operation::start), 1u) << "it went on where it was";
    expectDelivered(delivery);
}

TEST(RealUploadsTest, aStopDuringARetryWaitGivesTheUploadUp)
{
    Delivery delivery;
    delivery.fail(Operation::complete, {.kind = local::Fault::Kind::status, .status = 503});
    RealLife life(delivery);
    auto id = life.add(delivery.path());
    life.runUntilState(id, "retrying");
    ASSERT_TRUE(delivery.journals.loadJournal(key));
    auto stopped = life.world.clock.now();
    life.model->stop(id);
    life.world.runUntil([&] { return !delivery.journals.loadJournal(key); });
    EXPECT_LE(secondsBetween(stopped, life.world.clock.now()), 0.5);
    EXPECT_EQ(delivery.upload()["phase"], "aborted");
    life.world.runUntil([&] { return life.network.seen(Operation::progress).size() == 1; });
    EXPECT_EQ(life.stateOf(id), "stopped");
    EXPECT_EQ(delivery.platform.violations(), QStringList());
}

TEST(RealUploadsTest, aStopWhilePartsMoveGivesTheUploadUp)
{
    Delivery delivery(20 * Delivery::partSize);
    RealLife life(delivery);
    life.network.conditions.bytesPerSecond = 2e4; // five seconds a part
    auto id = life.add(delivery.path());
    life.world.runUntil([&] { return life.model->find(id)->sent > 3 * Delivery::partSize; });
    auto stopped = life.world.clock.now();
    life.model->stop(id);
    life.world.runUntil([&] { return !delivery.journals.loadJournal(key); });
    EXPECT_LE(secondsBetween(stopped, life.world.clock.now()), 0.5);
    EXPECT_EQ(delivery.upload()["phase"], "aborted");
    EXPECT_EQ(delivery.platform.violations(), QStringList());
}

TEST(RealUploadsTest, whatThePlatformDoubtsIsSentOnceTheUserInsists)
{
    Delivery delivery;
    auto draft = delivery.disk.filePath("draft.mov");
    ASSERT_TRUE(QFile::copy(delivery.path(), draft));
    RealLife life(delivery);
    auto id = life.add(draft);
    life.world.runUntil([&] { return life.model->doubt().has_value(); });
    EXPECT_EQ(life.model->find(id), nullptr);
    EXPECT_EQ(life.model->doubt()->message, "\"draft.mov\" looks like a draft. Is it the file to deliver?");
    auto again = life.model->confirmDoubt();
    ASSERT_TRUE(again);
    life.runUntilState(*again, "done");
    expectDelivered(delivery);
}

} // namespace
} // namespace palvera
