#include "app/EndNotice.h"

#include "tests/app/FakeNotices.h"
#include "tests/transfers/TransfersHarness.h"

namespace palvera {
namespace {

struct EndNoticeTest : TransfersTest {
    FakeNotices notices;
    bool isWatched = false;
    EndNotice notice{*model, notices, [this] { return isWatched; }};

    ~EndNoticeTest() override { world.run(model->suspend()); }

    /// Lets transfers end well or in vain, stops others, and gives what was said of all that.
    QString saidOf(int done, int failed, int stopped)
    {
        uploads.ends.assign(std::size_t(done), nullptr);
        uploads.ends.insert(uploads.ends.end(), std::size_t(failed), platformSays(403));
        for (int i = 0; i < done + failed + stopped; ++i) {
            auto id = addUpload(QString("row-%1").arg(i));
            world.settle();
            if (i >= done + failed)
                model->stop(id);
        }
        world.runUntil([&] { return model->inFlightCount() == 0; });
        world.settle();
        return std::exchange(notices.shown, {}).join('|');
    }
};

TEST_F(EndNoticeTest, whoLooksElsewhereIsToldWhatBecameOfAllButWhatTheyStopped)
{
    const std::tuple<int, int, int, const char*> cases[] = {
        {1, 0, 0, "Transfers finished: “master.mov” is done."},
        {3, 0, 0, "Transfers finished: 3 files are done."},
        {0, 1, 0, "Transfers failed: “master.mov” could not be transferred."},
        {0, 2, 0, "Transfers failed: 2 files could not be transferred."},
        {2, 1, 0, "Transfers finished, some failed: Done: 2. Could not be transferred: 1."},
        {0, 0, 1, ""},
        {1, 0, 2, "Transfers finished: “master.mov” is done."},
    };
    for (const auto& [done, failed, stopped, said] : cases)
        EXPECT_EQ(saidOf(done, failed, stopped), said) << done << failed << stopped;
    isWatched = true;
    EXPECT_EQ(saidOf(1, 1, 0), "");
}

} // namespace
} // namespace palvera
