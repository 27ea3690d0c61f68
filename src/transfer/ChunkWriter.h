#pragma once

#include "files/DestinationFile.h"
#include "http/HttpClient.h"
#include "transfer/ByteRange.h"

#include <atomic>
#include <memory>

namespace palvera {

/// One chunk after another on its way from the network into a file. What arrives is gathered in a slice and written by
/// the thread that receives it, while it is in the cache of that thread's processor: writing on a thread of its own was
/// measured to cost a tenth more time, a seventh more processor time, and a hundred MiB of memory. A disk that cannot
/// keep up holds the line up, and so the sender.
///
/// What an answer leaves that is cut off is no chunk: no record lists it. The next attempt goes on after it, or begins
/// the chunk again and writes over it.
class ChunkWriter final : public BodySink {
public:
    ChunkWriter(const DestinationFile& file, qint64 sliceSize)
        : m_file(file), m_sliceSize(sliceSize), m_slice(new char[std::size_t(sliceSize)])
    {}

    /// The bytes of `range` arrive next, from its start on.
    void begin(ByteRange range);
    /// What an answer that was cut off has left to come, which arrives next.
    ByteRange goOn();
    qint64 room() const override { return m_range.length - m_kept; }
    /// Throws FileError where a byte could not be written. With the last one of a chunk, all of it is on its way to the
    /// disk.
    void take(std::span<const char> bytes) override;
    /// How much of the present chunk has arrived. Any thread.
    qint64 taken() const { return m_taken; }
    /// Counts the chunk no more.
    void forgetTaken() { m_taken = 0; }
    /// A rate limit holds the chunk up. Any thread.
    void noteHeld() { m_held = true; }
    /// Whether one has since this was last asked. Any thread.
    bool wasHeld() { return m_held.exchange(false); }

private:
    void writeSlice();

    const DestinationFile& m_file;
    const qint64 m_sliceSize;
    const std::unique_ptr<char[]> m_slice;
    ByteRange m_range;
    qint64 m_kept = 0; // of answers that were cut off
    std::atomic<qint64> m_taken = 0;
    std::atomic<bool> m_held = false;
    qint64 m_written = 0; // bytes of the chunk
    qint64 m_filled = 0;  // bytes of the slice, which come after these
};

} // namespace palvera
