#include "screens/deliverables/DeliverableFilter.h"
#include "screens/deliverables/FiledFile.h"

#include "tests/support/QtPrinting.h"

namespace palvera {
namespace {

using testing::ElementsAre;
using Filled = DeliverableFilter::Filled;

const Deliverable picture{.id = "1",
                          .family = "video",
                          .kind = "picture_master",
                          .label = "Picture Émile",
                          .status = "in_progress",
                          .language = "fr",
                          .titleName = "Salt",
                          .spec = QMap<QString, QString>{{"assetObject", ""}, {"assetFilename", "S1_reel.mov"}}};
const Deliverable empty{.id = "2", .family = "audio", .kind = "stereo", .label = "Mix", .status = "In_progress"};

TEST(DeliverableFilterTest, rowsPassWhatTheyMatch)
{
    const std::tuple<const char*, Deliverable, DeliverableFilter, bool> cases[] = {
        {"only spaces are searched for", picture, {.search = "  \t"}, true},
        {"a part of the label, in any case", picture, {.search = " PICTURE é "}, true},
        {"the context line", picture, {.search = "salt"}, true},
        {"the filed file's name", picture, {.search = "s1_REEL"}, true},
        {"the kind", picture, {.search = "picture_m"}, true},
        {"words in another order", picture, {.search = "émile picture"}, false},
        {"its family", picture, {.family = "video"}, true},
        {"a family in another case", picture, {.family = "Video"}, false},
        {"its status", empty, {.status = "In_progress"}, true},
        {"a status in another case", empty, {.status = "in_progress"}, false},
        {"its language", picture, {.language = "fr"}, true},
        {"a language that it does not have", empty, {.language = "fr"}, false},
        {"filed, though the key is empty", picture, {.filled = Filled::yes}, true},
        {"filed is not empty", picture, {.filled = Filled::no}, false},
        {"no specification is not filed", empty, {.filled = Filled::yes}, false},
        {"one of two does not hold", picture, {.search = "salt", .family = "audio"}, false},
    };
    for (const auto& [what, row, filter, passes] : cases)
        EXPECT_EQ(matches(DeliverableCard(row), filter, queryOf(filter.search)), passes) << what;
}

TEST(DeliverableFilterTest, choicesAreWhatTheRowsHaveByCodePoint)
{
    DeliverableCards cards{std::make_shared<DeliverableCard>(picture)};
    for (const auto* status : {"in_progress", "In_progress", "approved", "in_progress", "\U0001F3AC", "\uFF21"})
        cards.append(std::make_shared<DeliverableCard>(Deliverable{.id = "x", .status = status}));
    auto values = filterValues(cards);
    EXPECT_THAT(values.statuses, ElementsAre("All", "In_progress", "approved", "in_progress", "\uFF21", "\U0001F3AC"));
    EXPECT_THAT(values.languages, ElementsAre("All", "fr")) << "rows without a language add nothing";
}

TEST(DeliverableFilterTest, ordersAreByTheUsersLanguageAndLeaveWhatIsTheSameAsThePlatformHasIt)
{
    DeliverableCards cards;
    for (const auto* label : {"Reel 10", "reel 2", "Émile", "Zoo", "Eta", "Reel 2"})
        cards.append(std::make_shared<DeliverableCard>(
            Deliverable{.id = label, .label = label, .status = cards.size() % 2 == 0 ? "qc_failed" : "approved"}));
    const std::pair<QString, const char*> cases[] = {
        {DeliverableOrder::platform, "Reel 10|reel 2|Émile|Zoo|Eta|Reel 2"},
        {DeliverableOrder::name, "Émile|Eta|reel 2|Reel 2|Reel 10|Zoo"},
        {DeliverableOrder::status, "reel 2|Zoo|Reel 2|Reel 10|Émile|Eta"}};
    for (const auto& [order, names] : cases) {
        QStringList shown;
        for (const auto& card : sorted(cards, order))
            shown.append(card->title);
        EXPECT_EQ(shown.join('|'), names) << order.toStdString();
    }
}

TEST(DeliverableCardTest, saysWhereItBelongsInWhichLanguageAndHowLarge)
{
    auto sized = picture;
    sized.spec->insert("assetBytes", "734003200");
    EXPECT_EQ(DeliverableCard(sized).details, "Salt · French · 734.0 MB");
    EXPECT_EQ(DeliverableCard(empty).details, "");
    EXPECT_EQ(DeliverableCard(Deliverable{.id = "3", .kind = "qc_report"}).title, "QC report") << "without a label";
}

TEST(FiledFileTest, isDescribedAsFarAsThePlatformDoes)
{
    EXPECT_FALSE(filedFile(empty));
    QMap<QString, QString> spec{{"assetObject", "deliveries/salt/7/reel one.mov/"},
                                {"assetDuration", "soon"},
                                {"assetWidth", "3840"},
                                {"assetBytes", "many"}};
    auto bare = filedFile({.id = "1", .spec = spec});
    EXPECT_EQ(bare->name, "The delivered file");
    EXPECT_EQ(bare->saveName, "reel one.mov");
    EXPECT_EQ(bare->details, "");
    spec.insert({{"assetFilename", "S1.mov"},
                 {"assetBytes", "70000000"},
                 {"assetType", "video/quicktime"},
                 {"assetDuration", "5412.04"},
                 {"assetHeight", "2160"}});
    auto full = filedFile({.id = "1", .spec = spec});
    EXPECT_EQ(full->name, "S1.mov");
    EXPECT_EQ(full->saveName, "S1.mov");
    EXPECT_EQ(full->details, "70.0 MB · video/quicktime · 1h 30m · 3840 × 2160");
}

} // namespace
} // namespace palvera
