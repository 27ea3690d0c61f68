#include "service/InternetDate.h"
#include "service/AssetRecords.h"
#include "service/BinRecords.h"
#include "support/QtPrinting.h"

namespace palvera {
namespace {

TEST(InternetDateTest, isReadWithAndWithoutAFractionAndNeverWithoutAZone)
{
    const auto utc = [](int milliseconds) { return QDateTime({2026, 1, 31}, {12, 30, 5, milliseconds}, Qt::UTC); };
    const std::pair<const char*, std::optional<QDateTime>> cases[] = {
        {"2026-01-31T12:30:05Z", utc(0)},          {"2026-01-31T12:30:05.25Z", utc(250)},
        {"2026-01-31T12:30:05.123456Z", utc(123)}, {"2026-01-31T14:30:05+02:00", utc(0)},
        {"2026-01-31T11:00:05.007-01:30", utc(7)},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(parseInternetDate(text), expected) << text;
    for (const char* none : {"2026-02-31T12:30:05Z", "2026-01-31T25:30:05Z", "2026-01-31T12:30:05",
                             "2026-01-31 12:30:05Z", "2026-01-31", ""})
        EXPECT_EQ(parseInternetDate(none), std::nullopt) << none;
    const QString moment = "2026-01-31T12:30:05Z";
    EXPECT_EQ((OrgAssetFile{.key = "k", .rowId = "r", .deliveredAt = moment}).deliveredDate(), utc(0));
    EXPECT_EQ((BinObject{.key = "k", .name = "k", .updatedAt = moment}).updatedDate(), utc(0));
}

} // namespace
} // namespace palvera
