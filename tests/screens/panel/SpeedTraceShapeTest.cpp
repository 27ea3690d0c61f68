#include "screens/panel/SpeedTraceShape.h"

#include "tests/support/QtPrinting.h"

namespace palvera {
namespace {

using testing::ElementsAre;

TEST(SpeedTraceShapeTest, thePeakIsNamedInThousandsOrMillions)
{
    const std::pair<QList<double>, QString> cases[] = {
        {{}, "0K"},          {{0, 0}, "0K"},           {{850'000, 3}, "850K"},
        {{1'000'000}, "1M"}, {{12'400'000, 1}, "12M"}, {{1'500'000}, "2M"}};
    for (const auto& [samples, text] : cases)
        EXPECT_EQ(peakText(samples), text);
}

TEST(SpeedTraceShapeTest, thePeakTouchesTheTopAndWhatIsUnderWayUsesItsShareOfTheWidth)
{
    EXPECT_THAT(tracePoints({0, 50, 100}, 1, {200, 34}),
                ElementsAre(QPointF(0, 33), QPointF(100, 17), QPointF(200, 1)));
    EXPECT_THAT(tracePoints({0, 0}, 1, {200, 34}), ElementsAre(QPointF(0, 33), QPointF(200, 33)));
    EXPECT_TRUE(tracePoints({7}, 1, {200, 34}).isEmpty());
    EXPECT_EQ(tracePoints({1, 1, 1}, 0.5, {200, 34}).last().x(), 100);
    EXPECT_EQ(tracePoints({1, 1}, 0, {200, 34}).last().x(), 4) << "never less than a fiftieth";
    EXPECT_EQ(tracePoints({1, 1}, 7, {200, 34}).last().x(), 200);
}

TEST(SpeedTraceShapeTest, fastIsGreenAndSlowIsRed)
{
    for (const auto& [sample, hue] : {std::pair(100.0, 0.33), std::pair(50.0, 0.165), std::pair(0.0, 0.0)})
        EXPECT_NEAR(traceColor(sample, 100).hsvHueF(), hue, 0.001);
}

} // namespace
} // namespace palvera
