#include "desktop/DesktopAppearance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QUuid>

#include <algorithm>

namespace palvera {

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settings = QStringLiteral("org.freedesktop.portal.Settings");
struct Name {
    QString group;
    QString key;
};
// In the order of DesktopAppearance::Setting.
const std::array names{Name{QStringLiteral("org.freedesktop.appearance"), QStringLiteral("color-scheme")},
                       Name{QStringLiteral("org.gnome.desktop.interface"), QStringLiteral("enable-animations")},
                       Name{QStringLiteral("org.gnome.desktop.interface"), QStringLiteral("text-scaling-factor")}};
enum Scheme : uint { noPreference, preferDark, preferLight }; // the portal's own numbers
constexpr double leastTextScale = 0.5, mostTextScale = 3;     // what desktops let one choose

bool isDark(const QVariant& value, bool fallback)
{
    const uint scheme = value.typeId() == QMetaType::UInt ? value.toUInt() : noPreference;
    return scheme == preferDark || (fallback && scheme != preferLight);
}

double textScale(const QVariant& value, double fallback)
{
    const double factor = value.typeId() == QMetaType::Double ? value.toDouble() : 0;
    return factor > 0 ? std::clamp(factor, leastTextScale, mostTextScale) : fallback;
}

} // namespace

DesktopAppearance::DesktopAppearance(Appearance fallback, const QString& busAddress, QObject* parent)
    : QObject(parent), m_connection(QUuid::createUuid().toString()), m_fallback(fallback), m_now(fallback)
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
    for (int i = 0; i < settingCount; ++i) {
        const auto setting = Setting(i);
        auto call = QDBusMessage::createMethodCall(service, path, settings, QStringLiteral("Read"));
        call << names[setting].group << names[setting].key;
        auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, setting] {
            watcher->deleteLater();
            // An answer may come through after a change that the portal told of later.
            if (QDBusPendingReply<QDBusVariant> reply = *watcher; reply.isValid() && !m_hasChanged[setting])
                take(setting, reply.value().variant());
        });
    }
}

void DesktopAppearance::settingChanged(const QString& group, const QString& key, const QDBusVariant& value)
{
    for (int i = 0; i < settingCount; ++i)
        if (group == names[i].group && key == names[i].key) {
            m_hasChanged[i] = true;
            take(Setting(i), value.variant());
        }
}

void DesktopAppearance::take(Setting setting, const QVariant& value)
{
    auto inner = value;
    if (inner.canConvert<QDBusVariant>()) // "Read" wraps its answer twice
        inner = inner.value<QDBusVariant>().variant();
    const auto before = m_now;
    switch (setting) {
    case colorScheme:
        m_now.dark = isDark(inner, m_fallback.dark);
        break;
    case animations:
        m_now.still = inner.typeId() == QMetaType::Bool ? !inner.toBool() : m_fallback.still;
        break;
    case textScaling:
        m_now.textScale = textScale(inner, m_fallback.textScale);
        break;
    case settingCount:
        break;
    }
    if (m_now != before)
        Q_EMIT changed();
}

} // namespace palvera
