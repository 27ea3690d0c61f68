#include "desktop/DesktopAppearance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QUuid>

namespace palvera {

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settings = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");
enum Scheme : uint { noPreference, preferDark, preferLight }; // the portal's own numbers

} // namespace

DesktopAppearance::DesktopAppearance(bool fallback, const QString& busAddress, QObject* parent)
    : QObject(parent), m_connection(QUuid::createUuid().toString()), m_fallback(fallback), m_dark(fallback)
{
    ask(busAddress);
}

DesktopAppearance::~DesktopAppearance()
{
    QDBusConnection::disconnectFromBus(m_connection);
}

void DesktopAppearance::ask(const QString& busAddress)
{
    auto bus = busAddress.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connection)
                                    : QDBusConnection::connectToBus(busAddress, m_connection);
    if (!bus.isConnected())
        return;
    qRegisterMetaType<QDBusVariant>(); // Qt looks it up by name in the slot's signature, and else does not connect
    bus.connect(service, path, settings, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    auto call = QDBusMessage::createMethodCall(service, path, settings, QStringLiteral("Read"));
    call << appearance << colorScheme;
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        // An answer may come through after a change that the portal told of later.
        if (QDBusPendingReply<QDBusVariant> reply = *watcher; reply.isValid() && !m_hasChanged)
            take(reply.value().variant());
    });
}

void DesktopAppearance::settingChanged(const QString& group, const QString& key, const QDBusVariant& value)
{
    if (group != appearance || key != colorScheme)
        return;
    m_hasChanged = true;
    take(value.variant());
}

void DesktopAppearance::take(const QVariant& scheme)
{
    auto inner = scheme;
    if (inner.canConvert<QDBusVariant>()) // "Read" wraps its answer twice
        inner = inner.value<QDBusVariant>().variant();
    bool dark = m_fallback;
    if (inner.typeId() == QMetaType::UInt && inner.toUInt() == preferDark)
        dark = true;
    else if (inner.typeId() == QMetaType::UInt && inner.toUInt() == preferLight)
        dark = false;
    if (dark == m_dark)
        return;
    m_dark = dark;
    Q_EMIT changed();
}

} // namespace palvera
