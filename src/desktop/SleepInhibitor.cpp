#include "desktop/SleepInhibitor.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QUuid>

namespace palvera {

namespace {

QString service()
{
    return QStringLiteral("org.freedesktop.login1");
}

QString path()
{
    return QStringLiteral("/org/freedesktop/login1");
}

QString managerInterface()
{
    return QStringLiteral("org.freedesktop.login1.Manager");
}

} // namespace

/// The login manager, and the lock it gave: an open file, which lets the machine sleep when it is closed.
class LoginManager final : public QObject {
    Q_OBJECT

public:
    explicit LoginManager(const QString& address) : m_address(address) {}
    ~LoginManager() override { QDBusConnection::disconnectFromBus(m_name); }

    void hold(const QString& why)
    {
        if (std::exchange(m_wanted, true) || !connectOnce())
            return;
        auto call = QDBusMessage::createMethodCall(service(), path(), managerInterface(), QStringLiteral("Inhibit"));
        call << QStringLiteral("sleep:idle") << QStringLiteral("Palvera") << why << QStringLiteral("block");
        auto* watcher = new QDBusPendingCallWatcher(QDBusConnection(m_name).asyncCall(call), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this, &LoginManager::take);
    }
    void release()
    {
        m_wanted = false;
        m_lock = {};
    }

    std::function<void()> woken;

private Q_SLOTS:
    void prepareForSleep(bool begins)
    {
        if (!begins && woken)
            woken();
    }

private:
    /// Keeps the lock in an answer if it is still wanted. One that is not is closed with the answer.
    void take(QDBusPendingCallWatcher* watcher)
    {
        QDBusPendingReply<QDBusUnixFileDescriptor> reply = *watcher;
        watcher->deleteLater();
        if (reply.isValid() && m_wanted && !m_lock.isValid())
            m_lock = reply.value();
    }
    bool connectOnce()
    {
        if (m_name.isEmpty()) {
            m_name = QUuid::createUuid().toString();
            auto bus = m_address.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SystemBus, m_name)
                                           : QDBusConnection::connectToBus(m_address, m_name);
            if (bus.isConnected())
                bus.connect(service(), path(), managerInterface(), QStringLiteral("PrepareForSleep"), this,
                            SLOT(prepareForSleep(bool)));
        }
        return QDBusConnection(m_name).isConnected();
    }

    const QString m_address; // empty: the system's bus
    QString m_name;          // of the connection; empty before the first use
    bool m_wanted = false;
    QDBusUnixFileDescriptor m_lock;
};

SystemSleepInhibitor::SystemSleepInhibitor() : SystemSleepInhibitor(QString()) {}

SystemSleepInhibitor::SystemSleepInhibitor(const QString& address) : m_manager(std::make_unique<LoginManager>(address))
{}

SystemSleepInhibitor::~SystemSleepInhibitor() = default;

void SystemSleepInhibitor::hold(const QString& why)
{
    m_manager->hold(why);
}

void SystemSleepInhibitor::release()
{
    m_manager->release();
}

void SystemSleepInhibitor::onWake(std::function<void()> woken)
{
    m_manager->woken = std::move(woken);
}

} // namespace palvera

#include "SleepInhibitor.moc"
