#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QVariantMap>

#include <optional>

namespace palvera {

/// With what the program is started, or called to the front when it runs already.
struct Arrival {
    /// Of the scheme `palvera`. They hold what signs somebody in: they are never logged.
    QByteArrayList addresses = {};
    /// With it the desktop lets the window come to the front: an activation token (Wayland), or a startup identifier
    /// with the time of what the user did (X11). Empty where the desktop gave none.
    QByteArray token = {};

    bool operator==(const Arrival&) const = default;
};

/// Takes the addresses out of the arguments, which every user of the machine can read (/proc/PID/cmdline), and the
/// token from the environment, before Qt removes it there. To be called before anything else. `addresses` are those
/// that a launcher has taken out of its own.
Arrival takeArrival(int& argc, char** argv, const QByteArrayList& addresses = {});

/// Whether it is the whole address of a callback, by its scheme.
bool isCallback(const QByteArray& address);

/// As one program of ours tells it another.
QByteArray toMessage(const Arrival& arrival);
/// Nothing for what no program of ours said.
std::optional<Arrival> arrivalFrom(const QByteArray& message);

} // namespace palvera
