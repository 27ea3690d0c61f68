#include "screens/deliverables/DeliverableFilter.h"
#include "screens/deliverables/FiledFile.h"

#include "tests/support/QtPrinting.h"

#include <gmock/gmock.h>

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

bool passes(const Deliverable& row, const DeliverableFilter& filter)
{
    return matches(DeliverableCard(row), filter, queryOf(filter.search));
}

TEST(DeliverableFilterTest, rowsPassWhatTheyMatch)
{
    struct Case {
        const char* what;
        Deliverable row;
        DeliverableFilter filter;
        bool passes;
    };
    const std::vector<Case> cases = {
        {"nothing is set", picture, {}, true},
        {"only spaces are searched for", picture, {.search = "  \t"}, true},
        {"a part of the label, in any case", picture, {.search = " PICTURE é "}, true},
        {"accents are not ignored", picture, {.search = "emile"}, false},
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
        {"no specification is empty", empty, {.filled = Filled::no}, true},
        {"one of two does not hold", picture, {.search = "salt", .family = "audio"}, false},
    };
    for (const auto& each : cases)
        EXPECT_EQ(passes(each.row, each.filter), each.passes) << each.what;
}

TEST(DeliverableFilterTest, theSearchAloneIsNoFilter)
{
    EXPECT_FALSE(DeliverableFilter{.search = "salt"}.isSet());
    EXPECT_TRUE(DeliverableFilter{.status = "x"}.isSet());
    EXPECT_TRUE(DeliverableFilter{.filled = Filled::no}.isSet());
}

TEST(DeliverableFilterTest, choicesAreWhatTheRowsHaveByCodePoint)
{
    DeliverableCards cards;
    for (const auto* status : {"in_progress", "In_progress", "approved", "in_progress", "\U0001F3AC", "\uFF21"})
        cards.append(std::make_shared<DeliverableCard>(Deliverable{.id = "x", .status = status}));
    cards.append(std::make_shared<DeliverableCard>(picture));
    auto values = filterValues(cards);
    EXPECT_THAT(values.statuses, ElementsAre("All", "In_progress", "approved", "in_progress", "\uFF21", "\U0001F3AC"));
    EXPECT_THAT(values.languages, ElementsAre("All", "fr")) << "rows without a language add nothing";
    EXPECT_THAT(filterValues({}).families, ElementsAre("All"));
}

TEST(DeliverableFilterTest, aRowSaysWhereItBelongsInWhichLanguageAndHowLarge)
{
    auto sized = picture;
    sized.spec->insert("assetBytes", "734003200");
    EXPECT_EQ(DeliverableCard(sized).details, "Salt · French · 734.0 MB");
    EXPECT_EQ(DeliverableCard(empty).details, "");
    EXPECT_EQ(DeliverableCard(Deliverable{.id = "3", .kind = "qc_report"}).title, "QC report") << "without a label";
}

TEST(FiledFileTest, isDescribedAsFarAsThePlatformDoes)
{
    auto filed = [](const QMap<QString, QString>& more) {
        auto spec = more;
        spec.insert("assetObject", "deliveries/salt/7/reel one.mov/");
        return filedFile({.id = "1", .spec = spec});
    };
    EXPECT_FALSE(filedFile(empty));
    auto bare = filed({});
    EXPECT_EQ(bare->name, "The delivered file");
    EXPECT_EQ(bare->saveName, "reel one.mov");
    EXPECT_EQ(bare->details, "");
    auto full = filed({{"assetFilename", "S1.mov"},
                       {"assetBytes", "70000000"},
                       {"assetType", "video/quicktime"},
                       {"assetDuration", "5412.04"},
                       {"assetWidth", "3840"},
                       {"assetHeight", "2160"}});
    EXPECT_EQ(full->name, "S1.mov");
    EXPECT_EQ(full->saveName, "S1.mov");
    EXPECT_EQ(full->details, "70.0 MB · video/quicktime · 1h 30m · 3840 × 2160");
    EXPECT_EQ(filed({{"assetDuration", "soon"}, {"assetWidth", "3840"}, {"assetBytes", "many"}})->details, "");
}

} // namespace
} // namespace palvera
