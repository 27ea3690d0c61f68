#include "screens/deliverables/DeliverablesView.h"

#include "tests/support/Rows.h"
#include "tests/transfers/TransfersHarness.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace palvera {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

/// The list of one project in virtual time, with a platform that answers with `rows`.
struct DeliverablesViewTest : TransfersTest {
    QStringList rows{"a", "b", "c"}; // ids, which are labels too
    QSet<QString> filed;
    int status = 200;
    std::optional<DeliverablesView> view;
    std::vector<std::string> changes; // of the model

    DeliverablesViewTest()
    {
        client.handler = [this](const HttpRequest&) {
            return HttpResponse{.status = status, .body = status == 200 ? answer() : "{}"};
        };
        view.emplace(DeliverablesView::Environment{.main = world.executor(),
                                                   .background = world.executor(),
                                                   .clock = world.clock,
                                                   .api = *api,
                                                   .transfers = *model});
        using Model = QAbstractItemModel;
        auto note = [this](const char* what) {
            return [this, what](const QModelIndex&, int first, int last) {
                changes.push_back(what + std::to_string(first) + "-" + std::to_string(last));
            };
        };
        QObject::connect(&*view, &Model::rowsInserted, note("+"));
        QObject::connect(&*view, &Model::rowsRemoved, note("-"));
        QObject::connect(&*view, &Model::dataChanged, [this](const QModelIndex& from, const QModelIndex& to) {
            changes.push_back("*" + std::to_string(from.row()) + "-" + std::to_string(to.row()));
        });
    }
    ~DeliverablesViewTest() override
    {
        world.run(view->close());
        world.run(model->suspend());
        view.reset();
    }

    QByteArray answer() const
    {
        QJsonArray list;
        for (const auto& id : rows) {
            QJsonObject row{{"id", id}, {"label", id}, {"family", "video"}, {"status", "in_progress"}};
            if (filed.contains(id))
                row["spec"] = QJsonObject{{"assetObject", "o"}};
            list.append(row);
        }
        return QJsonDocument(QJsonObject{{"deliverables", list}}).toJson();
    }
    void open()
    {
        view->open({.id = "org", .name = "Northlight"}, {.id = "salt", .name = "Salt"});
        world.runUntil([&] { return !view->isLoading(); });
        changes.clear();
    }
    void passTime(std::chrono::seconds time)
    {
        auto until = world.clock.elapsed() + time;
        world.start([](Clock& clock, std::chrono::seconds duration) -> Task<void> {
            co_await clock.sleep(duration);
        }(world.clock, time));
        world.runUntil([&] { return world.clock.elapsed() >= until; });
        world.settle();
    }
    std::vector<std::string> shown() const
    {
        std::vector<std::string> titles;
        for (int row = 0; row < view->rowCount(); ++row)
            titles.push_back(at(row, "title").toString().toStdString());
        return titles;
    }
    QVariant at(int row, const QByteArray& role) const { return valueAt(*view, row, role); }
    int loads() const
    {
        return int(std::ranges::count_if(client.requests(), [](const HttpRequest& request) {
            return request.url.endsWith("/projects/salt/deliverables");
        }));
    }
};

TEST_F(DeliverablesViewTest, loadsAtOnceAndAgainEveryThirtySecondsUntilItIsLeft)
{
    open();
    EXPECT_THAT(shown(), ElementsAre("a", "b", "c"));
    EXPECT_EQ(loads(), 1);
    passTime(29s);
    EXPECT_EQ(loads(), 1);
    passTime(32s);
    EXPECT_EQ(loads(), 3);
    view->leave();
    passTime(100s);
    EXPECT_EQ(loads(), 3);
}

TEST_F(DeliverablesViewTest, loadsWhenAnUploadIsDoneAndOnceMoreTwentySecondsLater)
{
    open();
    uploads.ends = {nullptr};
    addUpload("elsewhere");
    passTime(2s);
    EXPECT_EQ(model->uploadsFinished(), 1);
    EXPECT_EQ(loads(), 2);
    passTime(18s);
    EXPECT_EQ(loads(), 2);
    passTime(2s);
    EXPECT_EQ(loads(), 3);
}

TEST_F(DeliverablesViewTest, aRefreshThatChangesNothingTouchesNothing)
{
    open();
    auto first = view->cards();
    passTime(30s);
    EXPECT_EQ(loads(), 2);
    EXPECT_THAT(changes, IsEmpty());
    EXPECT_EQ(view->cards(), first) << "the very same objects";
}

