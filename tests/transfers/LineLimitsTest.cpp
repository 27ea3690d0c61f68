#include "transfers/LineLimits.h"

#include "files/Preferences.h"
#include "support/Files.h"
#include "support/QtPrinting.h"
#include "support/Simulation.h"

#include <QDateTime>

namespace palvera {
namespace {

using namespace std::chrono_literals;

TEST(LineLimitsTest, areReadAsUsersWriteThemOrRefused)
{
    const std::pair<const char*, std::optional<qint64>> rates[] = {
        {"20", 20'000'000}, {"0.5", 500'000}, {"0.1", 100'000}, {"off", 0},  {"0", {}},   {"0.09", {}},
        {"-3", {}},         {"20M", {}},      {"", {}},         {"nan", {}}, {"inf", {}}, {"1e9", {}}};
    for (const auto& [text, rate] : rates)
        EXPECT_EQ(rateFrom(text), rate) << text;
    for (const char* text : {"08:00-19:00", "22:30-06:00"})
        EXPECT_EQ(textOf(hoursFrom(text).value()), text);
    for (const char* text : {"", "08:00", "8-19", "08:00-24:00", "08:00-08:00", "08:00-19:00-20:00", "always"})
        EXPECT_FALSE(hoursFrom(text)) << text;
}

TEST(LineLimitsTest, holdInTheirHoursOverMidnightToo)
{
    const struct {
        const char* hours;
        const char* time;
        bool holds;
    } cases[] = {{"08:00-19:00", "07:59", false}, {"08:00-19:00", "08:00", true},  {"08:00-19:00", "18:59", true},
                 {"08:00-19:00", "19:00", false}, {"22:00-06:00", "23:00", true},  {"22:00-06:00", "05:59", true},
                 {"22:00-06:00", "06:00", false}, {"22:00-06:00", "21:59", false}, {"", "03:00", true}};
    for (const auto& [hours, time, holds] : cases) {
        const LineLimits limits{.rates = {.up = 7, .down = 9}, .hours = hoursFrom(hours)};
        EXPECT_EQ(limits.at(QTime::fromString(time, "HH:mm")), holds ? limits.rates : LineLimits::Rates{})
            << hours << " at " << time;
    }
}

/// By the clock, and as another program stores them meanwhile.
TEST(LineLimitsTest, areKeptAsTheClockAndThePreferencesSay)
{
    QTemporaryDir folder;
    const auto path = folder.filePath("preferences");
    Preferences ours(path);
    writeFile(path, "[General]\npv.uploadLimit=many\npv.downloadLimit=-5\npv.limitHours=8-19\n");
    ours.reread();
    EXPECT_EQ(lineLimitsIn(ours), LineLimits{});

    Simulation world;
    const auto now = QDateTime::fromSecsSinceEpoch(Clock::WallTime::clock::to_time_t(world.clock.wallNow())).time();
    const LineLimits limits{.rates = {.up = 1'000'000, .down = 2'000'000},
                            .hours =
                                LineLimits::Hours{.from = QTime(now.addSecs(600).hour(), now.addSecs(600).minute()),
                                                  .to = QTime(now.addSecs(1200).hour(), now.addSecs(1200).minute())}};
    const LineShares shares;
    const auto upAfter = [&](std::chrono::seconds duration) {
        world.pass(duration);
        return shares.up->bytesPerSecond();
    };
    world.start(keepLineLimits(ours, world.clock, shares));
    storeLineLimits(ours, limits);
    EXPECT_EQ(lineLimitsIn(ours), limits);
    EXPECT_EQ(upAfter(530s), 0);
    EXPECT_EQ(upAfter(80s), 1'000'000);
    EXPECT_EQ(shares.down->bytesPerSecond(), 2'000'000);
    EXPECT_EQ(upAfter(600s), 0);
    writeFile(path, "[General]\npv.uploadLimit=3000000\n");
    EXPECT_EQ(upAfter(61s), 3'000'000);
    EXPECT_EQ(shares.down->bytesPerSecond(), 0);
}

} // namespace
} // namespace palvera
