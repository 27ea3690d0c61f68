#include "screens/deliverables/DeliverableView.h"

#include "files/Preferences.h"
#include "files/Quantities.h"
#include "http/TransportError.h"
#include "session/Session.h"

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

/// One deliverable in virtual time.
struct DeliverableViewTest : TransfersTest {
    Preferences preferences{disk.filePath("palvera.conf")};
    Session session{{world.executor(), world.executor(), world.clock, *api, preferences, network}};
    FileSender sender{world.executor(), world.executor(), *model};
    DeliverableView view{{world.executor(), world.clock, *api, *model, session, sender}};

    DeliverableViewTest() { open(row); }
    ~DeliverableViewTest() override
    {
        world.run(sender.close());
        world.run(view.close());
        world.run(model->suspend());
    }
    void open(const Deliverable& deliverable)
    {
        sender.turnPage();
        view.open({.id = "org"}, {.id = "salt"}, deliverable);
    }
    void openFiled()
    {
        auto filed = row;
        filed.spec = QMap<QString, QString>{{"assetObject", "deliveries/reel.mov"}};
        open(filed);
    }
    QUrl sparse(const QString& name, qint64 bytes = 10)
    {
        QFile made(file(name));
        EXPECT_TRUE(made.resize(bytes));
        return QUrl::fromLocalFile(made.fileName());
    }
    void send(const QUrl& what)
    {
        view.drop({what});
        world.settle();
    }
    void stop()
    {
        view.stop(view.transferKey());
        world.settle();
    }
    QString refusal() const { return sender.isRefusal() ? sender.notice() : QString(); }
};

TEST_F(DeliverableViewTest, whatIsNoFileIsRefusedWithAReasonAndOneOfAnyNameIsSent)
{
    auto folder = QUrl::fromLocalFile(disk.path());
    const std::pair<QUrl, QString> cases[] = {
        {folder, "“" + folder.fileName() + "” is a folder. Drop the file itself."},
        {QUrl::fromLocalFile("/dev/null"), "“/dev/null” is not an ordinary file."},
        {QUrl::fromLocalFile(disk.filePath("gone.mov")), "“gone.mov” is no longer in " + disk.path() + "."},
        {sparse("empty.mov", 0), "That file is empty."},
        {QUrl("https://example.test/reel.mov"),
         "That is not a file on this computer. Save it here first, then drop it."}};
    for (const auto& [what, reason] : cases) {
        send(what);
        EXPECT_EQ(refusal(), reason);
    }
    view.drop({});
    EXPECT_EQ(refusal(), "The file did not arrive from the other program. Drop it again, or choose it here.");
    EXPECT_TRUE(uploads.requests.empty());
    const auto url = sparse("100% ünïcode #1?.mov");
    view.drop({url, sparse("2.mov"), sparse("3.mov"), QUrl("https://example.test/4"), sparse("5"), sparse("6")});
    EXPECT_FALSE(sender.notice().startsWith("Only")) << "it may be none that can be sent";
    world.settle();
    EXPECT_EQ(sender.notice(), "Only “100% ünïcode #1?.mov” was taken. Left out: “2.mov”, “3.mov”, “4” and 2 more.");
    EXPECT_FALSE(sender.isRefusal());
    send(sparse("two.mov"));
    EXPECT_EQ(refusal(), "“100% ünïcode #1?.mov” is on its way already. Stop it before you send another file.");
    ASSERT_EQ(uploads.requests.size(), 1U) << "only the first of those dropped";
    EXPECT_EQ(uploads.requests.back().file, url.path());
    EXPECT_FALSE(uploads.requests.back().confirmed);
    EXPECT_EQ(model->items().back().target, TransferTarget(TransferTarget::Deliverable{"org", "salt", "row-1"}));
}

