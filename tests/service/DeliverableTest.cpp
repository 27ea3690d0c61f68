#include "service/Deliverable.h"
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

TEST(DeliverableTest, expectsTheBytesOfItsSpecification)
{
    Deliverable row{.id = "d"};
    EXPECT_EQ(row.expectedBytes(), std::nullopt);
    for (const auto& [text, bytes] : {std::pair("5000000000", std::optional(5'000'000'000)), {"4 GB", std::nullopt}}) {
        row.spec = {{"assetBytes", text}};
        EXPECT_EQ(row.expectedBytes(), bytes) << text;
    }
}

} // namespace
} // namespace palvera
