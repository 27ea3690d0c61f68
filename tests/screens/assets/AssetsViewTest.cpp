#include "screens/assets/AssetsView.h"

#include "files/Preferences.h"
#include "session/Session.h"

#include "tests/screens/RowsWatch.h"
#include "tests/transfers/TransfersHarness.h"

#include <QUrlQuery>

namespace palvera {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

/// The screen in virtual time, with a platform that lists `delivered` files and a bin of `objects`.
struct AssetsViewTest : TransfersTest {
    int delivered = 130;
    QStringList objects; // keys
    int status = 200;
    Preferences preferences{disk.filePath("palvera.conf")};
    Session session{{world.executor(), world.executor(), world.clock, *api, preferences, network}};
    AssetsView view{{world.executor(), world.executor(), world.clock, *api, *model, session, preferences}};
    RowsWatch watch{view};
    QList<AssetsView::Face> faces;

    AssetsViewTest()
    {
        client.handler = [this](const HttpRequest& request) { return answer(request); };
        QObject::connect(&view, &AssetsView::faceChanged, &view, [this] { faces.append(view.face()); });
        view.open({.id = "org", .name = "Northlight"});
        settle();
    }
    ~AssetsViewTest() override
    {
        world.run(view.close());
        world.run(model->suspend());
    }

    HttpResponse answer(const HttpRequest& request) const
    {
        const QUrl url(request.url);
        const QUrlQuery query(url);
        if (status != 200)
            return {.status = status, .body = "{}"};
        if (url.path().endsWith("/assets/files"))
            return {.status = 200, .body = QJsonDocument(filesPage(query)).toJson()};
        if (url.path().endsWith("/bin"))
            return {.status = 200, .body = QJsonDocument(binPage(query)).toJson()};
        return {.status = 200, .body = "{}"};
    }
    QJsonObject filesPage(const QUrlQuery& query) const
    {
        const int size = query.queryItemValue("pageSize").toInt(), page = query.queryItemValue("page").toInt();
        QJsonArray files, rows;
        int total = 0;
        for (int i = 0; i < delivered; ++i) {
            const auto name = QString("file %1.mov").arg(i);
            if (!name.contains(query.queryItemValue("q", QUrl::FullyDecoded)) || total++ / size != page - 1)
                continue;
            const auto row = QString("row-%1").arg(i % 7);
            files.append(QJsonObject{{"key", name}, {"rowId", row}, {"object", "o/" + name}, {"byteSize", 5}});
            rows.append(QJsonObject{{"id", row}, {"label", "Master"}, {"projectId", "salt"}, {"projectName", "Salt"}});
        }
        return {{"files", files}, {"rows", rows}, {"total", total}, {"page", page}, {"pageSize", size}};
    }
    QJsonObject binPage(const QUrlQuery& query) const
    {
        const auto prefix = query.queryItemValue("prefix", QUrl::FullyDecoded);
        const int limit = query.queryItemValue("limit").toInt(), from = query.queryItemValue("cursor").toInt();
        QStringList folders, found;
        for (const auto& key : objects) {
            if (!key.startsWith(prefix) || !key.contains(query.queryItemValue("q", QUrl::FullyDecoded)))
                continue;
            const auto slash = key.indexOf('/', prefix.size());
            if (slash < 0)
                found.append(key);
            else if (const auto folder = key.left(slash + 1); !folders.contains(folder))
                folders.append(folder);
        }
        QJsonArray list;
        for (const auto& key : found.mid(from, limit))
            list.append(QJsonObject{{"key", key}, {"size", 5}});
        QJsonObject page{{"objects", list}};
        if (from == 0)
            page["folders"] = QJsonArray::fromStringList(folders);
        if (from + limit < found.size())
            page["nextCursor"] = QString::number(from + limit);
        return page;
    }

