#include "service/JsonReader.h"
#include "support/Json.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>

#include <limits>

namespace palvera {
namespace {

constexpr qint64 most = std::numeric_limits<qint64>::max();
constexpr qint64 least = std::numeric_limits<qint64>::min();

/// A record that holds others, to see how a failure inside is named.
struct Leaf {
    qint64 size = 0;

    static Leaf fromJson(const QJsonObject& object) { return {.size = JsonReader(object).required<qint64>("size")}; }
};
struct Tree {
    QList<Leaf> leaves;

    static Tree fromJson(const QJsonObject& object)
    {
        return {.leaves = JsonReader(object).required<QList<Leaf>>("leaves")};
    }
};

template <class Action>
DecodingError failureOf(Action action)
{
    try {
        action();
    } catch (const DecodingError& error) {
        return error;
    }
    throw std::logic_error("it decoded");
}

TEST(JsonReaderTest, anIntegerHasNoFractionAndFits64Bits)
{
    const struct {
        const char* text;
        std::optional<qint64> expected;
    } cases[] = {
        {"0", 0},
        {"-0", 0},
        {"1", 1},
        {"-7", -7},
        {"2.0", 2},
        {"1e3", 1000},
        {"9007199254740993", 9007199254740993},
        {"9223372036854775807", most},
        {"-9223372036854775808", least},
        {"2.5", {}},
        {"9223372036854775808", {}},
        {"-9223372036854777857", {}},
        {"1e300", {}},
        {"\"1\"", {}},
        {"true", {}},
        {"null", {}},
        {"[1]", {}},
    };
    for (const auto& each : cases) {
        const auto object = jsonObject("{\"n\":" + QByteArray(each.text) + '}');
        EXPECT_EQ(JsonReader(object).lenient<qint64>("n"), each.expected) << each.text;
    }
}

TEST(JsonReaderTest, largeIntegersSurviveBeingWritten)
{
    for (const qint64 number : {most, least, qint64(9007199254740993)}) {
        const auto bytes = QJsonDocument(QJsonObject{{"n", number}}).toJson();
        EXPECT_EQ(JsonReader(jsonObject(bytes)).required<qint64>("n"), number);
    }
}

TEST(JsonReaderTest, aTextIsAWholeDecimalInteger)
{
    const struct {
        const char* text;
        std::optional<qint64> expected;
    } cases[] = {
        {"0", 0},
        {"73400320", 73400320},
        {"+5", 5},
        {"-12", -12},
        {"007", 7},
        {"", {}},
        {"-", {}},
        {"+", {}},
        {"12a", {}},
        {" 12", {}},
        {"12 ", {}},
        {"1.0", {}},
        {"1e3", {}},
        {"0x10", {}},
        {"1,000", {}},
        {"--1", {}},
        {"٣", {}},
        {"9223372036854775807", most},
        {"-9223372036854775808", least},
        {"9223372036854775808", {}},
    };
    for (const auto& each : cases)
        EXPECT_EQ(json::parseInteger(each.text), each.expected) << each.text;
}

TEST(JsonReaderTest, requiredFailsOnMissingNullAndOtherTypes)
{
    const auto object = jsonObject(R"({"null":null,"number":1,"list":["a",2],"text":"x"})");
    const JsonReader reader(object);
    EXPECT_EQ(reader.required<QString>("text"), "x");
    EXPECT_EQ(failureOf([&] { reader.required<QString>("none"); }).text(), "“none” is missing.");
    EXPECT_EQ(failureOf([&] { reader.required<QString>("null"); }).text(), "“null” is missing.");
    EXPECT_EQ(failureOf([&] { reader.required<QString>("number"); }).text(), "“number” is not what it should be.");
    EXPECT_EQ(failureOf([&] { reader.required<bool>("number"); }).key(), "number");
    EXPECT_EQ(failureOf([&] { reader.required<QList<QString>>("list"); }).key(), "list[1]");
    EXPECT_EQ(failureOf([&] { reader.required<QList<QString>>("text"); }).key(), "text");
}

TEST(JsonReaderTest, optionalMayBeMissingOrNullButNotOfAnotherType)
{
    const auto object = jsonObject(R"({"null":null,"number":1})");
    const JsonReader reader(object);
    EXPECT_EQ(reader.optional<QString>("none"), std::nullopt);
    EXPECT_EQ(reader.optional<QString>("null"), std::nullopt);
    EXPECT_EQ(reader.optional<qint64>("number"), 1);
    EXPECT_EQ(failureOf([&] { reader.optional<QString>("number"); }).key(), "number");
}

TEST(JsonReaderTest, namesTheWayToAFailure)
{
    const auto failure = failureOf([] { decoded<Tree>(R"({"leaves":[{"size":1},{"size":"2"}]})"); });
    EXPECT_EQ(failure.key(), "leaves[1].size");
    EXPECT_EQ(failureOf([] { decoded<Tree>(R"({"leaves":[{"size":1},3]})"); }).key(), "leaves[1]");
}

TEST(JsonReaderTest, aDocumentIsOneObject)
{
    EXPECT_EQ(json::parseObject("{\"a\":1}").size(), 1);
    for (const char* bytes : {"", "[]", "[{}]", "1", "null", "{", "{} {}", "{\"a\":\"\xff\"}", "<html>"})
        EXPECT_EQ(failureOf([&] { json::parseObject(bytes); }).key(), "") << bytes;
}

TEST(JsonReaderTest, leavesAbsentOptionalsOut)
{
    QJsonObject object;
    json::put(object, "none", std::optional<QString>());
    json::put(object, "empty", std::optional<QString>(""));
    json::put(object, "no", std::optional(false));
    EXPECT_EQ(object, jsonObject(R"({"empty":"","no":false})"));
}

} // namespace
} // namespace palvera
