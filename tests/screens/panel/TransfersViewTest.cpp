#include "screens/panel/TransfersView.h"
#include "screens/panel/Announcements.h"

#include "tests/screens/RowsWatch.h"
#include "tests/transfers/TransfersHarness.h"

namespace palvera {
namespace {

using Action = TransferAction::Value;

/// The panel in virtual time.
struct TransfersViewTest : TransfersTest {
    QStringList opened; ///< files
    TransfersView view{*model,
                       world.clock,
                       world.executor(),
                       {[](const QString&) {}, [this](const QString& path) { opened.append(path); }}};

    ~TransfersViewTest() override
    {
        world.run(view.close());
        world.run(model->suspend());
    }
    QString keyAt(int row) { return valueAt(*view.inFlight(), row, "key").toString(); }
    QUuid add(const QString& label)
    {
        auto id = addUpload(label, label);
        world.settle();
        return id;
    }
};

TEST_F(TransfersViewTest, progressTouchesOneRowAndOnlyWhatItShows)
{
    EXPECT_FALSE(view.isPanelOpen());
    add("a");
    add("b");
    EXPECT_TRUE(view.isPanelOpen()) << "a new transfer opens it";
    EXPECT_EQ(view.badge(), "2");
    EXPECT_THAT(view.tabTitles(), ElementsAre("In flight (2)", "Finished", "Interrupted"));
    view.setPanelOpen(false);
    RowsWatch watch(*view.inFlight());
    for (int times = 0; times < 2; ++times) { // the second time, nothing has changed
        uploads.requests.back().onProgress({.sent = 50, .total = 200, .bytesPerSecond = 5});
        world.settle();
        EXPECT_THAT(watch.changes, ElementsAre("*1-1 fraction percent figures graphFraction spoken"));
    }
    EXPECT_EQ(view.overallText(), "24%"); // of both
    EXPECT_FALSE(view.isPanelOpen());
}

TEST_F(TransfersViewTest, quartersStandstillsAndEndsAreToldOnce)
{
    Announcements announcements(*model);
    QStringList told;
    QObject::connect(&announcements, &Announcements::announced, [&](const QString& text) { told.append(text); });
    uploads.ends = {nullptr, platformSays(403)};
    const auto report = [&](qint64 sent, std::optional<Trouble> trouble = {}) {
        uploads.requests[0].onProgress(
            {.sent = sent, .total = 100, .bytesPerSecond = 5, .trouble = std::move(trouble)});
        world.settle();
        return std::exchange(told, {}).join(' ');
    };
    add("a");
    const Trouble silence{.reason = "No network."};
    const std::tuple<qint64, std::optional<Trouble>, const char*> reports[] = {
        {10, {}, ""},
        {26, {}, "“master.mov”: 25 percent."},
        {30, {}, ""},
        {30, silence, "“master.mov” is at a standstill. No network."},
        {31, {}, ""},
        {31, silence, ""}, // again
        {80, {}, "“master.mov”: 75 percent."},
        {20, {}, ""}, // from its start
        {100, {}, ""},
    };
    for (const auto& [sent, trouble, text] : reports)
        EXPECT_EQ(report(sent, trouble), text) << sent;
    for (const char* label : {"b", "c", "d"})
        add(label);
    uploads.requests[2].onProgress({.sent = 60, .total = 100});
    world.settle();
    EXPECT_THAT(told, IsEmpty()) << "one of many";
    world.pass(2s);
    EXPECT_EQ(told.join(' '), "“master.mov” is done. “master.mov” could not be transferred. The platform says 403.");
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

TEST_F(TransfersViewTest, rowsAreMovedAmongThoseInFlight)
{
    add("a");
    const auto over = add("b");
    for (const char* label : {"c", "d", "e"})
        add(label);
    model->stop(over);
    const std::tuple<int, int, const char*> moves[] = {{0, 1, "c a d e"},  {1, 0, "a c d e"}, {0, 9, "c d e a"},
                                                       {3, -1, "a c d e"}, {1, 2, "a d c e"}, {2, 2, "a d c e"}};
    for (const auto& [from, to, order] : moves) {
        view.moveTo(keyAt(from), to);
        EXPECT_EQ(titlesOf(*view.inFlight()), order);
        TransferRows anew(*model, world.clock, TransferRows::Which::inFlight);
        EXPECT_EQ(titlesOf(anew), order) << "as the model has it";
    }
}

TEST_F(TransfersViewTest, doesWithATransferOnlyWhatStillCanBeDone)
{
    const auto id = add("a");
    const auto key = keyAt(0);
    view.perform(key, Action::Pause);
    view.perform(key, Action::Pause); // it cannot be any more
    view.perform(key, Action::Remove);
    EXPECT_EQ(stateOf(id), "paused");
    EXPECT_TRUE(view.areAllPaused());
    world.settle();
    EXPECT_EQ(view.footer(), "Paused");
    view.perform(key, Action::Open);
    EXPECT_EQ(opened, QStringList(disk.filePath("master.mov")));
    view.perform(key, Action::Stop);
    view.perform(key, Action::Remove);
    EXPECT_EQ(stateOf(id), "absent");
    view.perform(key, Action::TryAgain);
    EXPECT_EQ(view.inFlight()->count(), 0);
    addBinUploads({.files = {file("b.mov")}, .orgId = "org"});
    QObject::connect(&view, &TransfersView::deliverableWanted, [] { ADD_FAILURE() << "there is none"; });
    view.perform(keyAt(0), Action::ShowDeliverable);
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
    ASSERT_EQ(interrupted->count(), 1) << "the folder is read again when the list is shown";
    interrupted->resume("nonsense");
    interrupted->resume("row-1");
    EXPECT_EQ(interrupted->count(), 0);
    EXPECT_EQ(titlesOf(*view.inFlight()), "master.mov");
}

} // namespace
} // namespace palvera
