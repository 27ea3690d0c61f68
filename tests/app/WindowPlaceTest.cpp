#include "app/WindowPlace.h"
#include "app/PanelPlace.h"
#include "tests/support/QtPrinting.h"

namespace palvera {
namespace {

TEST(WindowPlaceTest, takesWhatMakesSense)
{
    EXPECT_EQ(WindowPlace::parse("10,20,800,600"), QRect(10, 20, 800, 600));
    EXPECT_EQ(WindowPlace::parse("-1920,0,800,600,maximized"), QRect(-1920, 0, 800, 600));
    for (const char* nonsense : {"", "10,20,800", "a,b,c,d", "0,0,5,5", "0,0,99999999999,600", "0,0,-800,600"})
        EXPECT_FALSE(WindowPlace::parse(nonsense)) << nonsense;
}

TEST(WindowPlaceTest, putsTheTitleBarWhereOneCanReachIt)
{
    const QList<QRect> screens = {{0, 0, 1920, 1080}, {1920, 0, 1280, 720}};
    const std::tuple<const char*, int, int, std::optional<QPoint>> cases[] = {
        {"in the middle", 100, 100, QPoint(100, 100)},
        {"its title on the second screen", 1900, 600, QPoint(1900, 600)},
        {"on a screen that is gone", 4000, 100, {}},
        {"its title far above the top", 100, -300, {}},
        {"its title a little above the top", 100, -20, QPoint(100, 0)},
        {"enough of its title at the left", -680, 100, QPoint(-680, 100)},
        {"a narrow sliver at the left", -681, 100, {}},
        {"a narrow sliver at the right", 3200 - 119, 100, {}},
        {"too little of its title above the bottom", 100, 1080 - 19, {}},
    };
    for (const auto& [where, x, y, wanted] : cases) {
        const auto found = WindowPlace::reachable({x, y, 800, 600}, screens);
        EXPECT_EQ(found ? std::optional(found->topLeft()) : std::nullopt, wanted) << where;
    }
    EXPECT_FALSE(WindowPlace::reachable({0, 0, 800, 600}, {}));
}

TEST(PanelPlaceTest, opensBesideTheWindowOrBelowItsToolbar)
{
    const QRect screen(0, 0, 1920, 1080);
    const std::tuple<const char*, QRect, QRect, QRect> cases[] = {
        // the window's frame, whose toolbar ends 80 below its top, the screen, the panel
        {"at its right", {100, 200, 1080, 720}, screen, {1192, 200, 420, 570}},
        {"at its left", {800, 700, 1080, 720}, screen, {368, 510, 420, 570}},
        {"maximised", screen, screen, {1480, 92, 420, 570}},
        {"low", {300, 600, 1400, 720}, screen, {1480, 692, 420, 388}},
        {"too low for any", {300, 1000, 1400, 720}, screen, {1480, 810, 420, 270}},
        {"on a small screen to the left", {-910, 0, 910, 512}, {-910, 0, 910, 512}, {-440, 92, 420, 420}},
    };
    for (const auto& [how, window, on, wanted] : cases)
        EXPECT_EQ(PanelPlace::choose({420, 570}, window, window.top() + 80, on, 270), wanted) << how;
}

} // namespace
} // namespace palvera
