#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>

namespace palvera {

/// A message bus of its own.
class BusFixture : public testing::Test {
protected:
    void SetUp() override
    {
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address"),
                        QStringLiteral("--address=unix:path=") + m_folder.filePath(QStringLiteral("bus"))});
        if (!m_daemon.waitForStarted() || !m_daemon.waitForReadyRead())
            GTEST_SKIP() << "there is no dbus-daemon to run";
        address = QString::fromUtf8(m_daemon.readLine()).trimmed();
    }
    void TearDown() override
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }

    /// Lets messages through until `reached` holds; false when that takes ten seconds.
    static bool pumpUntil(const std::function<bool()>& reached)
    {
        QElapsedTimer passed;
        passed.start();
        while (!reached() && passed.elapsed() < 10'000)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 50);
        return reached();
    }

    int m_argc = 1;
    char m_name[5] = "test";
    char* m_argv[2] = {m_name, nullptr};
    QCoreApplication m_application{m_argc, m_argv};
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString address;
};

} // namespace palvera
