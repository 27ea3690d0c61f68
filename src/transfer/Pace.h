#pragma once

#include "async/Clock.h"

#include <optional>
#include <vector>

namespace palvera {

/// How fast one attempt to send or fetch something moves at present. One thread at a time.
class PaceMeter {
public:
    /// An attempt begins, with `bytes` counted already.
    void begin(Clock::Moment now, qint64 bytes = 0);
    /// It is held up on purpose, with `bytes` counted: its pace is taken from now on.
    void restart(Clock::Moment now, qint64 bytes) { m_earlier = m_later = {.at = now, .bytes = bytes}; }
    /// It is over. There is no pace between attempts.
    void end() { m_began.reset(); }
    struct Pace {
        double bytesPerSecond = 0;
        double age = 0; ///< of the attempt, seconds
    };
    /// Over the last five to ten seconds, or over all of the attempt while it is younger; `bytes` is what has moved of
    /// it by `now`. Nothing in its first second.
    std::optional<Pace> pace(Clock::Moment now, qint64 bytes);
    /// When the present attempt began.
    std::optional<Clock::Moment> began() const { return m_began; }
    bool operator==(const PaceMeter&) const = default;

private:
    struct Mark {
        Clock::Moment at;
        qint64 bytes = 0;

        bool operator==(const Mark&) const = default;
    };

    std::optional<Clock::Moment> m_began;
    Mark m_earlier; // what is looked back to
    Mark m_later;   // what will be after five seconds
};

/// Nothing of nothing, and of paces of which most are none.
std::optional<double> medianPace(std::vector<double> paces);

/// Whether an attempt at a piece of `whole` bytes, of which `left` are left, is worth giving up for one on another
/// connection: a whole piece would be there by now at the `usual` pace, in bytes a second, and at its own the rest
/// takes longer than three.
bool crawls(qint64 left, const PaceMeter::Pace& pace, qint64 whole, double usual);

/// The same of an attempt that has sent all of its `whole` bytes and has waited for the answer for `waited`: they may
/// lie in front of a storage that reads them slowly. Three whole pieces are sent meanwhile, and ten seconds at least.
bool isOverdue(std::chrono::nanoseconds waited, qint64 whole, double usual);

} // namespace palvera
