#include "screens/panel/SpeedTraceShape.h"

#include "tests/support/QtPrinting.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

using testing::ElementsAre;

TEST(SpeedTraceShapeTest, thePeakIsNamedInThousandsOrMillions)
{
    const std::vector<std::pair<QList<double>, QString>> cases = {
        {{}, "0K"},           {{0, 0}, "0K"},      {{850'000, 3}, "850K"},   {{999'499}, "999K"},
        {{999'999}, "1000K"}, {{1'000'000}, "1M"}, {{12'400'000, 1}, "12M"}, {{1'500'000}, "2M"}};
    for (const auto& [samples, text] : cases)
        EXPECT_EQ(peakText(samples), text);
}

TEST(SpeedTraceShapeTest, thePeakTouchesTheTopAndNothingTheBottom)
{
    EXPECT_THAT(tracePoints({0, 50, 100}, 1, {200, 34}),
                ElementsAre(QPointF(0, 33), QPointF(100, 17), QPointF(200, 1)));
    EXPECT_THAT(tracePoints({0, 0}, 1, {200, 34}), ElementsAre(QPointF(0, 33), QPointF(200, 33)));
    EXPECT_TRUE(tracePoints({7}, 1, {200, 34}).isEmpty());
    EXPECT_TRUE(tracePoints({}, 1, {200, 34}).isEmpty());
}

TEST(SpeedTraceShapeTest, aRunningTransferUsesItsShareOfTheWidth)
{
    EXPECT_EQ(tracePoints({1, 1, 1}, 0.5, {200, 34}).last().x(), 100);
    EXPECT_EQ(tracePoints({1, 1}, 0, {200, 34}).last().x(), 4) << "never less than a fiftieth";
    EXPECT_EQ(tracePoints({1, 1}, 7, {200, 34}).last().x(), 200);
}

TEST(SpeedTraceShapeTest, fastIsGreenAndSlowIsRed)
{
    EXPECT_NEAR(traceColor(100, 100).hsvHueF(), 0.33, 0.001);
    EXPECT_NEAR(traceColor(50, 100).hsvHueF(), 0.165, 0.001);
    EXPECT_NEAR(traceColor(0, 100).hsvHueF(), 0, 0.001);
    EXPECT_NEAR(traceColor(50, 100).hsvSaturationF(), 0.85, 0.001);
    EXPECT_NEAR(traceColor(50, 100).valueF(), 0.92, 0.001);
}

} // namespace
} // namespace palvera