TEST_F(DeliverablesViewTest, aRefreshChangesTheRowsThatDiffer)
{
    open();
    rows = {"a", "c", "d"};
    filed = {"c"};
    passTime(30s);
    EXPECT_THAT(changes, ElementsAre("-1-1", "+2-2", "*1-1"));
    EXPECT_TRUE(view->isRefreshing());
    EXPECT_TRUE(at(1, "filed").toBool());
    view->setSearch("d");
    EXPECT_FALSE(view->isRefreshing());
    EXPECT_THAT(shown(), ElementsAre("d"));
    EXPECT_EQ(view->countText(), "1 of 3");
}

TEST_F(DeliverablesViewTest, aFailureKeepsTheRowsAndALaterLoadHealsIt)
{
    open();
    status = 500;
    passTime(30s);
    EXPECT_EQ(view->error(), "The platform answered 500.");
    EXPECT_THAT(shown(), ElementsAre("a", "b", "c"));
    EXPECT_FALSE(view->isLoading()) << "there is something to show";
    status = 200;
    view->load();
    world.settle();
    EXPECT_EQ(view->error(), "");
}

TEST_F(DeliverablesViewTest, anAnswerThatIsOvertakenDoesNotComeBack)
{
    open();
    client.latency = 10s;
    view->load();
    world.settle();
    client.latency = 1s;
    rows = {"new"};
    view->load();
    passTime(2s);
    EXPECT_THAT(shown(), ElementsAre("new"));
    rows = {"old"};
    passTime(10s);
    EXPECT_THAT(shown(), ElementsAre("new"));
}

TEST_F(DeliverablesViewTest, anotherProjectBeginsAfreshAndNothingOfTheLastOneArrives)
{
    open();
    view->setStatus("in_progress");
    view->setSearch("a");
    client.latency = 5s;
    view->load();
    world.settle();
    rows = {"x"};
    view->open({.id = "org"}, {.id = "tide", .name = "Tide"});
    EXPECT_TRUE(view->isLoading());
    EXPECT_EQ(view->search(), "");
    EXPECT_FALSE(view->anyFilter());
    EXPECT_THAT(shown(), IsEmpty());
    passTime(20s);
    EXPECT_THAT(shown(), ElementsAre("x"));
    EXPECT_EQ(client.requests().back().url, "https://service.test/api/orgs/org/projects/tide/deliverables");
}

TEST_F(DeliverablesViewTest, theFiltersAreClearedWithoutTheSearch)
{
    open();
    view->setSearch("a");
    view->setFamily("audio");
    view->setFilled("Filled");
    EXPECT_TRUE(view->anyFilter());
    EXPECT_EQ(view->countText(), "0 of 3");
    view->clear();
    EXPECT_FALSE(view->anyFilter());
    EXPECT_EQ(view->filled(), "All");
    EXPECT_THAT(shown(), ElementsAre("a"));
    EXPECT_EQ(view->statuses()->labelOf("in_progress"), "In progress");
    EXPECT_EQ(view->statuses()->valueAt(view->statuses()->indexOf("in_progress")), "in_progress");
    EXPECT_EQ(view->families()->indexOf("audio"), -1);
}

TEST_F(DeliverablesViewTest, theBadgeFollowsTheTransferOfItsRowAlone)
{
    open();
    EXPECT_EQ(at(1, "badge"), "In progress");
    addUpload("b");
    world.settle();
    EXPECT_EQ(at(1, "badge"), "Transferring");
    EXPECT_TRUE(at(1, "moving").toBool());
    EXPECT_THAT(changes, ElementsAre("*1-1"));
    uploads.requests.back().onProgress({.sent = 29, .total = 100});
    world.settle();
    EXPECT_EQ(at(1, "badge"), "Transferring 29%");
    changes.clear();
    uploads.requests.back().onProgress({.sent = 29, .total = 100, .bytesPerSecond = 7});
    world.settle();
    EXPECT_THAT(changes, IsEmpty()) << "nothing that the row shows has changed";
    model->stop(added.last());
    world.settle();
    EXPECT_EQ(at(1, "badge"), "In progress");
    EXPECT_THAT(changes, ElementsAre("*1-1"));
}

} // namespace
} // namespace palvera
