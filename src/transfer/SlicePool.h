#pragma once

#include "files/BulkBuffer.h"

#include <memory>
#include <mutex>
#include <vector>

namespace palvera {

/// Memory for bytes on their way from the network to a file, in slices of one size that serve again and again.
///
/// What was given back last is handed out first: while the disk keeps up, a few slices that stay in the processor's
/// cache serve a whole download, and only what the disk has not taken yet needs more. Any thread; outlives its slices.
class SlicePool {
    struct GiveBack {
        void operator()(char* bytes) const { pool->giveBack(bytes); }
        SlicePool* pool;
    };

public:
    using Slice = std::unique_ptr<char[], GiveBack>;

    /// Of slices of `sliceSize` bytes.
    explicit SlicePool(qint64 sliceSize) : m_sliceSize(sliceSize) {}

    qint64 sliceSize() const { return m_sliceSize; }
    /// A slice with bytes of no meaning. Throws FileError when there is no memory for it.
    Slice take();

private:
    void giveBack(char* bytes);
    void addBlock();

    const qint64 m_sliceSize;
    std::mutex m_lock;
    // Guarded by m_lock.
    std::vector<BulkBuffer>
        m_blocks; // what the slices are cut from: huge pages, where small ones cost half as much again
    std::vector<char*> m_spare;
};

} // namespace palvera
