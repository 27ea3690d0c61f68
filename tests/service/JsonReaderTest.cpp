#include "support/Json.h"
#include "support/QtPrinting.h"

#include <limits>

namespace palvera {
namespace {

constexpr qint64 most = std::numeric_limits<qint64>::max();
constexpr qint64 least = std::numeric_limits<qint64>::min();

TEST(JsonReaderTest, anIntegerHasNoFractionAndFits64Bits)
{
    const struct {
        const char* value;
        std::optional<qint64> integer, byteCount; // the second may also be written as a text
    } cases[] = {
        {"0", 0, 0},
        {"-7", -7, -7},
        {"2.0", 2, 2},
        {"9007199254740993", 9007199254740993, 9007199254740993},
        {"9223372036854775807", most, most},
        {"-9223372036854775808", least, least},
        {"\"73400320\"", {}, 73400320},
        {"\"+5\"", {}, 5},
        {"\"-12\"", {}, -12},
        {"\"9223372036854775807\"", {}, most},
        {"\"-9223372036854775808\"", {}, least},
    };
    for (const auto& each : cases) {
        const auto object = jsonObject("{\"n\":" + QByteArray(each.value) + '}');
        EXPECT_EQ(JsonReader(object).lenient<qint64>("n"), each.integer) << each.value;
        EXPECT_EQ(JsonReader(object).byteCount("n"), each.byteCount) << each.value;
        EXPECT_EQ(JsonReader(jsonObject(QJsonDocument(object).toJson())).byteCount("n"), each.byteCount)
            << each.value << " written and read again";
    }
    for (const char* none :
         {"2.5", "9223372036854775808", "-9223372036854777857", "1e300", "true", "null", "[1]", "{}"})
        EXPECT_EQ(JsonReader(jsonObject("{\"n\":" + QByteArray(none) + '}')).byteCount("n"), std::nullopt) << none;
    for (const char* none :
         {"", "-", "--1", "12a", " 12", "12 ", "1.0", "1e3", "0x10", "1,000", "٣", "9223372036854775808"})
        EXPECT_EQ(json::parseInteger(none), std::nullopt) << none;
}

TEST(JsonReaderTest, aDocumentIsOneObject)
{
    EXPECT_EQ(json::parseObject("{\"a\":1}").size(), 1);
    for (const char* bytes : {"", "[]", "[{}]", "1", "null", "{", "{} {}", "{\"a\":\"\xff\"}", "<html>"})
        EXPECT_THROW(json::parseObject(bytes), DecodingError) << bytes;
    const auto nested = [](int levels) {
        return QByteArray("{\"a\":") + QByteArray(levels, '[') + QByteArray(levels, ']') + '}';
    };
    const auto listed = [](int values) {
        return QByteArray("{\"a\\\"[\":[1") + QByteArray(",1").repeated(values - 1) + "]}";
    };
    EXPECT_EQ(json::parseObject(nested(63)).size(), 1);
    EXPECT_EQ(json::parseObject(listed(1'999'000)).size(), 1);
    for (const auto& bytes : {nested(64), nested(1'000'000), listed(2'000'001)})
        EXPECT_THROW(json::parseObject(bytes), DecodingError);
}

} // namespace
} // namespace palvera
