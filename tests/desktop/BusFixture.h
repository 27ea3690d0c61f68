#pragma once

#include "tests/support/LoopFixture.h"
#include "tests/support/QtPrinting.h"

#include <QDBusConnection>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>

#include <sys/prctl.h>

namespace palvera {

/// A message bus of its own.
struct BusFixture : LoopFixture {
    QTemporaryDir folder;
    QProcess daemon;
    QString address;

    void SetUp() override
    {
        daemon.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); }); // should the tests be killed
        daemon.start("dbus-daemon",
                     {"--session", "--nofork", "--print-address", "--address=unix:path=" + folder.filePath("bus")});
        if (!daemon.waitForStarted() || !daemon.waitForReadyRead())
            GTEST_SKIP() << "there is no dbus-daemon to run";
        address = QString::fromUtf8(daemon.readLine()).trimmed();
    }
    void TearDown() override
    {
        QDBusConnection::disconnectFromBus("service");
        daemon.kill();
        daemon.waitForFinished();
    }
    /// Has `object` answer on the bus at `path` under the name `service`.
    void offer(QObject& object, const QString& path, const QString& service) const
    {
        auto bus = QDBusConnection::connectToBus(address, "service");
        ASSERT_TRUE(
            bus.registerObject(path, &object, QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals) &&
            bus.registerService(service));
    }
};

} // namespace palvera
