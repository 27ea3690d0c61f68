#pragma once

#include "installer/Jobs.h"
#include "installer/PolicyAuthority.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QSet>

namespace palvera::installer {

/// What programs meet on the bus:
///
///     PrepareWithImage(h image, s target, a{sv} announced) -> s error
///     InstallWithTarget(s target) -> s error
///
/// `target` is the root of the copy that asks, `announced` holds "version" and "build" as the feed named them. An empty
/// text means that it went well, another is for the user. An error of the bus is no refusal: it says that nobody
/// answered. Each user has one job at a time, asked for, waiting or under way, so that none can keep out another. Main
/// thread.
class InstallerService : public QDBusVirtualObject {
public:
    InstallerService(QDBusConnection bus, const Settings& settings);

    /// Takes its place and its name on the bus. False when another has it, or there is no bus.
    bool start();

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    struct Call {
        QDBusMessage message;
        Job job;
        uint user = 0;
    };

    void findUser(Call call);
    void judge(Call call);
    void work(Call call);
    void answer(const QDBusMessage& message, const QString& error);
    void answerAs(const Call& call, const QString& error);
    void leaveWhenIdle();

    QDBusConnection m_bus;
    PolicyAuthority m_authority;
    Jobs m_jobs;
    QSet<uint> m_users; // who have a job
    int m_calls = 0;    // unanswered
    QTimer m_idle;
};

} // namespace palvera::installer
