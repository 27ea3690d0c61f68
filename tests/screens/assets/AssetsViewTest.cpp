#include "screens/assets/AssetsView.h"

#include "files/Preferences.h"
#include "session/Session.h"

#include "localplatform/Platform.h"
#include "tests/screens/RowsWatch.h"
#include "tests/transfers/TransfersHarness.h"

namespace palvera {
namespace {

/// The screen in virtual time, on the sample data of the local platform.
struct AssetsViewTest : TransfersTest {
    local::Platform platform{{.signInNeeded = false}, [this] { return world.clock.wallNow(); }};
    QByteArray added; ///< objects on the first page of the bin, each with a comma after it
    Preferences preferences{disk.filePath("palvera.conf")};
    Session session{{world.executor(), world.executor(), world.clock, *api, preferences, network}};
    AssetsView view{{world.executor(), world.executor(), world.clock, *api, *model, session, preferences}};
    RowsWatch watch{view};
    QList<AssetsView::Face> faces;

    AssetsViewTest()
    {
        client.handler = [this](const HttpRequest& request) { return answer(request); };
        QObject::connect(&view, &AssetsView::faceChanged, &view, [this] { faces.append(view.face()); });
        open();
    }
    ~AssetsViewTest() override
    {
        world.run(view.close());
        world.run(model->suspend());
    }

