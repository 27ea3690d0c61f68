#include "desktop/DesktopActivation.h"

#include <QDBusConnection>
#include <QUuid>

namespace palvera {

namespace {

QByteArray tokenIn(const QVariantMap& platformData)
{
    const auto token = platformData.value(QStringLiteral("activation-token")).toString();
    return (token.isEmpty() ? platformData.value(QStringLiteral("desktop-startup-id")).toString() : token).toUtf8();
}

/// Where the desktop looks for the program of that name.
QString pathOf(const QString& name)
{
    return u'/' + QString(name).replace(u'.', u'/').replace(u'-', u'_');
}

} // namespace

DesktopActivation::DesktopActivation(const QString& name, std::function<void(const Arrival&)> onArrival,
                                     const QString& busAddress, QObject* parent)
    : QObject(parent), m_connection(QUuid::createUuid().toString()), m_onArrival(std::move(onArrival))
{
    auto bus = busAddress.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connection)
                                    : QDBusConnection::connectToBus(busAddress, m_connection);
    // The object first: who started the program over the bus calls as soon as the name is there.
    bus.registerObject(pathOf(name), this, QDBusConnection::ExportAllSlots);
    bus.registerService(name);
}

DesktopActivation::~DesktopActivation()
{
    QDBusConnection::disconnectFromBus(m_connection);
}

void DesktopActivation::Activate(const QVariantMap& platformData)
{
    m_onArrival({.token = tokenIn(platformData)});
}

void DesktopActivation::Open(const QStringList& uris, const QVariantMap& platformData)
{
    Arrival arrival{.token = tokenIn(platformData)};
    for (const auto& uri : uris)
        if (auto address = uri.toUtf8(); isCallback(address))
            arrival.addresses.append(std::move(address));
    m_onArrival(arrival);
}

void DesktopActivation::ActivateAction(const QString& /*action*/, const QVariantList& /*parameters*/,
                                       const QVariantMap& platformData)
{
    Activate(platformData);
}

} // namespace palvera
