#include "screens/deliverables/RowDrop.h"

#include "tests/screens/RowsWatch.h"
#include "tests/transfers/TransfersHarness.h"

namespace palvera {
namespace {

using testing::Each;

/// The list of one project in virtual time, with a platform that answers with `rows`.
struct DeliverablesViewTest : TransfersTest {
    QStringList rows{"a", "b", "c"}; // ids, which are labels too
    QSet<QString> filed;
    int status = 200;
    DeliverablesView view{{world.executor(), world.executor(), world.clock, *api, *model}};
    RowsWatch watch{view};
    FileSender sender{world.executor(), world.executor(), *model};
    RowDrop rowDrop{view, sender};

    DeliverablesViewTest()
    {
        client.handler = [this](const HttpRequest&) {
            return HttpResponse{.status = status, .body = status == 200 ? answer() : "{}"};
        };
        view.open({.id = "org", .name = "Northlight"}, {.id = "salt", .name = "Salt"});
        world.runUntil([&] { return !view.isLoading(); });
        watch.changes.clear();
    }
    ~DeliverablesViewTest() override
    {
        world.run(sender.close());
        world.run(view.close());
        world.run(model->suspend());
    }
    QUrl made(const QString& name) { return QUrl::fromLocalFile(file(name)); }
    QByteArray answer() const
    {
        QStringList list;
        for (const auto& id : rows)
            list.append(QString(R"({"id":"%1","label":"%1","family":"video","status":"in_progress"%2})")
                            .arg(id, filed.contains(id) ? R"(,"spec":{"assetObject":"o"})" : ""));
        return R"({"deliverables":[)" + list.join(',').toUtf8() + "]}";
    }
    QVariant at(int row, const QByteArray& role) const { return valueAt(view, row, role); }
    std::vector<std::string> takeChanges() { return std::exchange(watch.changes, {}); }
};

TEST_F(DeliverablesViewTest, loadsEveryThirtySecondsAndTwiceAfterAnUploadUntilItIsLeft)
{
    EXPECT_EQ(titlesOf(view), "a b c");
    uploads.ends = {nullptr, nullptr, nullptr};
    auto loadsAfter = [this](std::chrono::seconds time) {
        world.pass(time);
        return std::ranges::count_if(client.requests(), [](const HttpRequest& request) {
            return request.url.endsWith("/projects/salt/deliverables");
        });
    };
    EXPECT_EQ(loadsAfter(29s), 1);
    EXPECT_EQ(loadsAfter(32s), 3);
    addUpload("elsewhere");
    EXPECT_EQ(loadsAfter(2s), 4) << "it is done after one second";
    EXPECT_EQ(loadsAfter(18s), 4);
    EXPECT_EQ(loadsAfter(2s), 5);
    addUpload("elsewhere");
    EXPECT_EQ(loadsAfter(2s), 6);
    view.leave();
    addUpload("elsewhere");
    view.load();
    EXPECT_EQ(loadsAfter(100s), 6);
    EXPECT_EQ(model->uploadsFinished(), 3);
}

TEST_F(DeliverablesViewTest, aRefreshTouchesWhatDiffersAlone)
{
    auto first = view.cards();
    world.pass(30s);
    EXPECT_THAT(takeChanges(), IsEmpty());
    EXPECT_EQ(view.cards(), first) << "the very same objects";
    rows = {"a", "c", "d"};
    filed = {"c"};
    world.pass(30s);
    EXPECT_THAT(takeChanges(), ElementsAre("-1-1", "+2-2", "*1-1 filed spoken"));
    EXPECT_TRUE(view.isRefreshing());
    EXPECT_EQ(at(1, "spoken"), "Video, In progress, a file is filed");
    view.setSearch("d");
    EXPECT_FALSE(view.isRefreshing());
    EXPECT_EQ(titlesOf(view), "d");
    EXPECT_EQ(view.countText(), "1 of 3");
}

TEST_F(DeliverablesViewTest, anotherOrderHoldsForWhatIsLoadedLaterToo)
{
    rows = {"c", "b", "a"};
    world.pass(31s);
    view.setOrder(DeliverableOrder::name);
    EXPECT_EQ(titlesOf(view), "a b c");
    rows = {"c", "bb", "b", "a"};
    world.pass(31s);
    EXPECT_EQ(titlesOf(view), "a b bb c");
    view.setOrder("size");
    EXPECT_EQ(view.order(), DeliverableOrder::name);
    EXPECT_EQ(view.deliverableAt(2).id, "bb");
    view.setOrder(DeliverableOrder::platform);
    EXPECT_EQ(titlesOf(view), "c bb b a");
}

TEST_F(DeliverablesViewTest, aFailureKeepsTheRowsAndAnAnswerThatIsOvertakenDoesNotComeBack)
{
    status = 500;
    world.pass(30s);
    EXPECT_EQ(view.error(), "The platform answered 500.");
    EXPECT_EQ(titlesOf(view), "a b c");
    EXPECT_FALSE(view.isLoading()) << "there is something to show";
    status = 200;
    client.latency = 10s;
    view.load();
    world.settle();
    client.latency = 1s;
    rows = {"new"};
    view.load();
    world.pass(2s);
    EXPECT_EQ(titlesOf(view), "new");
    EXPECT_EQ(view.error(), "");
    rows = {"old"};
    world.pass(10s);
    EXPECT_EQ(titlesOf(view), "new");
}

TEST_F(DeliverablesViewTest, theFiltersAreClearedWithoutTheSearchAndByAnotherProjectOfWhichNothingArrivesLate)
{
    view.setSearch("a");
    EXPECT_FALSE(view.anyFilter()) << "the search alone is none";
    view.setFamily("audio");
    view.setFilled("Filled");
    EXPECT_TRUE(view.anyFilter());
    EXPECT_EQ(view.countText(), "0 of 3");
    view.clear();
    EXPECT_FALSE(view.anyFilter());
    EXPECT_EQ(titlesOf(view), "a");
    view.setStatus("in_progress");
    client.latency = 5s;
    view.load();
    world.settle();
    rows = {"x"};
    view.open({.id = "org"}, {.id = "tide", .name = "Tide"});
    EXPECT_TRUE(view.isLoading());
    EXPECT_EQ(view.search(), "");
    EXPECT_FALSE(view.anyFilter());
    EXPECT_EQ(titlesOf(view), "");
    world.pass(20s);
    EXPECT_EQ(titlesOf(view), "x");
    EXPECT_EQ(client.requests().back().url, "https://service.test/api/orgs/org/projects/tide/deliverables");
}

TEST_F(DeliverablesViewTest, theBadgeFollowsTheTransferOfItsRowAlone)
{
    auto id = addUpload("b");
    world.settle();
    EXPECT_EQ(at(1, "badge"), "Transferring 0%");
    EXPECT_TRUE(at(1, "moving").toBool());
    EXPECT_THAT(takeChanges(), Each("*1-1 badge moving still spoken"));
    uploads.requests.back().onProgress({.sent = 29, .total = 100});
    world.settle();
    EXPECT_EQ(at(1, "badge"), "Transferring 29%");
    EXPECT_THAT(takeChanges(), ElementsAre("*1-1 badge moving still spoken"));
    uploads.requests.back().onProgress({.sent = 29, .total = 100, .bytesPerSecond = 7});
    world.settle();
    EXPECT_THAT(takeChanges(), IsEmpty()) << "nothing that the row shows has changed";
    model->pause(id);
    EXPECT_EQ(at(1, "badge"), "Paused 29%");
    EXPECT_TRUE(at(1, "still").toBool());
    takeChanges();
    model->stop(id);
    world.settle();
    EXPECT_EQ(at(1, "badge"), "In progress");
    EXPECT_FALSE(at(1, "moving").toBool());
    EXPECT_THAT(takeChanges(), ElementsAre("*1-1 badge moving still spoken"));
    filed = {"b"};
    uploads.ends = {platformSays(422), nullptr};
    for (const bool fails : {true, false}) {
        addUpload("b");
        world.pass(30s);
        EXPECT_EQ(at(1, "badge"), fails ? "Upload failed" : "In progress");
        EXPECT_EQ(at(1, "failed").toBool(), fails);
    }
}

TEST_F(DeliverablesViewTest, whatIsDroppedOnARowIsAskedAboutAndStaysWithItsDeliverable)
{
    rowDrop.drop("b", {made("1.mov")});
    rowDrop.dismiss();
    rowDrop.confirm(); // too late
    rowDrop.drop("b", {made("1.mov")});
    rows = {"c", "b"};
    filed = {"b"};
    world.pass(30s);
    EXPECT_EQ(rowDrop.message(), "It replaces “The delivered file”.");
    rowDrop.confirm();
    world.settle();
    ASSERT_EQ(uploads.requests.size(), 1U);
    EXPECT_EQ(uploads.requests.back().target, TransferTarget(TransferTarget::Deliverable{"org", "salt", "b"}));
    EXPECT_EQ(rowDrop.title(), "");
    rowDrop.drop("c", {made("2.mov")});
    rows = {"b"};
    world.pass(30s);
    rowDrop.confirm();
    world.settle();
    EXPECT_EQ(sender.notice(), "The platform no longer has “c”. Nothing was sent.");
    EXPECT_EQ(uploads.requests.size(), 1U);
}

} // namespace
} // namespace palvera
