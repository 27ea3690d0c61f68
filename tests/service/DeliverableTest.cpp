#include "service/Deliverable.h"
#include "service/JsonReader.h"
#include "support/Json.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

using Spec = QMap<QString, QString>;

TEST(DeliverableTest, needsNothingButItsId)
{
    EXPECT_EQ(decoded<Deliverable>(R"({"id":"d"})"), Deliverable{.id = "d"});
    EXPECT_THROW(decoded<Deliverable>(R"({"family":"video"})"), DecodingError);
    EXPECT_THROW(decoded<Deliverable>(R"({"id":1})"), DecodingError);
    EXPECT_THROW(decoded<Deliverables>(R"({"deliverables":[{"id":"d"},{}]})"), DecodingError);
}

TEST(DeliverableTest, dropsWhatIsOfAnotherType)
{
    EXPECT_EQ(decoded<Deliverable>(R"({"id":"d","family":1,"kind":null,"label":[],"status":{},"language":2,
        "territory":true,"purpose":null,"titleName":[],"episodeCode":5,"showName":{},"level":1,"seasonNumber":"2",
        "episodeNumber":1.5,"spec":"text"})"),
              Deliverable{.id = "d"});
}

TEST(DeliverableTest, decodesAndEncodesEveryMember)
{
    const char* text = R"({"id":"d","family":"f","kind":"k","label":"l","status":"s","language":"la","territory":"te",
        "purpose":"pu","titleName":"ti","episodeCode":"ec","showName":"sh","level":"episode","seasonNumber":2,
        "episodeNumber":5,"spec":{"a":"b"}})";
    const auto row = decoded<Deliverable>(text);
    const Deliverable expected{.id = "d",
                               .family = "f",
                               .kind = "k",
                               .label = "l",
                               .status = "s",
                               .language = "la",
                               .territory = "te",
                               .purpose = "pu",
                               .titleName = "ti",
                               .episodeCode = "ec",
                               .showName = "sh",
                               .level = "episode",
                               .seasonNumber = 2,
                               .episodeNumber = 5,
                               .spec = Spec{{"a", "b"}}};
    EXPECT_EQ(row, expected);
    EXPECT_EQ(row.toJson(), jsonObject(text));
    EXPECT_EQ(qHash(row, 7), qHash(expected, 7));
    EXPECT_EQ(Deliverable{.id = "d"}.toJson(),
              jsonObject(R"({"id":"d","family":"","kind":"","label":"","status":""})"));
}

TEST(DeliverableTest, aSpecificationKeepsOnlyItsTexts)
{
    EXPECT_EQ(decoded<Deliverable>(R"({"id":"d","spec":{"a":"1","b":2,"c":null,"d":true,"e":[],"f":{},"":"g"}})").spec,
              (Spec{{"a", "1"}, {"", "g"}}));
    EXPECT_EQ(decoded<Deliverable>(R"({"id":"d","spec":{"b":2}})").spec, Spec());
}

TEST(DeliverableTest, contextLineNamesShowPlaceAndTitle)
{
    using Text = std::optional<QString>;
    using Number = std::optional<qint64>;
    const struct {
        Text level, show, title, code;
        Number season, episode;
        Text expected;
    } cases[] = {
        // Anything but an episode or a season: its title.
        {{}, {}, {}, {}, {}, {}, {}},
        {{}, "Show", "Title", {}, 1, 2, "Title"},
        {"feature", "Show", {}, {}, {}, {}, "Show"},
        // An episode.
        {"episode", "Show", "Title", "X", 1, 3, "Show · S1 E3 · Title"},
        {"episode", "Show", "Title", "X", 0, 3, "Show · Extras · Title"},
        {"episode", "Show", "Title", "X", 0, {}, "Show · Extras · Title"},
        {"episode", "Show", "Show", "X", 2, 5, "Show · S2 E5"},
        {"episode", "Show", "Title", "X", 1, {}, "Show · X · Title"},
        {"episode", "Show", "Title", "X", {}, 3, "Show · X · Title"},
        {"episode", "Show", "Title", {}, {}, {}, "Show · Title"},
        {"episode", {}, "Title", "X", {}, {}, "Title · X"},
        {"episode", {}, {}, {}, 1, 0, "S1 E0"},
        {"episode", {}, {}, {}, {}, {}, {}},
        // A season.
        {"season", "Show", "Title", "X", 4, 3, "Show · Season 4"},
        {"season", "Show", "Title", {}, 0, {}, "Show · Extras"},
        {"season", {}, "Title", {}, {}, {}, "Title"},
        {"season", {}, {}, {}, 1, {}, "Season 1"},
        {"season", {}, {}, "X", {}, 2, {}},
    };
    for (const auto& each : cases) {
        const Deliverable row{.id = "d",
                              .titleName = each.title,
                              .episodeCode = each.code,
                              .showName = each.show,
                              .level = each.level,
                              .seasonNumber = each.season,
                              .episodeNumber = each.episode};
        EXPECT_EQ(row.contextLine(), each.expected) << each.expected.value_or("none").toStdString();
    }
}

TEST(DeliverableTest, expectsTheBytesOfItsSpecification)
{
    EXPECT_EQ(Deliverable{.id = "d"}.expectedBytes(), std::nullopt);
    EXPECT_EQ((Deliverable{.id = "d", .spec = Spec{}}).expectedBytes(), std::nullopt);
    EXPECT_EQ((Deliverable{.id = "d", .spec = Spec{{"assetBytes", ""}}}).expectedBytes(), std::nullopt);
    EXPECT_EQ((Deliverable{.id = "d", .spec = Spec{{"assetBytes", "4 GB"}}}).expectedBytes(), std::nullopt);
    EXPECT_EQ((Deliverable{.id = "d", .spec = Spec{{"assetBytes", "5000000000"}}}).expectedBytes(), 5'000'000'000);
}

} // namespace
} // namespace palvera
