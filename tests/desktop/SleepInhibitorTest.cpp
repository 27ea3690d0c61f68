#include "desktop/SleepInhibitor.h"
#include "tests/desktop/BusFixture.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>

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

    ~FakeLoginManager() override
    {
        for (int end : m_ends)
            ::close(end);
    }
    /// How many of the locks that it gave are held.
    int held() const
    {
        int open = 0;
        for (int end : m_ends) {
            pollfd look{.fd = end, .events = POLLIN, .revents = 0};
            ::poll(&look, 1, 0);
            open += (look.revents & POLLHUP) ? 0 : 1;
        }
        return open;
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

private:
    std::vector<int> m_ends;
};

/// A message bus of its own with a login manager on it.
class SleepInhibitorTest : public BusFixture {
protected:
    void SetUp() override
    {
        BusFixture::SetUp();
        if (IsSkipped())
            return;
        auto bus = QDBusConnection::connectToBus(address, QStringLiteral("login manager"));
        ASSERT_TRUE(bus.registerObject(QStringLiteral("/org/freedesktop/login1"), &manager,
                                       QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals));
        ASSERT_TRUE(bus.registerService(QStringLiteral("org.freedesktop.login1")));
    }
    void TearDown() override
    {
        QDBusConnection::disconnectFromBus(QStringLiteral("login manager"));
        BusFixture::TearDown();
    }

    FakeLoginManager manager;
};

TEST_F(SleepInhibitorTest, holdsOneLockAndLetsItGoAtOnce)
{
    SystemSleepInhibitor inhibitor(address);
    inhibitor.hold(QStringLiteral("Files are moving."));
    inhibitor.hold(QStringLiteral("again"));
    ASSERT_TRUE(pumpUntil([&] { return manager.held() == 1; }));
    EXPECT_EQ(manager.asked, QStringList("sleep:idle|Palvera|Files are moving.|block"));
    inhibitor.release();
    EXPECT_TRUE(pumpUntil([&] { return manager.held() == 0; }));
}

TEST_F(SleepInhibitorTest, aLockThatComesAfterTheReleaseIsNotKept)
{
    SystemSleepInhibitor inhibitor(address);
    inhibitor.hold(QStringLiteral("first"));
    inhibitor.release();
    ASSERT_TRUE(pumpUntil([&] { return manager.asked.size() == 1; }));
    EXPECT_TRUE(pumpUntil([&] { return manager.held() == 0; }));
    inhibitor.hold(QStringLiteral("second"));
    EXPECT_TRUE(pumpUntil([&] { return manager.held() == 1; }));
}

TEST_F(SleepInhibitorTest, tellsOfWakingButNotOfFallingAsleep)
{
    SystemSleepInhibitor inhibitor(address);
    int woken = 0;
    inhibitor.onWake([&] { ++woken; });
    inhibitor.hold(QStringLiteral("so that it connects"));
    ASSERT_TRUE(pumpUntil([&] { return manager.held() == 1; }));
    Q_EMIT manager.PrepareForSleep(true);
    Q_EMIT manager.PrepareForSleep(false);
    ASSERT_TRUE(pumpUntil([&] { return woken > 0; }));
    EXPECT_EQ(woken, 1);
}

TEST_F(SleepInhibitorTest, withoutABusItDoesNothing)
{
    SystemSleepInhibitor inhibitor(QStringLiteral("unix:path=") + m_folder.filePath(QStringLiteral("nobody")));
    inhibitor.hold(QStringLiteral("why"));
    inhibitor.release();
    inhibitor.hold(QStringLiteral("why"));
    EXPECT_EQ(manager.asked, QStringList());
}

} // namespace

} // namespace palvera

#include "SleepInhibitorTest.moc"
