#include "screens/deliverables/DeliverableView.h"

#include "files/Preferences.h"
#include "session/Session.h"

#include "http/TransportError.h"
#include "tests/transfers/TransfersHarness.h"

namespace palvera {
namespace {

const Deliverable row{.id = "row-1",
                      .family = "video",
                      .kind = "picture_master",
                      .label = "Picture",
                      .status = "in_progress",
                      .language = "pt-BR",
                      .territory = "BR",
                      .titleName = "Salt"};

Deliverable filedRow()
{
    auto filed = row;
    filed.spec = QMap<QString, QString>{{"assetObject", "deliveries/reel.mov"}};
    return filed;
}

/// One deliverable in virtual time.
struct DeliverableViewTest : TransfersTest {
    Preferences preferences{disk.filePath("palvera.conf")};
    Session session{*api, preferences, world.executor()};
    std::optional<DeliverableView> view{std::in_place, DeliverableView::Environment{.main = world.executor(),
                                                                                    .background = world.executor(),
                                                                                    .api = *api,
                                                                                    .transfers = *model,
                                                                                    .session = session}};

    ~DeliverableViewTest() override
    {
        world.run(view->close());
        world.run(model->suspend());
        view.reset();
    }
    void open(const Deliverable& deliverable) { view->open({.id = "org"}, {.id = "salt"}, deliverable); }
    QUrl sparse(const QString& name, qint64 bytes)
    {
        QFile made(disk.filePath(name));
        EXPECT_TRUE(made.open(QIODevice::WriteOnly) && made.resize(bytes));
        return QUrl::fromLocalFile(made.fileName());
    }
    void send(const QUrl& what)
    {
        view->sendFile(what);
        world.settle();
    }
    QString sentFile() const { return uploads.requests.empty() ? "none" : uploads.requests.back().file; }
};

TEST_F(DeliverableViewTest, theHeaderSaysWhatIsKnown)
{
    open(row);
    EXPECT_EQ(view->title(), "Picture");
    EXPECT_EQ(view->contextLine(), "Salt");
    EXPECT_EQ(view->chips(), QStringList({"Video", "In progress", "Portuguese", "BR"}));
    open({.id = "row-2", .kind = "qc_report"});
    EXPECT_EQ(view->title(), "QC report");
    EXPECT_EQ(view->chips(), QStringList());
}

TEST_F(DeliverableViewTest, aFileOfAnyNameIsSentToTheDeliverable)
{
    open(row);
    for (const auto* name : {"plain.mov", "with spaces.mov", "100% ünïcode #1?.mov"}) {
        auto file = sparse(name, 10);
        EXPECT_TRUE(view->drop({file, sparse("second.mov", 10)}));
        world.settle();
        EXPECT_EQ(sentFile(), disk.filePath(name));
        EXPECT_EQ(model->items().back().target, TransferTarget(TransferTarget::Deliverable{"org", "salt", "row-1"}));
        EXPECT_FALSE(uploads.requests.back().confirmed);
        EXPECT_EQ(view->face(), DeliverableView::InFlight);
        view->stop();
        world.settle();
        EXPECT_EQ(view->face(), DeliverableView::Empty);
    }
    EXPECT_EQ(uploads.requests.size(), 3U) << "only the first of those dropped";
    EXPECT_FALSE(view->drop({}));
    EXPECT_EQ(view->refusal(), "The file did not arrive from the other program. Drop it again, or choose it here.");
}

TEST_F(DeliverableViewTest, whatIsNoFileIsRefusedWithAReason)
{
    open(row);
    struct Case {
        QUrl what;
        QString reason;
    };
    auto folder = QUrl::fromLocalFile(disk.path());
    const std::vector<Case> cases = {
        {folder, "“" + folder.fileName() + "” is a folder. Drop the file itself."},
        {QUrl::fromLocalFile("/dev/null"), "“null” is not a file that can be sent."},
        {QUrl("https://example.test/reel.mov"),
         "That is not a file on this computer. Save it here first, then drop it."},
        {QUrl("smb://server/reel.mov"), "That is not a file on this computer. Save it here first, then drop it."},
        {QUrl(), "That is not a file on this computer. Save it here first, then drop it."}};
    for (const auto& each : cases) {
        send(each.what);
        EXPECT_EQ(view->refusal(), each.reason);
        EXPECT_TRUE(uploads.requests.empty());
    }
    send(sparse("reel.mov", 10));
    EXPECT_EQ(view->refusal(), "") << "forgotten once a file is taken";
    EXPECT_EQ(uploads.requests.size(), 1U);
}

TEST_F(DeliverableViewTest, aSecondFileWaitsForTheFirst)
{
    open(row);
    send(sparse("one.mov", 10));
    send(sparse("two.mov", 10));
    EXPECT_EQ(view->refusal(), "“one.mov” is on its way already. Stop it before you send another file.");
    EXPECT_EQ(uploads.requests.size(), 1U);
}

TEST_F(DeliverableViewTest, aFullLengthFileForTextlessElementsIsAskedAbout)
{
    struct Case {
        const char* kind;
        qint64 bytes;
        bool asks;
    };
    for (const auto& each :
         {Case{"textless_elements", 4'000'000'000, false}, Case{"textless_elements", 4'000'000'001, true},
          Case{"Textless_elements", 4'000'000'001, false}, Case{"picture_master", 4'000'000'001, false}}) {
        auto deliverable = row;
        deliverable.kind = each.kind;
        open(deliverable);
        send(sparse("feature.mov", each.bytes));
        EXPECT_EQ(!view->doubtfulMessage().isEmpty(), each.asks) << each.kind << each.bytes;
        EXPECT_EQ(view->face() == DeliverableView::InFlight, !each.asks) << each.kind << each.bytes;
        view->stop();
        world.settle();
    }
}

TEST_F(DeliverableViewTest, theQuestionIsAnsweredEitherWay)
{
    auto textless = row;
    textless.kind = "textless_elements";
    open(textless);
    auto file = sparse("feature.mov", 4'800'000'000);
    send(file);
    EXPECT_EQ(view->doubtfulMessage(), "feature.mov is 4.80 GB. Textless elements are usually a few minutes long. The "
                                       "picture master row is probably the right place.");
    view->dismissDoubtful();
    world.settle();
    EXPECT_EQ(view->doubtfulMessage(), "");
    EXPECT_TRUE(uploads.requests.empty());
    send(file);
    view->confirmDoubtful();
    world.settle();
    EXPECT_EQ(view->doubtfulMessage(), "");
    EXPECT_EQ(sentFile(), file.toLocalFile());
}

TEST_F(DeliverableViewTest, aFileThatIsGoneIsNotHeldBack)
{
    open(row);
    send(QUrl::fromLocalFile(disk.filePath("gone.mov")));
    EXPECT_EQ(sentFile(), disk.filePath("gone.mov")) << "the upload says what is wrong with it";
}

TEST_F(DeliverableViewTest, theFirstDownloadAsksForAFolderAndTheNextGoesThere)
{
    open(filedRow());
    EXPECT_EQ(view->face(), DeliverableView::Filed);
    view->downloadFiled();
    world.settle();
    EXPECT_TRUE(view->isPicking() && view->isPickingFolder());
    view->cancelPicking();
    EXPECT_FALSE(view->isPicking());
    EXPECT_TRUE(model->items().empty());
    view->downloadFiled();
    world.settle();
    view->pick(QUrl::fromLocalFile(disk.path()));
    EXPECT_FALSE(view->isPicking());
    world.runUntil([&] { return !model->items().empty(); });
    ASSERT_EQ(model->items().size(), 1U);
    const auto& item = model->items().back();
    EXPECT_EQ(item.kind, Item::Kind::download);
    EXPECT_EQ(item.name, "reel.mov") << "the last component of its key";
    EXPECT_EQ(item.label, "Picture");
    EXPECT_EQ(item.titleName, "Salt");
    EXPECT_EQ(view->face(), DeliverableView::InFlight);
    EXPECT_TRUE(view->isDownloading());
    EXPECT_EQ(world.run(session.downloadsFolder()), disk.path());
    view->stop();
    view->downloadFiled();
    view->downloadFiled(); // a second click before the folder is found
    world.settle();
    EXPECT_FALSE(view->isPicking());
    EXPECT_EQ(model->items().size(), 2U);
}

TEST_F(DeliverableViewTest, aChosenFileGoesTheWayOfADroppedOne)
{
    open(row);
    view->chooseFile();
    EXPECT_TRUE(view->isPicking());
    EXPECT_FALSE(view->isPickingFolder());
    view->pick(sparse("reel.mov", 10));
    world.settle();
    EXPECT_EQ(sentFile(), disk.filePath("reel.mov"));
    view->pick(sparse("late.mov", 10));
    world.settle();
    EXPECT_EQ(uploads.requests.size(), 1U) << "nobody asked for that one";
}

TEST_F(DeliverableViewTest, theFiguresOfWhatIsUnderWay)
{
    open(filedRow());
    send(sparse("reel.mov", 10));
    EXPECT_EQ(view->doneText(), "—");
    EXPECT_EQ(view->speedText(), "—");
    uploads.requests.back().onProgress({.sent = 250'000'000, .total = 1'000'000'000, .bytesPerSecond = 10e6});
    world.settle();
    EXPECT_EQ(view->doneText(), "25%");
    EXPECT_EQ(view->transferredText(), "250.0 MB of 1.00 GB");
    EXPECT_EQ(view->speedText(), "10.0 MB/s");
    EXPECT_EQ(view->leftText(), "1m 15s");
    EXPECT_EQ(view->fraction(), 0.25);
    EXPECT_EQ(view->face(), DeliverableView::InFlight) << "a replacement under way hides what is filed";
    uploads.requests.back().onProgress({.sent = 250'000'000, .total = 1'000'000'000, .bytesPerSecond = 0});
    world.settle();
    EXPECT_EQ(view->speedText(), "—");
    EXPECT_EQ(view->leftText(), "—");
}

TEST_F(DeliverableViewTest, aRetryIsExplained)
{
    open(row);
    uploads.ends = {std::make_exception_ptr(TransportError(TransportError::Kind::broken, "cut"))};
    send(sparse("reel.mov", 10));
    world.runUntil([&] { return !view->trouble().isEmpty(); });
    EXPECT_EQ(view->trouble(), "The connection was lost.");
    EXPECT_EQ(view->speedText(), "—");
}

TEST_F(DeliverableViewTest, aFileDroppedJustBeforeAnotherPageIsOpenedStillGoes)
{
    open(row);
    view->sendFile(sparse("reel.mov", 10));
    auto other = row;
    other.id = "row-2";
    open(other);
    world.settle();
    ASSERT_EQ(uploads.requests.size(), 1U);
    EXPECT_EQ(uploads.requests.back().target.asDeliverable()->deliverableId, "row-1");
    EXPECT_EQ(view->face(), DeliverableView::Empty);
}

} // namespace
} // namespace palvera
