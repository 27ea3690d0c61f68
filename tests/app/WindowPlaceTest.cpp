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
    EXPECT_TRUE(WindowPlace::isReachable({100, 100, 800, 600}, screens));
    EXPECT_TRUE(WindowPlace::isReachable({1900, 600, 800, 600}, screens)) << "its title is on the second";
    EXPECT_FALSE(WindowPlace::isReachable({4000, 100, 800, 600}, screens)) << "a screen that is gone";
    EXPECT_FALSE(WindowPlace::isReachable({100, -300, 800, 600}, screens)) << "its title is above the top";
    EXPECT_FALSE(WindowPlace::isReachable({1850, 1070, 800, 600}, screens));
    EXPECT_FALSE(WindowPlace::isReachable({0, 0, 800, 600}, {}));
}

} // namespace
} // namespace palvera
