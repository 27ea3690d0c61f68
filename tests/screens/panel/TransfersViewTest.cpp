#include "screens/panel/TransfersView.h"

#include "tests/screens/RowsWatch.h"
#include "tests/transfers/TransfersHarness.h"

namespace palvera {
namespace {

using testing::ElementsAre;

/// The panel in virtual time.
struct TransfersViewTest : TransfersTest {
    TransfersView view{*model, world.clock, world.executor()};

    ~TransfersViewTest() override
    {
        world.run(view.close());
        world.run(model->suspend());
    }
    QUuid add(const QString& label)
    {
        auto id = addUpload(label, label);
        world.settle();
        return id;
    }
};

TEST_F(TransfersViewTest, aRowMovesToFinishedInTheOrderOfAddingWhenItsTransferEnds)
{
    auto a = add("a");
    add("b");
    auto c = add("c");
    EXPECT_EQ(titlesOf(*view.inFlight()), "a b c");
    EXPECT_EQ(view.badge(), "3");
    model->stop(c);
    model->stop(a);
    EXPECT_EQ(titlesOf(*view.inFlight()), "b");
    EXPECT_EQ(titlesOf(*view.finished()), "a c");
    view.stop(valueAt(*view.inFlight(), 0, "key").toString());
    EXPECT_EQ(titlesOf(*view.finished()), "a b c");
    EXPECT_EQ(view.badge(), "");
    add("d");
    view.clearFinished();
    EXPECT_EQ(titlesOf(*view.finished()), "");
    EXPECT_EQ(titlesOf(*view.inFlight()), "d");
}

TEST_F(TransfersViewTest, progressTouchesOneRowAndOnlyWhatItShows)
{
    EXPECT_FALSE(view.isPanelOpen());
    add("a");
    add("b");
    EXPECT_TRUE(view.isPanelOpen()) << "a new transfer opens it";
    view.setPanelOpen(false);
    RowsWatch watch(*view.inFlight());
    for (int times = 0; times < 2; ++times) { // the second time, nothing has changed
        uploads.requests.back().onProgress({.sent = 50, .total = 200, .bytesPerSecond = 5});
        world.settle();
        EXPECT_THAT(watch.changes, ElementsAre("*1-1 fraction percent figures graphFraction spoken stopMessage"));
    }
    EXPECT_EQ(view.overallText(), "24%") << "with the other, of which nothing has gone";
    EXPECT_FALSE(view.isPanelOpen());
}

TEST_F(TransfersViewTest, thePanelThatWasClosedOpensForAnotherDeliverableAlone)
{
    const std::pair<const char*, bool> cases[] = {{"a", true}, {"a", false}, {"b", true}, {"a", false}, {"b", false}};
    for (const auto& [deliverable, opens] : cases) {
        add(deliverable);
        EXPECT_EQ(view.isPanelOpen(), opens) << deliverable;
        view.setPanelOpen(false);
    }
    view.setPanelOpen(true);
    model->cutOff(); // closes it as somebody signs out
    add("a");
    EXPECT_TRUE(view.isPanelOpen());
}

TEST_F(TransfersViewTest, theCountdownOfARetryRunsDown)
{
    uploads.ends = {platformSays(503)};
    runUntilState(add("a"), "retrying: The platform says 503.");
    world.clock.advance(std::chrono::seconds(4));
    RowsWatch watch(*view.inFlight());
    view.inFlight()->tick();
    EXPECT_EQ(valueAt(*view.inFlight(), 0, "status"), "The platform says 503. Trying again in 6 sec");
    EXPECT_THAT(watch.changes, ElementsAre("*0-0 status spoken"));
}

TEST_F(TransfersViewTest, anInterruptedUploadIsResumedAndLeavesTheListAtOnce)
{
    journal("row-1");
    view.setTab(TransfersView::Interrupted);
    world.settle();
    auto* interrupted = view.interrupted();
    auto* rows = interrupted->rows();
    ASSERT_EQ(interrupted->count(), 1) << "the folder is read again when the list is shown";
    EXPECT_EQ(valueAt(*rows, 0, "filename"), "master.mov");
    EXPECT_EQ(valueAt(*rows, 0, "progress"), "0 of 2 parts done");
    interrupted->resume("nonsense");
    interrupted->resume("row-1");
    EXPECT_EQ(interrupted->count(), 0);
    EXPECT_EQ(titlesOf(*view.inFlight()), "master.mov");
}

} // namespace
} // namespace palvera
