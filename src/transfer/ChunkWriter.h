#pragma once

#include "files/DestinationFile.h"
#include "http/HttpClient.h"
#include "transfer/ByteRange.h"
#include "transfer/SlicePool.h"

#include <atomic>
#include <exception>

namespace palvera {

/// One chunk after another on its way from the network into a file. What has arrived is written, slice by slice, while
/// more arrives: neither waits for the other, and the bytes are still in the processor's cache when they are copied.
///
/// What an answer leaves in the file that is cut off is no chunk: no record lists it, and the next attempt writes over
/// it. Nothing may be destroyed before `settle` or `finish` has ended.
class ChunkWriter final : public BodySink {
public:
    /// Writes on the strand `writing`.
    ChunkWriter(Executor writing, const DestinationFile& file, SlicePool& slices);

    /// The bytes of `range` arrive next, from its start on. Not before an earlier attempt has settled.
    void begin(ByteRange range);
    qint64 room() const override { return m_range.length; }
    void take(std::span<const char> bytes) override;
    /// How much of the present chunk has arrived. Any thread.
    qint64 taken() const { return m_taken; }
    /// Counts the chunk no more.
    void forgetTaken() { m_taken = 0; }
    /// Returns once nothing is being written. Not cut short by a cancellation.
    Task<void> settle();
    /// Writes what is not written yet of a chunk that is all there. Throws FileError where a byte could not be written.
    Task<void> finish();

private:
    void writeSlice();
    void write(qint64 offset, std::span<const char> bytes); // on m_writing

    const Executor m_writing;
    const DestinationFile& m_file;
    SlicePool& m_slices;
    ByteRange m_range;
    std::atomic<qint64> m_taken = 0;
    qint64 m_handedOver = 0;      // bytes of the chunk that are written, or will be
    SlicePool::Slice m_slice;     // what comes after these
    qint64 m_filled = 0;          // bytes of it
    std::exception_ptr m_failure; // on m_writing; anywhere once that has settled
};

} // namespace palvera
