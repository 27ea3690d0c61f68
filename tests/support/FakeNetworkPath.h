#pragma once

#include "async/Clock.h"
#include "http/NetworkPath.h"

#include <stdexcept>

namespace palvera {

/// A network that comes and goes.
struct FakeNetworkPath final : NetworkPath {
    Clock& clock;
    bool usable = true;
    bool isUnknown = false; ///< waiting for it fails

    explicit FakeNetworkPath(Clock& time) : clock(time) {}
    bool isUsable() const override { return usable; }
    Task<void> untilUsable() override
    {
        if (isUnknown)
            throw std::runtime_error("no announcements");
        while (!usable)
            co_await clock.sleep(std::chrono::milliseconds(100));
    }
};

} // namespace palvera
