#pragma once

#include "async/Task.h"

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
};

/// The kernel's own knowledge, and its announcements of changes.
class SystemNetworkPath final : public NetworkPath {
public:
    bool isUsable() const override;
    Task<void> untilUsable() override;
};

} // namespace palvera
