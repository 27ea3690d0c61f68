#include "transfer/TransferLog.h"

#include "support/Files.h"
#include "support/QtPrinting.h"
#include "support/Simulation.h"

#include <QDateTime>
#include <QTemporaryDir>

namespace palvera {
namespace {

using namespace std::chrono_literals;

QString timeOf(const Clock& clock)
{
    return QDateTime::fromSecsSinceEpoch(std::chrono::system_clock::to_time_t(clock.wallNow())).toString("HH:mm:ss");
}

TEST(TransferLogTest, writesDecimalUnitsInFixedColumns)
{
    EXPECT_EQ(partLine(17, 104'857'600, 6.3), "part   17   104.9 MB     6.3 s   16.64 MB/s");
    EXPECT_EQ(partLine(10000, 5, 0), "part 10000     0.0 MB     0.0 s    0.00 MB/s");
    EXPECT_EQ(doneLine(53'690'000'000, 2500), "done  53.69 GB in 2500 s  average 21.48 MB/s");
    EXPECT_EQ(doneLine(10, 0), "done  0.00 GB in 0 s  average 0.00 MB/s");
}

TEST(TransferLogTest, appendsOneLineEachInAFolderMadeOnTheWay)
{
    QTemporaryDir folder;
    ManualClock clock;
    QString start = timeOf(clock);
    TransferLog first(folder.path(), "film.mov", clock);
    clock.advance(10s);
    TransferLog second(folder.path(), "evil\nname.mov", clock);
    first.part(1, 1'000'000, 2);
    first.done(2'000'000);
    TransferLog("/proc/nowhere", "film.mov", clock).done(1); // where no folder can be made, nothing is said
    EXPECT_THAT(QString::fromUtf8(readFile(folder.filePath("Logs/Palvera/transfers.log"))).split('\n'),
                testing::ElementsAre("── " + start + " start film.mov", "── " + timeOf(clock) + " start evil name.mov",
                                     timeOf(clock) + " part    1     1.0 MB     2.0 s    0.50 MB/s",
                                     timeOf(clock) + " done  0.00 GB in 10 s  average 0.20 MB/s", ""));
}

} // namespace
} // namespace palvera
