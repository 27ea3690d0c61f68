#pragma once

#include "async/Clock.h"

#include <functional>

struct sockaddr;

namespace palvera {

/// Whether this machine can reach a network at all: an interface other than loopback that runs and has an address.
/// It says nothing about any one host.
class NetworkPath {
public:
    virtual ~NetworkPath() = default;

    /// Any thread.
    virtual bool isUsable() const = 0;
    /// Ends once there is a usable path, at once when there is one. Several may wait. Cancelling ends the wait.
    virtual Task<void> untilUsable() = 0;
    /// Has `changed` called after every change of an interface or an address, on the caller's executor, until
    /// cancelled. Ends early where nothing is announced.
    virtual Task<void> follow(std::function<void()> changed);
    /// Whether this machine has that address. True where nobody can tell.
    virtual bool hasAddress(const sockaddr& address) const;
};

/// The kernel's own knowledge, and its announcements of changes.
class SystemNetworkPath : public NetworkPath {
public:
    bool isUsable() const override;
    Task<void> untilUsable() override;
    Task<void> follow(std::function<void()> changed) override;
    bool hasAddress(const sockaddr& address) const override;
};

/// Ends once `path`, which may be usable still, is usable again after it was not. It is looked at every two seconds.
Task<void> untilNetworkReturns(NetworkPath& path, Clock& clock);
/// Ends after the pause, of 2 to 30 seconds, that follows so many tries in vain, or when the network returns; gives how
/// many count for the next pause.
Task<int> untilNextTry(int tries, NetworkPath& path, Clock& clock);

} // namespace palvera
