#include "desktop/SleepInhibitor.h"
#include "tests/desktop/BusFixture.h"

#include <QDBusUnixFileDescriptor>
#include <QLocalServer>

#include <poll.h>
#include <unistd.h>

namespace palvera {
namespace {

/// A login manager that hands out one end of a pipe as its lock, so that the other end tells when the lock is let go.
class FakeLoginManager final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")

public:
    QStringList asked;

    ~FakeLoginManager() override { std::ranges::for_each(m_ends, ::close); }
    /// How many of the locks that it gave are held.
    std::ptrdiff_t held() const
    {
        return std::ranges::count_if(m_ends, [](int end) {
            pollfd look{.fd = end, .events = POLLIN, .revents = 0};
            ::poll(&look, 1, 0);
            return (look.revents & POLLHUP) == 0;
        });
    }

public Q_SLOTS:
    QDBusUnixFileDescriptor Inhibit(const QString& what, const QString& who, const QString& why, const QString& mode)
    {
        asked.append(QStringList{what, who, why, mode}.join(u'|'));
        int ends[2];
        if (::pipe(ends) != 0)
            return {};
        m_ends.push_back(ends[0]);
        QDBusUnixFileDescriptor lock(ends[1]); // a copy
        ::close(ends[1]);
        return lock;
    }

Q_SIGNALS:
    void PrepareForSleep(bool begins);
    void PrepareForShutdown(bool begins);

private:
    std::vector<int> m_ends;
};

struct SleepInhibitorTest : BusFixture {
    FakeLoginManager manager;

    void SetUp() override
    {
        BusFixture::SetUp();
        if (!IsSkipped())
            offer(manager, "/org/freedesktop/login1", "org.freedesktop.login1");
    }
    bool untilHeld(int count)
    {
        return pumpUntil([&] { return manager.held() == count; });
    }
};

TEST_F(SleepInhibitorTest, holdsOneLockTellsOfWakingAloneAndLetsTheLockGoAtOnce)
{
    SystemSleepInhibitor inhibitor(address);
    int woken = 0, wokenToo = 0;
    inhibitor.onWake([&] { ++woken; });
    const WakeWatch watch([&] { ++wokenToo; }, address);
    inhibitor.hold("Files are moving.");
    inhibitor.hold("again");
    ASSERT_TRUE(untilHeld(1));
    EXPECT_EQ(manager.asked, QStringList("sleep:idle|Palvera|Files are moving.|block"));
    Q_EMIT manager.PrepareForSleep(true);
    inhibitor.release();
    inhibitor.hold("once more");
    ASSERT_TRUE(pumpUntil([&] { return manager.asked.size() == 2; }) && untilHeld(1));
    EXPECT_EQ(woken, 0);
    Q_EMIT manager.PrepareForSleep(false);
    ASSERT_TRUE(
        pumpUntil([&] { return woken > 0 && wokenToo > 0; })); // and what came before this has arrived: the lock
    EXPECT_EQ(manager.held(), 1);
    inhibitor.release();
    EXPECT_TRUE(untilHeld(0));
    inhibitor.hold("let go before the lock has come");
    inhibitor.release();
    inhibitor.hold("second");
    EXPECT_TRUE(untilHeld(1));
    inhibitor.release();
    EXPECT_TRUE(untilHeld(0)) << "that of the first, if it was asked for, too";
}

TEST_F(SleepInhibitorTest, aShutdownIsAnnouncedAndWaitsForTheEnd)
{
    int announced = 0;
    {
        const ShutdownWatch watch("Transfers are cut off.", [&] { ++announced; }, address);
        ASSERT_TRUE(untilHeld(1));
        EXPECT_EQ(manager.asked, QStringList("shutdown|Palvera|Transfers are cut off.|delay"));
        Q_EMIT manager.PrepareForSleep(true);
        Q_EMIT manager.PrepareForShutdown(false);
        for (int times = 0; times < 3; ++times)
            Q_EMIT manager.PrepareForShutdown(true);
        EXPECT_TRUE(pumpUntil([&] { return announced == 3; }));
        EXPECT_EQ(manager.held(), 1);
    }
    EXPECT_TRUE(untilHeld(0));
}

TEST_F(SleepInhibitorTest, aBusThatIsNotThereOrAcceptsAndStaysSilentHoldsNobodyUp)
{
    QLocalServer silent;
    ASSERT_TRUE(silent.listen(folder.filePath("silent")));
    SystemSleepInhibitor onNone("unix:path=" + folder.filePath("nobody")),
        onSilent("unix:path=" + silent.fullServerName());
    for (auto* inhibitor : {&onNone, &onSilent}) {
        inhibitor->hold("first");
        inhibitor->release();
        inhibitor->hold("second");
    }
    EXPECT_TRUE(pumpUntil([&] { return silent.hasPendingConnections(); }));
}

} // namespace
} // namespace palvera

#include "SleepInhibitorTest.moc"
