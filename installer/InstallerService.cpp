#include "installer/InstallerService.h"

#include "installer/Built.h"
#include "installer/Refused.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <unistd.h>

namespace palvera::installer {

namespace {

const QString serviceName = QString::fromLatin1(builtId) + QStringLiteral(".Installer");
const QString interfaceName = serviceName + u'1';
const QString objectPath = u'/' + QString(serviceName).replace(u'.', u'/');

/// Only a text counts: whatever else a caller puts there was not announced.
QString textIn(const QVariantMap& map, const QString& key)
{
    const auto value = map[key];
    return value.typeId() == QMetaType::QString ? value.toString() : QString();
}

/// What a message asks for; nothing when there is no such method.
std::optional<Job> jobOf(const QDBusMessage& message)
{
    const auto words = message.arguments();
    const auto method = message.member() + u' ' + message.signature();
    if (method == QLatin1StringView("InstallWithTarget s"))
        return Job{.task = {.kind = Task::Kind::install, .target = words[0].toString()}, .image = {}, .done = {}};
    if (method != QLatin1StringView("PrepareWithImage hsa{sv}"))
        return std::nullopt;
    const auto announced = qdbus_cast<QVariantMap>(words[2]);
    return Job{.task = {.kind = Task::Kind::prepare,
                        .target = words[1].toString(),
                        .announced = {.version = textIn(announced, QStringLiteral("version")),
                                      .build = textIn(announced, QStringLiteral("build"))}},
               .image = words[0].value<QDBusUnixFileDescriptor>(),
               .done = {}};
}

} // namespace

InstallerService::InstallerService(QDBusConnection bus, const Settings& settings)
    : m_bus(std::move(bus)), m_authority(m_bus, settings.patienceWithPeople), m_jobs(settings)
{
    m_idle.setSingleShot(true);
    m_idle.setInterval(settings.idle);
    connect(&m_idle, &QTimer::timeout, this, &InstallerService::leaveWhenIdle);
}

bool InstallerService::start()
{
    m_idle.start();
    // The object before the name, with which the call comes that has had us started.
    return m_bus.registerVirtualObject(objectPath, this) && m_bus.registerService(serviceName);
}

QString InstallerService::introspect(const QString& path) const
{
    if (path != objectPath)
        return {};
    return QStringLiteral(R"(
  <interface name="%1">
    <method name="PrepareWithImage">
      <arg name="image" type="h" direction="in"/>
      <arg name="target" type="s" direction="in"/>
      <arg name="announced" type="a{sv}" direction="in"/>
      <arg name="error" type="s" direction="out"/>
    </method>
    <method name="InstallWithTarget">
      <arg name="target" type="s" direction="in"/>
      <arg name="error" type="s" direction="out"/>
    </method>
  </interface>
)")
        .arg(interfaceName);
}

bool InstallerService::handleMessage(const QDBusMessage& message, const QDBusConnection&)
{
    if (message.interface() != interfaceName)
        return false;
    auto job = jobOf(message);
    if (!job)
        return false;
    ++m_calls;
    m_idle.stop();
    findUser({.message = message, .job = std::move(*job)});
    return true;
}

void InstallerService::findUser(Call call)
{
    auto question =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetConnectionUnixUser"));
    question << call.message.service();
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, call = std::move(call)]() mutable {
        watcher->deleteLater();
        const QDBusPendingReply<uint> reply = *watcher;
        if (!reply.isValid()) // who asked has gone
            return answer(call.message, textOf({Refusal::notAllowed}));
        call.user = reply.value();
        judge(std::move(call));
    });
}

void InstallerService::judge(Call call)
{
    if (m_users.contains(call.user))
        return answer(call.message, textOf({Refusal::busy}));
    m_users.insert(call.user);
    // Root may do all this without us, and so may a user with a copy of their own.
    if (call.user == ::geteuid())
        return work(std::move(call));
    const auto name = call.message.service();
    m_authority.ask(name, this, [this, call = std::move(call)](PolicyAuthority::Verdict verdict) mutable {
        switch (verdict) {
        case PolicyAuthority::Verdict::allowed:
            return work(std::move(call));
        case PolicyAuthority::Verdict::refused:
            return answerAs(call, textOf({Refusal::notAllowed}));
        case PolicyAuthority::Verdict::nobodyToAsk:
            return answerAs(call, textOf({Refusal::nobodyToAsk}));
        }
    });
}

void InstallerService::work(Call call)
{
    auto job = call.job;
    job.done = [this, call = std::move(call)](const QString& error) { answerAs(call, error); };
    m_jobs.add(std::move(job));
}

void InstallerService::answerAs(const Call& call, const QString& error)
{
    m_users.remove(call.user);
    answer(call.message, error);
}

void InstallerService::answer(const QDBusMessage& message, const QString& error)
{
    m_bus.send(message.createReply(error));
    if (--m_calls == 0)
        m_idle.start();
}

void InstallerService::leaveWhenIdle()
{
    // Whoever calls from here on has another one started; who has called before is served yet.
    m_bus.unregisterService(serviceName);
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_calls == 0)
                QCoreApplication::quit();
        },
        Qt::QueuedConnection);
}

} // namespace palvera::installer
