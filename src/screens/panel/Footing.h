#pragma once

#include "transfers/Item.h"

#include <vector>

namespace palvera {

/// What all that is in flight comes to.
struct Footing {
    int moving = 0; ///< of those in flight, without the paused ones
    int paused = 0;
    double rate = 0;         ///< bytes per second
    qint64 left = 0;         ///< bytes of those that move and whose size is known
    bool isMoreLeft = false; ///< there are others, too
    qint64 sent = 0;         ///< bytes of all those in flight whose size is known
    qint64 total = 0;

    bool operator==(const Footing&) const = default;
};

Footing footingOf(const std::vector<Item>& items);

/// "20.0 MB/s · 38.0 GB left · about 21:40", as much of it as is known; the time is the user's, at `now`.
QString footingText(const Footing& footing, Clock::WallTime now);

/// How much of what is in flight has gone, in whole percent; nothing while nothing is, or no size is known.
std::optional<int> overallPercent(const Footing& footing);

} // namespace palvera
