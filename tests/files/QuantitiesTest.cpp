#include "files/Quantities.h"

#include "support/QtPrinting.h"

#include <cmath>
#include <limits>

namespace palvera {
namespace {

constexpr auto most = std::numeric_limits<qint64>::max();

TEST(QuantitiesTest, bytesKeepTheirDecimals)
{
    const std::pair<qint64, QString> cases[] = {{-5, "0 KB"},
                                                {1, "1 KB"},
                                                {999'499, "999 KB"},
                                                {999'500, "1.0 MB"},
                                                {12'400'000, "12.4 MB"},
                                                {999'949'999, "999.9 MB"},
                                                {999'950'000, "1.0 GB"},
                                                {999'949'999'999, "999.9 GB"},
                                                {1'070'000'000'000, "1.1 TB"},
                                                {most, "9223372.0 TB"}};
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(byteCountText(bytes), text);
    EXPECT_EQ(rateText(98'400'000.9), "98.4 MB/s");
    EXPECT_EQ(rateText(-1), "0 KB/s");
    EXPECT_EQ(rateText(1e30), "9000000.0 TB/s");
}

TEST(QuantitiesTest, durationsAreRoundedDown)
{
    const auto infinity = std::numeric_limits<double>::infinity();
    const std::pair<double, QString> cases[] = {
        {0, "0s"},           {59.9, "59s"}, {60, "1m 0s"},   {3599.9, "59m 59s"}, {3600, "1h 0m"}, {5412.04, "1h 30m"},
        {360000, "100h 0m"}, {-0.1, "—"},   {infinity, "—"}, {std::nan(""), "—"}, {1e300, "—"}};
    for (const auto& [seconds, text] : cases)
        EXPECT_EQ(durationText(seconds), text) << seconds;
}

TEST(QuantitiesTest, percentagesAreWholeAndNeverEarly)
{
    const std::tuple<qint64, qint64, int> cases[] = {
        {5, 0, 0},     {-1, 10, 0},          {29, 100, 29},           {2, 3, 66}, {999'999, 1'000'000, 99},
        {11, 10, 100}, {most - 1, most, 99}, {most / 2 + 1, most, 50}};
    for (const auto& [sent, total, percent] : cases)
        EXPECT_EQ(percentOf(sent, total), percent) << sent << " of " << total;
    EXPECT_EQ(fractionOf(3, 0), 0);
    EXPECT_EQ(fractionOf(30, 20), 1);
    EXPECT_EQ(fractionOf(5, 20), 0.25);
}

} // namespace
} // namespace palvera
