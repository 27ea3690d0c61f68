#include "app/WindowPlace.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

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

} // namespace
} // namespace palvera
