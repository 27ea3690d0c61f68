#include "desktop/InstallerConnection.h"

#include "files/FileDescriptor.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusUnixFileDescriptor>
#include <QFile>
#include <QUuid>

#include <array>

#include <fcntl.h>

namespace palvera {

namespace {

// The bus would give up after 25 s, while the installer still works on a slow disk or asks somebody for a password:
// it would then install what nobody waits for.
constexpr int patience = 15 * 60 * 1000; // ms

/// Whether the answer means that there is nobody who could ever give another.
bool isMissing(const QDBusError& error)
{
    constexpr std::array kinds{QDBusError::ServiceUnknown, QDBusError::UnknownObject, QDBusError::UnknownInterface,
                               QDBusError::UnknownMethod};
    return std::ranges::find(kinds, error.type()) != kinds.end() ||
           error.name() == QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner");
}

class Proxy final : public PVInstallerProtocol {
public:
    /// Questions that are open when `context` goes are forgotten.
    Proxy(QString program, QString connection, QObject* context, std::function<void(const InstallerTrouble&)> failed)
        : m_program(std::move(program)),
          m_connection(std::move(connection)),
          m_context(context),
          m_failed(std::move(failed))
    {}

    void prepareWithImage(const QString& image, const QString& target, const AnnouncedBuild& announced,
                          Reply reply) override
    {
        const FileDescriptor file(::open(QFile::encodeName(image).constData(), O_RDONLY | O_CLOEXEC));
        if (file.number() < 0)
            return reply(QObject::tr("The download is gone."));
        const QVariantMap details{{QStringLiteral("version"), announced.version},
                                  {QStringLiteral("build"), announced.build}};
        send(QStringLiteral("PrepareWithImage"),
             {QVariant::fromValue(QDBusUnixFileDescriptor(file.number())), target, details}, std::move(reply));
    }

    void installWithTarget(const QString& target, Reply reply) override
    {
        send(QStringLiteral("InstallWithTarget"), {target}, std::move(reply));
    }

private:
    void send(const QString& operation, const QVariantList& arguments, Reply reply)
    {
        QDBusConnection bus(m_connection);
        if (!bus.isConnected())
            return m_failed({.isMissing = true, .description = bus.lastError().message()});
        const QString name = m_program + QStringLiteral(".Installer");
        auto call = QDBusMessage::createMethodCall(name, u'/' + QString(name).replace(u'.', u'/'),
                                                   name + QStringLiteral("1"), operation);
        call.setArguments(arguments);
        call.setInteractiveAuthorizationAllowed(true);
        auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, patience), m_context);
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                         [watcher, reply = std::move(reply), failed = m_failed] {
                             watcher->deleteLater();
                             if (const QDBusPendingReply<QString> answer = *watcher; answer.isValid())
                                 reply(answer.value());
                             else
                                 failed({isMissing(answer.error()), answer.error().message()});
                         });
    }

    const QString m_program;
    const QString m_connection;
    QObject* const m_context;
    const std::function<void(const InstallerTrouble&)> m_failed;
};

} // namespace

BusInstallerConnection::BusInstallerConnection(QString program, Bus bus)
    : m_program(std::move(program)), m_connection(QUuid::createUuid().toString())
{
    QDBusConnection::connectToBus(bus == Bus::system ? QDBusConnection::SystemBus : QDBusConnection::SessionBus,
                                  m_connection);
    watch();
}

BusInstallerConnection::BusInstallerConnection(QString program, const QString& address)
    : m_program(std::move(program)), m_connection(QUuid::createUuid().toString())
{
    QDBusConnection::connectToBus(address, m_connection);
    watch();
}

BusInstallerConnection::~BusInstallerConnection()
{
    QDBusConnection::disconnectFromBus(m_connection);
}

std::unique_ptr<PVInstallerProtocol>
BusInstallerConnection::remoteObject(std::function<void(const InstallerTrouble&)> failed)
{
    return std::make_unique<Proxy>(m_program, m_connection, this, std::move(failed));
}

void BusInstallerConnection::watch()
{
    QDBusConnection(m_connection)
        .connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"), QStringLiteral("org.freedesktop.DBus.Local"),
                 QStringLiteral("Disconnected"), this, SLOT(breakOff()));
}

void BusInstallerConnection::breakOff()
{
    if (invalidated)
        invalidated();
}

} // namespace palvera
