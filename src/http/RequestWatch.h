#pragma once

#include <chrono>

namespace palvera {

/// Decides when a request is out of time. Plain values: it is told what time it is.
class RequestWatch {
public:
    using Moment = std::chrono::steady_clock::time_point;
    enum class Verdict { inTime, idle, timedOut };

    /// 0 is for ever, for either limit.
    RequestWatch(std::chrono::milliseconds idleLimit, std::chrono::milliseconds totalLimit, Moment begun);

    /// Something moved: the idle limit starts again.
    void moved(Moment now) { m_moved = now; }
    /// It was held up on purpose between these: neither limit counts that.
    void held(Moment from, Moment to)
    {
        m_begun += to - from;
        m_moved = to;
    }

    Verdict verdict(Moment now) const;
    /// When to look again: at a limit, and often enough before it to see the kernel's send queue drain.
    Moment nextLook(Moment now) const;

private:
    std::chrono::milliseconds m_idleLimit;
    std::chrono::milliseconds m_totalLimit;
    Moment m_begun;
    Moment m_moved;
};

} // namespace palvera
