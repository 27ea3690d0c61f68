#pragma once

#include "desktop/Arrival.h"

#include <QObject>
#include <QStringList>

#include <functional>

namespace palvera {

/// The program as the desktop starts and calls it over the session bus: org.freedesktop.Application of the Desktop
/// Entry Specification 1.5. An address that comes this way never stands in anybody's arguments.
///
/// Main thread. Where there is no bus, or another program has the name, nothing comes.
class DesktopActivation : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// `name` is the program's on the bus, as "example.palvera.Palvera"; `onArrival` is called from the event loop.
    /// `busAddress` is the session bus unless given.
    DesktopActivation(const QString& name, std::function<void(const Arrival&)> onArrival,
                      const QString& busAddress = {}, QObject* parent = nullptr);
    ~DesktopActivation() override;

public Q_SLOTS: // the interface's own names
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& uris, const QVariantMap& platformData);
    void ActivateAction(const QString& action, const QVariantList& parameters, const QVariantMap& platformData);

private:
    const QString m_connection;
    const std::function<void(const Arrival&)> m_onArrival;
};

} // namespace palvera
