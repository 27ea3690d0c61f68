#pragma once

#include "async/CancelFlag.h"
#include "transfer/SendWatcher.h"
#include "transfer/Trouble.h"
#include "transfer/UploadRules.h"

#include <deque>
#include <exception>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace palvera {

/// What the lanes and the reporter of one upload run share: which parts remain, which are confirmed, what is in flight,
/// and how many attempts the line bears at once. Any thread. Its lock may enclose one watcher's lock and nothing else.
class Board {
public:
    /// `queue` holds the parts to send, highest first. The confirmed parts count with `partSize` bytes each towards
    /// what is sent. `lanes` attempts at most are under way at once.
    Board(std::vector<int> queue, ConfirmedParts done, qint64 partSize, qint64 byteSize, int lanes);

    /// Takes the lowest part that nobody has taken, or none.
    std::optional<int> nextPart();
    /// One lane's sending of one part. Stopping `cut` ends it: another lane sends the part.
    struct Sending {
        int part = 0;
        qint64 bytes = 0; // of the part
        std::shared_ptr<SendWatcher> watcher;
        std::shared_ptr<CancelFlag> cut = std::make_shared<CancelFlag>();
    };
    /// Counts it among those in flight until its part is settled, given up or taken over.
    void watch(Sending sending);
    /// Storage confirmed the part under `etag`: it moves from in flight to settled in one step, so that no reader
    /// counts it twice. Nothing happens when another lane has taken it over.
    void settle(const Sending& sending, const QString& etag);
    /// For a lane that has nothing to do: takes the part whose sending crawls, and cuts that. It crawls when what is
    /// left, or the answer, would take or takes longer than three whole parts take its siblings. At most twice a part.
    std::optional<int> takeOver();
    /// Stopped once no part is left, neither queued nor in flight.
    const std::shared_ptr<CancelFlag>& finished() const { return m_finished; }

    /// Whether one more attempt may begin just now. Each that does has to end with `attemptEnded`.
    bool mayBeginAttempt();
    /// Connections that keep breaking before a part is confirmed, and parts that take longer than a minute, leave fewer
    /// attempts at once, down to one; parts that go well bring them back.
    void attemptEnded(bool hasBroken);
    /// An attempt of `part` has failed, and another one follows.
    void noteTrouble(int part, Trouble trouble, Clock::Moment now);
    /// `part` failed for good. Its bytes no longer count as in flight.
    void giveUp(int part);

    /// Notes why a lane ended; the first one counts.
    void noteFailure(std::exception_ptr failure);
    /// Takes every remaining part away, so that the lanes end after the parts they have.
    void clearQueue();

    /// Bytes settled, or acknowledged of the parts in flight, never more than the file has. What only fills the
    /// kernel's send queues has not gone up: at the beginning that is many times what the line carries.
    qint64 sent() const;
    /// Why nothing moves: what the latest attempt failed with, once no part has got any further since its own did, or
    /// the silence of storage. Nothing while something moves.
    std::optional<Trouble> trouble(Clock::Moment now) const;
    /// For how long no byte has left of any part in flight; zero while none is.
    std::chrono::nanoseconds silence(Clock::Moment now) const;
    std::size_t doneCount() const;
    ConfirmedParts done() const;
    std::size_t queued() const;
    /// The first failure of a lane, or null.
    std::exception_ptr failure() const;

private:
    const qint64 m_byteSize;
    const int m_lanes;
    const std::shared_ptr<CancelFlag> m_finished = std::make_shared<CancelFlag>();
    mutable std::mutex m_lock;
    // Guarded by m_lock.
    std::vector<int> m_queue; // descending
    ConfirmedParts m_done;
    qint64 m_settled = 0;
    struct InFlight {
        Sending sending;
        std::optional<Trouble> trouble = {};
        Clock::Moment failed = {}; // when `trouble` was noted
    };
    void leave(int part);
    std::optional<double> usualPace(int without) const;

    std::map<int, InFlight> m_inFlight; // by part
    int m_taken = 0;                    // parts that lanes have and that are neither settled nor given up
    std::map<int, int> m_takenOver;     // how often, by part
    std::deque<double> m_paces;         // bytes a second of the parts settled last
    int m_attempts = 0;                 // that are under way
    int m_allowed;                      // at once
    int m_broken = 0;                   // attempts since a part was confirmed or `m_allowed` changed
    int m_good = 0;                     // parts confirmed in good time since then
    std::exception_ptr m_failure;
};

} // namespace palvera
