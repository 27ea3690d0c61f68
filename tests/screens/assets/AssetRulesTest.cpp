#include "screens/assets/AssetRules.h"
#include "screens/assets/AssetColumns.h"

#include <QTimeZone>

#include <gmock/gmock.h>

namespace palvera {
namespace {

using namespace std::chrono_literals;
using testing::DoubleNear;
using testing::ElementsAre;

constexpr auto delivered = AssetsPlace::files;
constexpr auto bin = AssetsPlace::uploads;

TEST(AssetRulesTest, eachPlaceSaysWhatIsNotThereAndWhereItLeadsBackTo)
{
    const std::tuple<AssetsQuery, const char*, const char*, bool, std::optional<AssetsQuery>> cases[] = {
        {{}, "Nothing delivered yet", "Files delivered on", true, {}},
        {{.search = "x"}, "Nothing matches", "Try another word or kind", false, {}},
        {{.family = "audio"}, "Nothing matches", "Try another word or kind", false, {}},
        {{.place = bin}, "Nothing in Uploads yet", "Drop master files here", false, AssetsQuery{.place = delivered}},
        {{.place = bin, .search = "x"}, "Nothing matches", "Try another word, or", false, AssetsQuery{}},
        {{.place = bin, .prefix = "a/b/"}, "Nothing in Uploads yet", "Drop", false, AssetsQuery{.place = bin}},
    };
    for (const auto& [query, title, detail, shows, before] : cases) {
        SCOPED_TRACE(testing::PrintToString(title) + query.prefix.toStdString());
        EXPECT_EQ(emptyMessage(query).title, title);
        EXPECT_TRUE(emptyMessage(query).detail.startsWith(detail));
        EXPECT_EQ(emptyMessage(query).icon, query.place == bin ? "tray" : "shippingbox");
        EXPECT_EQ(showsUploads(query), shows);
        EXPECT_EQ(placeBefore(query), before);
    }
}

TEST(AssetRulesTest, textsCountAndNameWhatTheySpeakOf)
{
    EXPECT_EQ(downloadText(0), "Download");
    EXPECT_EQ(downloadText(1), "Download");
    EXPECT_EQ(downloadText(3), "Download 3 files");
    EXPECT_EQ(dropText(""), "Drop to add to Uploads");
    EXPECT_EQ(dropText("Reels/Night shots/"), "Drop to add to Night shots");
    EXPECT_EQ(leftOutText({}), "");
    EXPECT_EQ(leftOutText({.folders = {"A", "B"}, .onTheirWay = {"r.mov"}, .objections = {"No."}}),
              "2 folders were left out: only files can be added. “A” and “B”\n“r.mov” is on its way already.\nNo.");
    EXPECT_EQ(leftOutText({.onTheirWay = {"1", "2", "3", "4", "5"}}),
              "5 files are on their way already. “1”, “2”, “3” and 2 more");
}

TEST(AssetRulesTest, aMomentIsToldFromTheDayThatTheUserLivesIn)
{
    const QTimeZone zone("Europe/Berlin"); // an hour ahead in winter
    const QDateTime now({2026, 1, 31}, {9, 0}, zone);
    const QLocale german(QLocale::German, QLocale::Germany);
    const std::pair<QDateTime, const char*> cases[] = {
        {QDateTime({2026, 1, 31}, {7, 2}, Qt::UTC), "Today 08:02"},
        {QDateTime({2026, 1, 30}, {23, 30}, Qt::UTC), "Today 00:30"},
        {QDateTime({2026, 1, 30}, {8, 10}, Qt::UTC), "Yesterday 09:10"},
        {QDateTime({2026, 1, 29}, {22, 59}, Qt::UTC), "29.01.26"},
        {QDateTime({2025, 12, 1}, {12, 0}, Qt::UTC), "01.12.25"},
    };
    for (const auto& [moment, text] : cases)
        EXPECT_EQ(momentText(moment, now, german), text);
}

TEST(AssetRulesTest, linesShowWhatTheyStandFor)
{
    OrgAssetRow row{.deliverable = {.id = "row-1", .label = "Picture master"},
                    .projectId = "salt",
                    .projectName = "Salt",
                    .projectReference = "NL-1"};
    const RowsById rows{{"row-1", std::make_shared<const OrgAssetRow>(row)}};
    auto line = [](const AssetRow& made) { return *made.line; };

    auto file = fileRow({.key = "k", .rowId = "row-1", .object = "o/salt.mov", .family = "video", .byteSize = 7}, rows);
    EXPECT_EQ(file.key, "file:k");
    EXPECT_EQ(line(file).name, "salt.mov") << "where it has no name";
    EXPECT_EQ(line(file).deal, "Salt · Picture master");
    EXPECT_EQ(line(file).reference, "NL-1");
    EXPECT_EQ(line(file).type, "Video");
    EXPECT_TRUE(line(file).isStored() && line(file).isSelectable());
    for (const OrgAssetFile& broken :
         {OrgAssetFile{.key = "k", .rowId = "row-1", .filename = "a.mov"},
          OrgAssetFile{.key = "k", .rowId = "row-2", .object = "o", .filename = "a.mov"}}) {
        auto made = line(fileRow(broken, rows));
        EXPECT_FALSE(made.isStored() || made.isSelectable());
        EXPECT_FALSE(made.objection.isEmpty());
        EXPECT_EQ(made.note, made.objection) << "it says why";
    }

    for (const char* name : {"b/", "a/b/"}) {
        EXPECT_EQ(folderRow(name, "a/").key, "folder:a/b/");
        EXPECT_EQ(line(folderRow(name, "a/")).name, "b");
    }
    EXPECT_EQ(line(folderRow("b/", "a/")).type, "Folder");
    EXPECT_TRUE(line(folderRow("b/", "")).isPlace() && !line(folderRow("b/", "")).isStored());

    auto object = line(objectRow({.key = "a/x.mxf", .name = QString::fromUtf8("x\u202Efxm\n.mxf"), .size = 9}));
    EXPECT_EQ(object.name, "xfxm .mxf") << "nothing turns it round or breaks it";
    EXPECT_EQ(object.type, "MXF");
    EXPECT_EQ(object.deal, "Uploads");
    EXPECT_EQ(line(objectRow({.key = "x", .name = "x", .family = "audio"})).type, "Audio");
    EXPECT_EQ(line(objectRow({.key = "x", .name = "x"})).type, "File");
}

TEST(AssetRulesTest, aFolderShowsWhatIsOnItsWayThereAndWhatHasFailed)
{
    auto item = [](const char* name, std::optional<QString> folder, Item::State state, const char* org = "org") {
        return Item{.id = QUuid::createUuid(),
                    .target = TransferTarget::Bin{org, folder},
                    .name = name,
                    .state = std::move(state),
                    .journalKey = QString(name)};
    };
    std::vector<Item> items{item("a", "reels/", Item::Failed{.message = "No."}),
                            item("b", "reels", Item::Waiting{}),
                            item("c", {}, Item::Running{}),
                            item("d", "reels/", Item::Running{}, "other"),
                            item("e", "reels/", Item::Done{}),
                            item("f", "reels/", Item::Done{}),
                            item("g", "reels/", Item::Failed{}),
                            item("h", "reels/", Item::Stopped{}),
                            item("g", "reels/", Item::Running{})};
    auto names = [&](const AssetsQuery& query) {
        QString all;
        for (const auto& row : pendingRows(items, "org", query, {items[4].id}))
            all += row.line->name;
        return all;
    };
    EXPECT_EQ(names({.place = bin, .prefix = "reels/"}), "abeg");
    EXPECT_EQ(names({.place = bin, .prefix = "reels/", .search = "B"}), "b");
    EXPECT_EQ(names({.place = bin}), "c");
    EXPECT_EQ(names({}), "");
}

TEST(AssetRulesTest, theListIsRenewedSoonAfterFilesComeAndOnceMoreWhenThePlatformMayHaveCaughtUp)
{
    RenewalPlan plan;
    const Clock::Moment start;
    EXPECT_EQ(plan.next(), std::nullopt);
    for (auto arrival : {0ms, 100ms})
        plan.noteArrival(start + arrival);
    EXPECT_EQ(plan.next(), start + 500ms);
    plan.noteRenewal(start + 500ms);
    for (auto arrival : {1000ms, 1200ms, 1300ms})
        plan.noteArrival(start + arrival);
    EXPECT_EQ(plan.next(), start + 2500ms) << "no two within two seconds";
    plan.noteRenewal(start + 2500ms);
    EXPECT_EQ(plan.next(), start + 21'300ms);
    plan.noteRenewal(start + 21'300ms);
    EXPECT_EQ(plan.next(), std::nullopt);
}

TEST(AssetRulesTest, columnsGiveWayToTheNameAndKeepWhatTheyWereDrawnTo)
{
    using Widths = AssetColumns::Widths;
    EXPECT_EQ(AssetColumns::parse("300,100,90,120"), (Widths{300, 100, 90, 120}));
    EXPECT_EQ(AssetColumns::parse("9000,1,90,120"), (Widths{320, 80, 90, 120})) << "within their limits";
    for (const char* broken : {"", "1,2", "a,b,c,d", "200,110,90,nan,1"})
        EXPECT_EQ(AssetColumns::parse(broken), (Widths{200, 110, 90, 130})) << broken;
    const Widths wanted{200, 110, 90, 130};
    EXPECT_EQ(AssetColumns::fitted(wanted, 1000), wanted);
    EXPECT_EQ(AssetColumns::fitted(wanted, 640), (Widths{120, 80, 70, 110}));
    EXPECT_EQ(AssetColumns::fitted(wanted, 639), Widths{});
    EXPECT_THAT(AssetColumns::fitted(wanted, 715), ElementsAre(160, 95, 80, 120)) << "half of what they have too much";
}

} // namespace
} // namespace palvera