TEST_F(DeliverableViewTest, aFullLengthFileForTextlessElementsIsAskedAbout)
{
    const std::tuple<const char*, qint64, bool> cases[] = {{"Textless_elements", 4'000'000'001, false},
                                                           {"picture_master", 4'000'000'001, false},
                                                           {"textless_elements", 4'000'000'000, false},
                                                           {"textless_elements", 4'000'000'001, true}};
    auto deliverable = row;
    for (const auto& [kind, bytes, asks] : cases) {
        deliverable.kind = kind;
        open(deliverable);
        send(sparse("feature.mov", bytes));
        EXPECT_EQ(!sender.doubtfulMessage().isEmpty(), asks) << kind << bytes;
        stop();
    }
    EXPECT_EQ(sender.doubtfulMessage(), "feature.mov is 4.0 GB. Textless elements are usually a few minutes long. The "
                                        "picture master row is probably the right place.");
    EXPECT_EQ(uploads.requests.size(), 3U);
}

TEST_F(DeliverableViewTest, theFirstDownloadAsksForAFolderAndTheNextGoesThere)
{
    openFiled();
    EXPECT_EQ(view.face(), DeliverableView::Filed);
    view.downloadFiled();
    world.settle();
    EXPECT_TRUE(view.isPicking() && view.isPickingFolder());
    view.pick(QUrl::fromLocalFile(disk.path()));
    EXPECT_FALSE(view.isPicking());
    view.pick(sparse("late.mov")); // nobody asked for that one
    world.runUntil([&] { return !model->items().empty(); });
    const auto& item = model->items().back();
    EXPECT_EQ(item.name, "reel.mov") << "the last component of its key";
    EXPECT_EQ(item.label, "Picture");
    EXPECT_EQ(item.titleName, "Salt");
    EXPECT_TRUE(view.isDownloading());
    EXPECT_EQ(world.run(session.downloadsFolder()), disk.path());
    stop();
    view.downloadFiled();
    view.downloadFiled(); // a second click before the folder is found
    world.settle();
    EXPECT_FALSE(view.isPicking());
    EXPECT_EQ(model->items().size(), 2U);
}

TEST_F(DeliverableViewTest, saysWhatIsKnownOfTheDeliverableAndOfWhatIsUnderWay)
{
    EXPECT_EQ(view.title(), "Picture");
    EXPECT_EQ(view.chips(), QStringList({"Video", "In progress", "Portuguese", "BR"}));
    openFiled();
    uploads.ends = {std::make_exception_ptr(TransportError(TransportError::Kind::broken, "cut"))};
    send(sparse("reel.mov"));
    EXPECT_EQ(view.face(), DeliverableView::InFlight) << "a replacement under way hides what is filed";
    EXPECT_EQ(view.doneText(), "0%");
    uploads.requests.back().onProgress({.sent = 250'000'000, .total = 1'000'000'000, .bytesPerSecond = 10e6});
    world.settle();
    EXPECT_EQ(view.doneText(), "25%");
    EXPECT_EQ(view.speedText(), "10.0 MB/s");
    EXPECT_EQ(view.leftText(), "1m 15s");
    world.runUntil([&] { return !view.trouble().isEmpty(); });
    EXPECT_EQ(view.trouble(), "The connection was lost. Trying again in 10 sec");
    EXPECT_EQ(view.headline(), "Uploading");
    EXPECT_EQ(view.speedText(), "—");
    EXPECT_EQ(view.leftText(), "—");
    view.pause();
    EXPECT_EQ(view.headline(), "Paused");
    EXPECT_EQ(view.trouble(), "");
    view.resume();
    world.settle();
    EXPECT_EQ(view.headline(), "Uploading");
}

TEST_F(DeliverableViewTest, aFileDroppedJustBeforeAnotherPageIsOpenedGoesOrIsNamedThere)
{
    const std::tuple<QUrl, unsigned, QString> cases[] = {
        {sparse("empty.mov", 0), 0, "“empty.mov” was not sent to “Picture”. That file is empty."},
        {sparse("long.mov", 4'000'000'001), 0,
         "“long.mov” was not sent to “Picture”. It looks too long for that: it is " + byteCountText(4e9) + '.'},
        {sparse("reel.mov"), 1, ""}};
    auto textless = row;
    textless.kind = "textless_elements";
    auto other = row;
    other.id = "row-2";
    for (const auto& [file, sent, said] : cases) {
        open(textless);
        uploads.requests.clear();
        view.drop({file});
        open(other);
        world.settle();
        ASSERT_EQ(uploads.requests.size(), sent);
        EXPECT_EQ(sender.notice().toStdString(), said.toStdString());
        EXPECT_FALSE(sender.isRefusal());
        EXPECT_EQ(sender.doubtfulMessage(), "");
        EXPECT_EQ(view.face(), DeliverableView::Empty);
        if (sent > 0)
            EXPECT_EQ(uploads.requests.back().target.asDeliverable()->deliverableId, "row-1");
    }
}

TEST_F(DeliverableViewTest, whatThePlatformNoLongerHasTakesNothingUntilItIsBack)
{
    const auto isAnswered404 = [&] {
        uploads.ends = {platformSays(404)};
        send(sparse("early.mov"));
        world.pass(2s);
    };
    const std::function<void()> ways[] = {[&] { view.update(nullptr); }, isAnswered404};
    for (const auto& disappear : ways) {
        SCOPED_TRACE(&disappear - ways);
        disappear();
        EXPECT_EQ(view.face(), DeliverableView::Gone);
        uploads.requests.clear();
        send(sparse("reel.mov"));
        EXPECT_EQ(refusal(), "The platform no longer has “Picture”. Nothing was sent.");
        EXPECT_TRUE(uploads.requests.empty());
        view.update(&row);
        EXPECT_EQ(view.face(), DeliverableView::Empty);
    }
    send(sparse("reel.mov"));
    view.update(nullptr);
    EXPECT_EQ(view.face(), DeliverableView::InFlight) << "what is under way is still seen";
    EXPECT_TRUE(view.isGone());
}

TEST_F(DeliverableViewTest, theLastUploadThatFailedAndLeftAJournalIsSaidOnceAndTriedAgain)
{
    journal();
    uploads.ends = {platformSays(422)};
    send(QUrl::fromLocalFile(file("master.mov")));
    world.pass(2s);
    EXPECT_EQ(view.failedName(), "master.mov");
    EXPECT_EQ(view.failure(), "The last upload failed: The platform says 422. (HTTP 422)");
    EXPECT_TRUE(view.isCutOffFailed() && !view.cutOffText().isEmpty());
    EXPECT_FALSE(view.isGone());
    uploads.requests.clear();
    view.tryAgain();
    world.settle();
    EXPECT_EQ(uploads.requests.size(), 1U);
    EXPECT_EQ(view.failure(), "");
}

} // namespace
} // namespace palvera