    void settle()
    {
        world.runUntil([&] { return view.face() != AssetsView::Loading && !view.isLoadingMore(); });
        world.settle();
    }
    void passTime(std::chrono::milliseconds time)
    {
        world.run(world.clock.sleep(time));
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
    std::string names() const
    {
        QStringList all;
        for (int row = 0; row < view.rowCount(); ++row)
            all.append(view.nameAt(row));
        return all.join(' ').toStdString();
    }
    /// How many lists were asked for since the last time.
    int takeRequests()
    {
        const int all = int(std::ranges::count_if(client.requests(), [](const HttpRequest& request) {
            return request.url.contains("/assets/files?") || request.url.contains("/bin?");
        }));
        return all - std::exchange(m_seen, all);
    }
    QUrl source(const QString& name)
    {
        writeFile(disk.filePath(name), "bytes");
        return QUrl::fromLocalFile(disk.filePath(name));
    }

private:
    int m_seen = 0;
};

TEST_F(AssetsViewTest, pagesFollowEachOtherUntilAllIsThere)
{
    EXPECT_EQ(view.rowCount(), 61) << "with the way into the bin";
    EXPECT_EQ(view.moreText(), "60 of 130");
    watch.changes.clear();
    loadMore();
    EXPECT_THAT(watch.changes, ElementsAre("+61-120"));
    loadMore();
    EXPECT_EQ(view.rowCount(), 131);
    EXPECT_EQ(view.moreText(), "130 of 130");
    EXPECT_FALSE(view.hasMore());
    takeRequests();
    loadMore();
    EXPECT_EQ(takeRequests(), 0);

    for (int i = 0; i < 250; ++i)
        objects.append(QString("o%1").arg(i));
    objects.append("reels/a");
    enter("Uploads");
    EXPECT_EQ(view.rowCount(), 101);
    EXPECT_EQ(at(0, "name"), "reels");
    loadMore();
    loadMore();
    EXPECT_EQ(view.rowCount(), 251);
    EXPECT_FALSE(view.hasMore());
}

TEST_F(AssetsViewTest, aPlatformThatPromisesMoreAndGivesNothingIsNotAskedForEver)
{
    const auto honest = client.handler;
    client.handler = [&](const HttpRequest& request) {
        auto answer = honest(request);
        return HttpResponse{.status = 200, .body = answer.body.replace("\"total\": 60", "\"total\": 99")};
    };
    delivered = 60;
    view.load();
    settle();
    EXPECT_EQ(view.moreText(), "60 of 99");
    loadMore();
    EXPECT_FALSE(view.hasMore());
}

TEST_F(AssetsViewTest, aDeliverableThatALaterPageTellsOfCompletesEarlierRows)
{
    const auto honest = client.handler;
    client.handler = [&](const HttpRequest& request) {
        auto answer = honest(request);
        auto page = QJsonDocument::fromJson(answer.body).object();
        if (page["page"] == 1)
            page["rows"] = QJsonArray();
        answer.body = QJsonDocument(page).toJson();
        return answer;
    };
    view.open({.id = "org-2", .name = "Another"});
    settle();
    view.select(1);
    EXPECT_EQ(view.downloadCount(), 0) << "nobody says on which deliverable it is";
    EXPECT_FALSE(at(1, "note").toString().isEmpty());
    loadMore();
    EXPECT_EQ(at(1, "deal"), "Salt · Master");
    view.select(1);
    EXPECT_EQ(view.downloadCount(), 1);
}

TEST_F(AssetsViewTest, aFailedPageIsSaidWhereItWouldHaveBeenAndAskedForAgainByTheUserAlone)
{
    status = 500;
    loadMore();
    EXPECT_EQ(view.moreError(), "The platform answered 500.");
    EXPECT_EQ(view.face(), AssetsView::Table);
    takeRequests();
    view.reachEnd();
    EXPECT_EQ(takeRequests(), 0);
    status = 200;
    loadMore();
    EXPECT_EQ(view.moreError(), "");
    EXPECT_EQ(view.rowCount(), 121);
    status = 500;
    view.load();
    settle();
    EXPECT_EQ(view.face(), AssetsView::Failed);
    EXPECT_EQ(view.error(), "The platform answered 500.");
    status = 200;
    view.load();
    settle();
    EXPECT_EQ(view.face(), AssetsView::Table);
}

TEST_F(AssetsViewTest, aSearchWaitsForAPauseAndOnlyTheLatestIsShown)
{
    takeRequests();
    for (const char* typed : {"f", "fi", "file 12"}) {
        view.setSearch(typed);
        passTime(200ms);
    }
    EXPECT_EQ(takeRequests(), 0);
    passTime(100ms);
    EXPECT_EQ(takeRequests(), 1);
    settle();
    EXPECT_EQ(view.rowCount(), 11) << "without the way into the bin";
    client.latency = 10s;
    view.setSearch("file 1");
    view.searchNow();
    passTime(1s);
    client.latency = 1s;
    view.setSearch("file 99");
    view.searchNow();
    passTime(20s);
    EXPECT_EQ(names(), "file 99.mov");
    find("nothing like it");
    EXPECT_EQ(view.face(), AssetsView::Empty);
    find("");
    EXPECT_EQ(view.rowCount(), 61);
    view.setKind(2);
    settle();
    EXPECT_EQ(view.kind(), 2);
    EXPECT_TRUE(client.requests().back().url.endsWith("&family=audio"));
}

TEST_F(AssetsViewTest, foldersLieWithinFoldersAndTheWayBackLeadsThroughTheRoot)
{
    objects = {"top", "reels/one", "reels/night/two"};
    enter("Uploads");
    EXPECT_EQ(names(), "reels top");
    EXPECT_EQ(view.title() + view.backText(), "UploadsAssets");
    enter("reels");
    EXPECT_EQ(names(), "night one");
    find("two");
    enter("night");
    EXPECT_EQ(names(), "two");
    EXPECT_EQ(view.title() + view.backText(), "nightUploads");
    EXPECT_EQ(view.search(), "") << "each place is searched by itself";
    EXPECT_TRUE(view.back());
    settle();
    EXPECT_EQ(names(), "reels top");
    EXPECT_TRUE(view.back());
    EXPECT_EQ(view.query(), AssetsQuery());
    EXPECT_FALSE(view.back());
}

TEST_F(AssetsViewTest, theSelectionIsOfFilesThatAreShownAndOutlivesALoad)
{
    view.select(0);
    EXPECT_EQ(view.downloadCount(), 0) << "the way into the bin";
    view.select(2);
    view.selectTo(4);
    EXPECT_EQ(view.downloadText(), "Download 3 files");
    view.selectTo(1);
    EXPECT_EQ(view.downloadCount(), 2) << "from where it began";
    view.toggle(9);
    view.toggle(1);
    EXPECT_EQ(view.downloadCount(), 2);
    EXPECT_TRUE(at(9, "selected").toBool() && at(2, "selected").toBool() && !at(1, "selected").toBool());
    view.load();
    settle();
    EXPECT_EQ(view.downloadCount(), 2);
    find("file 8.mov");
    EXPECT_EQ(view.downloadCount(), 1) << "the other one is not seen";
    find("");
    EXPECT_EQ(view.downloadCount(), 2);
    view.selectAll();
    EXPECT_EQ(view.downloadCount(), 60);
    objects = {"a", "reels/one"};
    enter("Uploads");
    EXPECT_EQ(view.downloadCount(), 0);
    view.selectAll();
    EXPECT_EQ(view.downloadCount(), 1) << "no folder";
    view.clearSelection();
    EXPECT_EQ(view.downloadCount(), 0);
}

TEST_F(AssetsViewTest, whatIsSelectedGoesToTheRememberedFolderOrToOneThatIsAskedFor)
{
    objects = {"a.mov"};
    view.select(1);
    view.downloadSelected();
    world.settle();
    EXPECT_TRUE(view.isPickingFolder());
    EXPECT_THAT(model->items(), IsEmpty());
    QDir(disk.path()).mkdir("Films");
    view.pick({QUrl::fromLocalFile(disk.filePath("Films"))});
    world.settle();
    EXPECT_EQ(view.folder(), disk.filePath("Films"));
    enter("Uploads");
    view.selectAll();
    view.downloadSelected();
    world.settle();
    ASSERT_EQ(model->items().size(), 2u);
    EXPECT_EQ(model->items()[0].label, "Master");
    EXPECT_EQ(model->items()[0].target, TransferTarget(TransferTarget::Deliverable{"org", "salt", "row-0"}));
    EXPECT_EQ(model->items()[1].label, "Assets");
    EXPECT_EQ(model->items()[1].target, TransferTarget(TransferTarget::Bin{"org", {}}));
    view.chooseFolder();
    view.cancelPicking();
    EXPECT_FALSE(view.isPicking());
}

TEST_F(AssetsViewTest, aFileThatIsAddedStandsOnTopUntilTheListHasIt)
{
    objects = {"reels/one"};
    for (int i = 0; i < 150; ++i)
        objects.append(QString("o%1").arg(i));
    enter("Uploads");
    loadMore();
    view.select(5);
    faces.clear();
    takeRequests();
    uploads.ends = {nullptr, platformSays(400), nullptr};
    EXPECT_TRUE(view.drop({source("new.mov"), QUrl::fromLocalFile(disk.path())}));
    world.settle();
    EXPECT_EQ(at(0, "name"), "new.mov");
    EXPECT_TRUE(at(0, "moving").toBool());
    EXPECT_TRUE(view.notice().startsWith("1 folder was left out"));
    uploads.requests.at(0).onProgress({.sent = 2, .total = 4});
    world.settle();
    EXPECT_EQ(at(0, "note"), "Uploading 50%");
    passTime(1200ms);
    EXPECT_EQ(at(0, "note"), "Done") << "the list does not have it yet";
    objects.append("new.mov");
    passTime(500ms);
    EXPECT_EQ(takeRequests(), 2) << "both pages, half a second after it has come";
    EXPECT_EQ(view.rowCount(), 152) << "it stands where the platform lists it, alone";
    EXPECT_EQ(at(151, "name"), "new.mov");
    EXPECT_EQ(view.downloadCount(), 1) << "the selection is kept";
    EXPECT_THAT(faces, testing::Each(AssetsView::Table)) << "without a spinner";
    passTime(18s);
    EXPECT_EQ(takeRequests(), 0);
    passTime(2s);
    EXPECT_EQ(takeRequests(), 2);
    passTime(100s);
    EXPECT_EQ(takeRequests(), 0);

    view.drop({source("bad.mov")});
    passTime(2s);
    EXPECT_TRUE(at(0, "failed").toBool());
    EXPECT_EQ(view.nameAt(0), "bad.mov");
    view.tryAgain(0);
    world.settle();
    EXPECT_TRUE(at(0, "moving").toBool());
    EXPECT_NE(view.nameAt(1), "bad.mov") << "the new attempt stands for it";
    enter("reels");
    EXPECT_EQ(names(), "one");
    takeRequests();
    passTime(2s);
    EXPECT_EQ(takeRequests(), 0) << "it went to another folder";
    view.drop({source("in reels.mov")});
    world.settle();
    EXPECT_EQ(names(), "in reels.mov one");
    EXPECT_EQ(uploads.requests.back().target, TransferTarget(TransferTarget::Bin{"org", "reels/"}));
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
