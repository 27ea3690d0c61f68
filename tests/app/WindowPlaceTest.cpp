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

TEST(WindowPlaceTest, knowsAPlaceThatNobodyCouldReach)
{
    const QList<QRect> screens = {{0, 0, 1920, 1080}, {1920, 0, 1280, 720}};
    const std::tuple<const char*, int, int, bool> cases[] = {
        {"in the middle", 100, 100, true},
        {"its title on the second screen", 1900, 600, true},
        {"on a screen that is gone", 4000, 100, false},
        {"its title above the top", 100, -300, false},
        {"half of its title above the top", 100, -20, true},
        {"too little of its title below the top", 100, -21, false},
        {"enough of its title at the left", -680, 100, true},
        {"a narrow sliver at the left", -681, 100, false},
        {"a narrow sliver at the right", 3200 - 119, 100, false},
        {"too little of its title above the bottom", 100, 1080 - 19, false},
    };
    for (const auto& [where, x, y, isReachable] : cases)
        EXPECT_EQ(WindowPlace::isReachable({x, y, 800, 600}, screens), isReachable) << where;
    EXPECT_FALSE(WindowPlace::isReachable({0, 0, 800, 600}, {}));
}

} // namespace
} // namespace palvera
