#include "screens/panel/TransfersView.h"

#include "tests/support/Rows.h"
#include "tests/transfers/TransfersHarness.h"

#include <QCoreApplication>
#include <QMetaEnum>

namespace palvera {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The panel in virtual time.
struct TransfersViewTest : TransfersTest {
    std::optional<TransfersView> view;

    TransfersViewTest() { view.emplace(*model, world.clock, world.executor()); }
    ~TransfersViewTest() override
    {
        world.run(view->close());
        world.run(model->suspend());
        view.reset();
    }

    static std::vector<std::string> statesOf(TransferRows* rows)
    {
        std::vector<std::string> states;
        for (int row = 0; row < rows->count(); ++row) {
            auto state = QMetaEnum::fromType<TransferState::Value>().key(valueAt(*rows, row, "transferState").toInt());
            states.push_back(valueAt(*rows, row, "title").toString().toStdString() + " " + state);
        }
        return states;
    }
    QUuid add(const QString& label)
    {
        auto id = model->addUpload({.file = file(label + ".mov"),
                                    .orgId = "org",
                                    .projectId = "salt",
                                    .deliverable = {.id = label, .label = label}});
        world.settle();
        return id;
    }
};

TEST_F(TransfersViewTest, aRowMovesToFinishedInTheOrderOfAddingWhenItsTransferEnds)
{
    auto a = add("a");
    add("b");
    auto c = add("c");
    EXPECT_THAT(statesOf(view->inFlight()), ElementsAre("a Running", "b Running", "c Running"));
    EXPECT_EQ(view->badge(), "3");
    model->stop(c);
    model->stop(a);
    EXPECT_THAT(statesOf(view->inFlight()), ElementsAre("b Running"));
    EXPECT_THAT(statesOf(view->finished()), ElementsAre("a Stopped", "c Stopped"));
    view->stop(valueAt(*view->inFlight(), 0, "key").toString());
    EXPECT_THAT(statesOf(view->finished()), ElementsAre("a Stopped", "b Stopped", "c Stopped"));
    EXPECT_EQ(view->badge(), "");
    add("d");
    view->clearFinished();
    EXPECT_THAT(statesOf(view->finished()), IsEmpty());
    EXPECT_THAT(statesOf(view->inFlight()), ElementsAre("d Running"));
}

TEST_F(TransfersViewTest, progressTouchesOneRowAndOnlyWhatItShows)
{
    add("a");
    add("b");
    std::vector<int> touched;
    QObject::connect(view->inFlight(), &QAbstractItemModel::dataChanged,
                     [&](const QModelIndex& index) { touched.push_back(index.row()); });
    uploads.requests.back().onProgress({.sent = 50, .total = 200, .bytesPerSecond = 5});
    world.settle();
    EXPECT_THAT(touched, ElementsAre(1));
    EXPECT_EQ(view->overallText(), "25%");
    uploads.requests.back().onProgress({.sent = 50, .total = 200, .bytesPerSecond = 5});
    world.settle();
    EXPECT_THAT(touched, ElementsAre(1));
}

TEST_F(TransfersViewTest, aNewTransferOpensThePanel)
{
    EXPECT_FALSE(view->isPanelOpen());
    add("a");
    EXPECT_TRUE(view->isPanelOpen());
    view->setPanelOpen(false);
    uploads.requests.back().onProgress({.sent = 1, .total = 2});
    world.settle();
    EXPECT_FALSE(view->isPanelOpen()) << "only when their number grows";
    add("b");
    EXPECT_TRUE(view->isPanelOpen());
}

TEST_F(TransfersViewTest, theCountdownOfARetryRunsDown)
{
    uploads.ends = {platformSays(503)};
    add("a");
    world.runUntil([&] { return statesOf(view->inFlight()) == std::vector<std::string>{"a Retrying"}; });
    auto status = [&] { return valueAt(*view->inFlight(), 0, "status"); };
    EXPECT_EQ(status(), "The platform says 503. Trying again in 10 sec");
    world.clock.advance(std::chrono::seconds(4));
    view->inFlight()->tick();
    EXPECT_EQ(status(), "The platform says 503. Trying again in 6 sec");
}

TEST_F(TransfersViewTest, anInterruptedUploadIsResumedAndLeavesTheListAtOnce)
{
    auto saved = journal("row-1");
    view->setTab(TransfersView::Interrupted);
    world.settle();
    auto* rows = view->interrupted();
    ASSERT_EQ(rows->count(), 1) << "the folder is read again when the list is shown";
    EXPECT_EQ(valueAt(*rows, 0, "filename"), "master.mov");
    EXPECT_EQ(valueAt(*rows, 0, "progress"), "0 of 2 parts done");
    view->resume("nonsense");
    EXPECT_EQ(view->inFlight()->count(), 0);
    view->resume("row-1");
    EXPECT_EQ(rows->count(), 0);
    EXPECT_THAT(statesOf(view->inFlight()), ElementsAre("master.mov Running"));
}

TEST_F(TransfersViewTest, aDoubtNamesThePlaceAndIsAnsweredEitherWay)
{
    for (bool confirms : {false, true}) {
        uploads.ends = {platformSays(409, "delivery_doubt")};
        add("Picture");
        world.runUntil([&] { return !view->doubtText().isEmpty(); });
        EXPECT_EQ(view->doubtText(), "Going to Picture\n\nThe platform says 409.");
        EXPECT_EQ(view->inFlight()->count() + view->finished()->count(), 0);
        confirms ? view->confirmDoubt() : view->dismissDoubt();
        world.settle();
        EXPECT_EQ(view->doubtText(), "");
        EXPECT_EQ(view->inFlight()->count(), confirms ? 1 : 0);
    }
    EXPECT_TRUE(uploads.requests.back().confirmed);
}

} // namespace
} // namespace palvera
