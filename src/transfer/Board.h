#pragma once

#include "transfer/SendWatcher.h"
#include "transfer/UploadRules.h"

#include <exception>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace palvera {

/// What the lanes and the reporter of one upload run share: which parts remain, which are confirmed, what is in flight.
/// Any thread. Its lock may enclose one watcher's lock and nothing else.
class Board {
public:
    /// `queue` holds the parts to send, highest first. The confirmed parts count with `partSize` bytes each towards
    /// what is sent.
    Board(std::vector<int> queue, ConfirmedParts done, qint64 partSize, qint64 byteSize);

    /// Takes the lowest part that nobody has taken, or none.
    std::optional<int> nextPart();
    /// Counts `watcher` among the parts in flight until its part is settled or given up.
    void watch(int part, std::shared_ptr<SendWatcher> watcher);
    /// Storage confirmed `part` of `bytes` bytes under `etag`: it moves from in flight to settled in one step, so that
    /// no reader counts it twice.
    void settle(int part, const QString& etag, qint64 bytes);
    /// `part` failed for good. Its bytes no longer count as in flight.
    void giveUp(int part);

    /// Notes why a lane ended; the first one counts.
    void noteFailure(std::exception_ptr failure);
    /// Takes every remaining part away, so that the lanes end after the parts they have.
    void clearQueue();

    /// Bytes settled or in flight, never more than the file has.
    qint64 sent() const;
    std::size_t doneCount() const;
    ConfirmedParts done() const;
    std::size_t queued() const;
    /// The first failure of a lane, or null.
    std::exception_ptr failure() const;

private:
    const qint64 m_byteSize;
    mutable std::mutex m_lock;
    // Guarded by m_lock.
    std::vector<int> m_queue; // descending
    ConfirmedParts m_done;
    qint64 m_settled = 0;
    std::map<int, std::shared_ptr<SendWatcher>> m_watchers; // by part in flight
    std::exception_ptr m_failure;
};

} // namespace palvera
