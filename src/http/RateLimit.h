#pragma once

#include <QtGlobal>

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <optional>

namespace palvera {

/// How many bytes a second may pass, over all requests that share it: a token bucket whose tokens are reserved in the
/// order of asking, so that each request gets its turn and all of them the same share. Any thread.
class RateLimit {
public:
    using Moment = std::chrono::steady_clock::time_point;
    class Turn;

    /// Bytes a second; 0 is no limit. Holds within a quarter of a second for what is moving already.
    void set(qint64 bytesPerSecond);
    qint64 bytesPerSecond() const { return m_rate; }
    /// What passes in one turn, 4 KiB to 256 KiB; nothing without a limit.
    std::optional<qint64> turnSize() const;

private:
    struct Grant {
        qint64 bytes;
        Moment due;
    };

    Grant reserve(qint64 overdrawn, Moment now);
    /// Below 0 they are owed.
    void giveBack(qint64 bytes);

    std::atomic<qint64> m_rate = 0;
    std::atomic<int> m_changes = 0;
    std::mutex m_lock;
    Moment m_next; // when the tokens that nobody has reserved come; guarded by m_lock
};

/// One request's tokens of a limit. One thread at a time.
class RateLimit::Turn {
public:
    /// `limit` may be null: nothing is limited then.
    explicit Turn(std::shared_ptr<RateLimit> limit) : m_limit(std::move(limit)) {}
    /// The others get what is left, or do without what was too much.
    ~Turn();
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    /// How many bytes may pass now. 0: none before `due`, when to ask again.
    qint64 allowed(Moment now);
    Moment due() const { return m_due.value_or(Moment()); }
    /// That many have passed, of those allowed or beyond them: what has come from the network has passed already.
    void spend(qint64 bytes);

private:
    const std::shared_ptr<RateLimit> m_limit;
    qint64 m_left = 0; // negative: owed
    qint64 m_reserved = 0;
    std::optional<Moment> m_due; // of what is reserved
    int m_changes = 0;           // of the limit, when it was reserved
};

} // namespace palvera
