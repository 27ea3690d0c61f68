#include "transfer/TransferLog.h"

#include "support/Simulation.h"

#include "support/QtPrinting.h"

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace palvera {
namespace {

using namespace std::chrono_literals;

struct TransferLogTest : testing::Test {
    QTemporaryDir folder;
    ManualClock clock;

    QStringList lines() const
    {
        QFile file(folder.filePath("Logs/Palvera/transfers.log"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QString::fromUtf8(file.readAll()).split('\n');
    }
    QString now() const
    {
        return QDateTime::fromSecsSinceEpoch(
                   std::chrono::duration_cast<std::chrono::seconds>(clock.wallNow().time_since_epoch()).count())
            .toString("HH:mm:ss");
    }
};

TEST_F(TransferLogTest, writesDecimalUnitsInFixedColumns)
{
    EXPECT_EQ(partLine(17, 104'857'600, 6.3), "part   17   104.9 MB     6.3 s   16.64 MB/s");
    EXPECT_EQ(partLine(10000, 5, 0), "part 10000     0.0 MB     0.0 s    0.00 MB/s");
    EXPECT_EQ(doneLine(53'690'000'000, 2500), "done  53.69 GB in 2500 s  average 21.48 MB/s");
    EXPECT_EQ(doneLine(10, 0), "done  0.00 GB in 0 s  average 0.00 MB/s");
}

TEST_F(TransferLogTest, appendsOneLineEachInAFolderMadeOnTheWay)
{
    QString start = now();
    TransferLog first(folder.path(), "film.mov", clock);
    clock.advance(10s);
    TransferLog second(folder.path(), "evil\nname.mov", clock);
    first.part(1, 1'000'000, 2);
    first.done(2'000'000);
    EXPECT_THAT(lines(), testing::ElementsAre(QString("── " + start + " start film.mov"),
                                              QString("── " + now() + " start evil\uFFFDname.mov"),
                                              QString(now() + " part    1     1.0 MB     2.0 s    0.50 MB/s"),
                                              QString(now() + " done  0.00 GB in 10 s  average 0.20 MB/s"), QString()));
}

TEST_F(TransferLogTest, aFolderThatCannotBeMadeIsIgnored)
{
    TransferLog log("/proc/nowhere", "film.mov", clock);
    log.part(1, 1, 1);
    EXPECT_FALSE(QFile::exists("/proc/nowhere"));
}

} // namespace
} // namespace palvera
