#include "service/BinRecords.h"
#include "service/InternetDate.h"
#include "service/JsonReader.h"
#include "support/Json.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

TEST(BinRecordsTest, anObjectNeedsNothingButItsKey)
{
    EXPECT_EQ(decoded<BinObject>(R"({"key":"a/b/c.mov"})"), (BinObject{.key = "a/b/c.mov", .name = "c.mov"}));
    EXPECT_EQ(decoded<BinObject>(R"({"key":"k","name":1,"size":[],"contentType":1,"updatedAt":2,"family":{},
                                     "previewUrl":false})"),
              (BinObject{.key = "k", .name = "k"}));
    EXPECT_THROW(decoded<BinObject>(R"({"name":"n"})"), DecodingError);
}

TEST(BinRecordsTest, anObjectIsNamedByThePlatformOrItsKey)
{
    EXPECT_EQ(decoded<BinObject>(R"({"key":"a/b","name":"N"})").name, "N");
    EXPECT_EQ(decoded<BinObject>(R"({"key":"a/b","name":""})").name, "");
    EXPECT_EQ(decoded<BinObject>(R"({"key":"a/b","name":null})").name, "b");
    EXPECT_EQ(decoded<BinObject>(R"({"key":"a/b/"})").name, "b");
    EXPECT_EQ(decoded<BinObject>(R"({"key":""})").name, "");
}

TEST(BinRecordsTest, aSizeIsANumberOrATextThatIsOne)
{
    const struct {
        const char* size;
        qint64 expected;
    } cases[] = {
        {"12", 12},
        {"12.0", 12},
        {"\"73400320\"", 73400320},
        {"\"-5\"", -5},
        {"\"+5\"", 5},
        {"1.5", 0},
        {"\"\"", 0},
        {"\"12a\"", 0},
        {"\"1.0\"", 0},
        {"null", 0},
        {"true", 0},
        {"{}", 0},
        {"\"9223372036854775808\"", 0},
        {"9007199254740993", 9007199254740993},
    };
    for (const auto& each : cases)
        EXPECT_EQ(decoded<BinObject>("{\"key\":\"k\",\"size\":" + QByteArray(each.size) + '}').size, each.expected)
            << each.size;
}

TEST(BinRecordsTest, aPageEndsWithoutACursor)
{
    const auto last = decoded<BinPage>(R"({"objects":[{"key":"k"}],"folders":null})");
    EXPECT_EQ(last, (BinPage{.objects = {{.key = "k", .name = "k"}}}));
    const auto page = decoded<BinPage>(R"({"objects":[],"folders":["a","b"],"nextCursor":"c"})");
    EXPECT_EQ(page, (BinPage{.folders = QList<QString>{"a", "b"}, .nextCursor = "c"}));
    EXPECT_THROW(decoded<BinPage>(R"({"folders":[]})"), DecodingError);
    EXPECT_THROW(decoded<BinPage>(R"({"objects":[],"folders":[1]})"), DecodingError);
    EXPECT_THROW(decoded<BinPage>(R"({"objects":[],"nextCursor":1})"), DecodingError);
}

TEST(BinRecordsTest, aDownloadNeedsAnAddress)
{
    EXPECT_EQ(decoded<BinDownload>(R"({"url":"https://s/x?a=%2F","filename":"f","expiresInSeconds":60})"),
              (BinDownload{.url = "https://s/x?a=%2F", .filename = "f", .expiresInSeconds = 60}));
    EXPECT_EQ(decoded<BinDownload>(R"({"url":"https://s/x"})"), BinDownload{.url = "https://s/x"});
    EXPECT_THROW(decoded<BinDownload>(R"({"filename":"f"})"), DecodingError);
    EXPECT_THROW(decoded<BinDownload>(R"({"url":"u","expiresInSeconds":1.5})"), DecodingError);
}

TEST(BinRecordsTest, aDateIsReadWithAndWithoutAFraction)
{
    const auto utc = [](int msec) { return QDateTime({2026, 1, 31}, {12, 30, 5, msec}, Qt::UTC); };
    const struct {
        const char* text;
        std::optional<QDateTime> expected;
    } cases[] = {
        {"2026-01-31T12:30:05Z", utc(0)},
        {"2026-01-31T12:30:05.25Z", utc(250)},
        {"2026-01-31T12:30:05.123456Z", utc(123)},
        {"2026-01-31T14:30:05+02:00", utc(0)},
        {"2026-01-31T11:00:05.007-01:30", utc(7)},
        {"2026-02-31T12:30:05Z", {}},
        {"2026-01-31T25:30:05Z", {}},
        {"2026-01-31T12:30:05", {}},
        {"2026-01-31 12:30:05Z", {}},
        {"2026-01-31", {}},
        {"", {}},
        {"yesterday", {}},
    };
    for (const auto& each : cases) {
        const BinObject object{.key = "k", .name = "k", .updatedAt = each.text};
        EXPECT_EQ(object.updatedDate(), each.expected) << each.text;
    }
    EXPECT_EQ((BinObject{.key = "k", .name = "k"}).updatedDate(), std::nullopt);
}

} // namespace
} // namespace palvera
