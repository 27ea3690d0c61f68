#include "service/Deliverable.h"
#include "support/Json.h"
#include "support/QtPrinting.h"

namespace palvera {
namespace {

TEST(DeliverableTest, contextLineNamesShowPlaceAndTitle)
{
    using Text = std::optional<QString>;
    using Number = std::optional<qint64>;
    using Place = std::tuple<Text, Text, Text, Text, Number, Number>; // level, show, title, code, season, episode
    const std::pair<Place, Text> cases[] = {
        // Anything but an episode or a season: its title.
        {{{}, {}, {}, {}, {}, {}}, {}},
        {{{}, "Show", "Title", {}, 1, 2}, "Title"},
        {{"feature", "Show", {}, {}, {}, {}}, "Show"},
        // An episode.
        {{"episode", "Show", "Title", "X", 1, 3}, "Show · S1 E3 · Title"},
        {{"episode", "Show", "Title", "X", 0, 3}, "Show · Extras · Title"},
        {{"episode", "Show", "Show", "X", 2, 5}, "Show · S2 E5"},
        {{"episode", "Show", "Title", "X", 1, {}}, "Show · X · Title"},
        {{"episode", "Show", "Title", "X", {}, 3}, "Show · X · Title"},
        {{"episode", "Show", "Title", {}, {}, {}}, "Show · Title"},
        {{"episode", {}, "Title", "X", {}, {}}, "Title · X"},
        {{"episode", {}, {}, {}, 1, 0}, "S1 E0"},
        {{"episode", {}, {}, {}, {}, {}}, {}},
        // A season.
        {{"season", "Show", "Title", "X", 4, 3}, "Show · Season 4"},
        {{"season", "Show", "Title", {}, 0, {}}, "Show · Extras"},
        {{"season", {}, "Title", {}, {}, {}}, "Title"},
        {{"season", {}, {}, "X", {}, 2}, {}},
    };
    for (const auto& [place, line] : cases) {
        Deliverable row{.id = "d"};
        std::tie(row.level, row.showName, row.titleName, row.episodeCode, row.seasonNumber, row.episodeNumber) = place;
        EXPECT_EQ(row.contextLine(), line) << line.value_or("none").toStdString();
    }
}

TEST(DeliverableTest, itsSpecificationKeepsOnlyItsTexts)
{
    EXPECT_EQ(decoded<Deliverable>(R"({"id":"d","spec":{"a":"1","b":2,"c":null,"d":true,"e":[],"f":{},"":"g"}})").spec,
              (QMap<QString, QString>{{"a", "1"}, {"", "g"}}));
}

TEST(DeliverableTest, expectsTheBytesOfItsSpecification)
{
    const auto expected = [](const QString& text) {
        return Deliverable{.id = "d", .spec = QMap<QString, QString>{{"assetBytes", text}}}.expectedBytes();
    };
    EXPECT_EQ(expected("5000000000"), 5'000'000'000);
    EXPECT_EQ(expected("4 GB"), std::nullopt);
    EXPECT_EQ(Deliverable{.id = "d"}.expectedBytes(), std::nullopt);
}

} // namespace
} // namespace palvera