    HttpResponse answer(const HttpRequest& request)
    {
        const auto target = request.url.mid(request.url.indexOf("/api/"));
        const local::RequestHead head{.method = request.method, .target = target, .headers = request.headers};
        auto reply = platform.serve(head, request.body, platform.meet(head));
        if (target.contains("/bin?") && !target.contains("cursor="))
            reply.body.replace("\"objects\":[", "\"objects\":[" + added);
        return {.status = reply.status, .body = reply.body};
    }
    /// Puts these in the place of what the next list of files has.
    void overwriteFiles(const QByteArray& members)
    {
        platform.faults().add({.operation = local::Operation::assets,
                               .fault = {.kind = local::Fault::Kind::overwrite, .members = jsonObject(members)}});
    }
    void open()
    {
        view.open({.id = "org-northlight", .name = "Northlight"});
        settle();
    }
    void settle()
    {
        world.runUntil([&] { return view.face() != AssetsView::Loading && !view.isLoadingMore(); });
        world.settle();
    }
    void loadMore()
    {
        view.loadMore();
        settle();
    }
    /// Goes into the bin, or a folder of it.
    void enter(const QString& name)
    {
        for (int row = 0; row < view.rowCount(); ++row)
            if (view.nameAt(row) == name && view.enter(row))
                return settle();
        FAIL() << "there is no " << name.toStdString();
    }
    void find(const QString& text)
    {
        view.setSearch(text);
        view.searchNow();
        settle();
    }
    QVariant at(int row, const QByteArray& role) const { return valueAt(view, row, role); }
    /// How many pages of the bin were asked for since the last time.
    int takeRequests()
    {
        const int all = platform.state()["requests"].toObject()["bin"].toInt();
        return all - std::exchange(m_seen, all);
    }
    QUrl source(const QString& name) { return QUrl::fromLocalFile(file(name)); }

private:
    int m_seen = 0;
};

TEST_F(AssetsViewTest, pagesFollowEachOtherUntilAllIsThereOrNothingMoreComes)
{
    overwriteFiles(R"({"files":[]})"); // though it promises more
    loadMore();
    EXPECT_EQ(view.rowCount(), 61) << "with the way into the bin";
    EXPECT_FALSE(view.hasMore());
    enter("Uploads");
    EXPECT_EQ(view.rowCount(), 102) << "with two folders";
    watch.changes.clear();
    loadMore();
    EXPECT_THAT(watch.changes, ElementsAre("+102-201"));
    loadMore();
    EXPECT_EQ(view.moreText(), "232 loaded");
    takeRequests();
    loadMore();
    EXPECT_EQ(takeRequests(), 0);
}

TEST_F(AssetsViewTest, aSearchWaitsForAPauseAndOnlyTheLatestIsShown)
{
    enter("Uploads");
    takeRequests();
    for (const char* typed : {"r", "re", "reel 12"}) {
        view.setSearch(typed);
        world.pass(200ms);
    }
    EXPECT_EQ(takeRequests(), 0);
    world.pass(100ms);
    EXPECT_EQ(takeRequests(), 1);
    settle();
    EXPECT_EQ(view.rowCount(), 10);
    client.latency = 10s;
    view.setSearch("reel 1");
    view.searchNow();
    world.pass(1s);
    client.latency = 1s;
    view.setSearch("reel 099");
    view.searchNow();
    world.pass(20s);
    EXPECT_EQ(view.rowCount(), 1);
    EXPECT_EQ(view.nameAt(0), "Reel 099 of 230.mov");
    EXPECT_TRUE(view.back());
    EXPECT_EQ(view.search(), "") << "each place is searched by itself";
    EXPECT_FALSE(view.back());
}

TEST_F(AssetsViewTest, theSelectionIsOfFilesThatAreShownAndOutlivesALoad)
{
    view.select(0);
    EXPECT_EQ(view.downloadCount(), 0) << "the way into the bin";
    view.toggle(2);
    view.toggle(9);
    view.load();
    settle();
    EXPECT_EQ(view.downloadCount(), 2);
    find(view.nameAt(9));
    EXPECT_EQ(view.downloadCount(), 1) << "the other one is not seen";
    find("");
    EXPECT_EQ(view.downloadCount(), 2);
    enter("Uploads");
    EXPECT_EQ(view.downloadCount(), 0);
    view.selectAll();
    EXPECT_EQ(view.downloadCount(), 100) << "no folder";
    view.clearSelection();
    EXPECT_EQ(view.downloadCount(), 0);
}

TEST_F(AssetsViewTest, aFileIsDownloadedOnceItsDeliverableIsKnownAndTheNextGoesToTheSameFolder)
{
    overwriteFiles(R"({"files":[{"key":"k","rowId":"row-1","object":"o/reel.mov","byteSize":5}],"rows":[]})");
    open();
    view.select(1);
    EXPECT_EQ(view.downloadCount(), 0) << "nobody says on which deliverable it is";
    EXPECT_FALSE(at(1, "note").toString().isEmpty());
    overwriteFiles(R"({"rows":[{"id":"row-1","label":"Master","projectId":"salt","projectName":"Salt"}]})");
    loadMore();
    EXPECT_EQ(at(1, "deal"), "Salt · Master");
    view.select(1);
    view.downloadSelected();
    world.settle();
    QDir(disk.path()).mkdir("Films");
    view.pick({QUrl::fromLocalFile(disk.filePath("Films"))});
    world.settle();
    EXPECT_EQ(view.folder(), disk.filePath("Films"));
    enter("Uploads");
    view.select(2);
    view.downloadSelected();
    world.settle();
    ASSERT_EQ(model->items().size(), 2u);
    EXPECT_EQ(model->items()[0].label, "Master");
    EXPECT_EQ(model->items()[0].target, TransferTarget(TransferTarget::Deliverable{"org-northlight", "salt", "row-1"}));
    EXPECT_EQ(model->items()[1].label, "Assets");
    EXPECT_EQ(model->items()[1].target, TransferTarget(TransferTarget::Bin{"org-northlight", {}}));
}

TEST_F(AssetsViewTest, aFileThatIsAddedStandsOnTopUntilTheListHasIt)
{
    enter("Uploads");
    loadMore();
    view.select(5);
    faces.clear();
    takeRequests();
    uploads.ends = {nullptr, nullptr};
    view.drop({source("new.mov")});
    world.settle();
    EXPECT_EQ(at(0, "name"), "new.mov");
    EXPECT_TRUE(at(0, "moving").toBool());
    uploads.requests.at(0).onProgress({.sent = 2, .total = 4});
    world.settle();
    EXPECT_EQ(at(0, "note"), "Uploading 50%");
    model->pauseAll();
    world.settle();
    EXPECT_EQ(at(0, "note"), "Paused 50%");
    model->goOnAll();
    world.pass(1200ms);
    EXPECT_EQ(at(0, "note"), "Done") << "the list does not have it yet";
    added = R"({"key":"new.mov","size":5},)";
    world.pass(500ms);
    EXPECT_EQ(takeRequests(), 2) << "both pages, half a second after it has come";
    EXPECT_EQ(view.rowCount(), 203) << "it stands where the platform lists it, alone";
    EXPECT_EQ(at(2, "name"), "new.mov");
    EXPECT_EQ(view.downloadCount(), 1) << "the selection is kept";
    EXPECT_THAT(faces, testing::Each(AssetsView::Table)) << "without a spinner";
    world.pass(100s);
    EXPECT_EQ(takeRequests(), 2) << "once more";

    view.drop({source("late.mov")});
    world.settle();
    enter("Rushes 2025");
    takeRequests();
    world.pass(2s);
    EXPECT_EQ(takeRequests(), 0) << "it went to another folder";
}

TEST_F(AssetsViewTest, whatIsNoFileOfThisComputerIsRefused)
{
    EXPECT_FALSE(view.drop({}));
    EXPECT_TRUE(view.notice().contains("did not arrive"));
    EXPECT_FALSE(view.drop({QUrl("https://elsewhere.example/a.mov")}));
    EXPECT_TRUE(view.notice().contains("not a file on this computer"));
    view.dismissNotice();
    view.drop({source("a.mov")});
    world.settle();
    EXPECT_EQ(view.notice(), "");
    view.drop({source("a.mov"), QUrl::fromLocalFile("/nowhere/b.mov"), QUrl("https://elsewhere.example/c.mov")});
    world.settle();
    EXPECT_EQ(view.notice(), "“a.mov” is on its way already.\n“b.mov” is no longer in /nowhere.\n"
                             "What is not a file on this computer was left out. Save it here first.");
}

} // namespace
} // namespace palvera
