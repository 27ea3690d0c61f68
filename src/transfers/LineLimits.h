#pragma once

#include "async/Clock.h"
#include "http/RateLimit.h"

#include <QString>
#include <QTime>

#include <optional>

namespace palvera {

class Preferences;

/// How much of the line the user lets transfers take. Rates are bytes a second; 0 is no limit.
struct LineLimits {
    /// Of each day. From a later to an earlier time they go over midnight.
    struct Hours {
        QTime from;
        QTime to;

        bool operator==(const Hours&) const = default;
    };
    struct Rates {
        qint64 up = 0;
        qint64 down = 0;

        bool operator==(const Rates&) const = default;
    };

    Rates rates;
    std::optional<Hours> hours; ///< in which the rates hold; nothing is all day long

    /// What holds at that time of the day.
    Rates at(QTime time) const;

    bool operator==(const LineLimits&) const = default;
};

/// A rate as users write it, in MB/s: "20", "0.5"; "off" is no limit. Nothing for what is none, or below 0.1 or above
/// 100000.
std::optional<qint64> rateFrom(const QString& text);
/// "08:00-19:00". Nothing for what are no hours, or none between them.
std::optional<LineLimits::Hours> hoursFrom(const QString& text);
QString textOf(const LineLimits::Hours& hours);

/// What the clock on the wall shows here.
QTime localTime(Clock::WallTime moment);

/// The user's, under "pv.uploadLimit", "pv.downloadLimit" and "pv.limitHours". What makes no sense there is no limit.
LineLimits lineLimitsIn(const Preferences& preferences);
void storeLineLimits(Preferences& preferences, const LineLimits& limits);

/// What all transfers of this program share.
struct LineShares {
    std::shared_ptr<RateLimit> up = std::make_shared<RateLimit>();
    std::shared_ptr<RateLimit> down = std::make_shared<RateLimit>();

    void set(LineLimits::Rates rates) const;
};

/// Has the user's limits hold at their hours, those too that another program stores meanwhile, within a minute. Runs
/// until it is cancelled, on the main thread. What it refers to outlives it.
Task<void> keepLineLimits(Preferences& preferences, Clock& clock, LineShares shares);

} // namespace palvera
