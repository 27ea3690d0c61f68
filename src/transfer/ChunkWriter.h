#pragma once

#include "platform/BulkBuffer.h"
#include "platform/DestinationFile.h"
#include "platform/Task.h"
#include "transfer/UploadRules.h"

#include <exception>

namespace palvera {

/// One chunk after another on its way from the network into a file. What has arrived is written while more arrives, so
/// that neither waits for the other and the bytes are still in the processor's cache when they are copied.
///
/// What an answer leaves in the file that is cut off is no chunk: no record lists it, and the next attempt writes over
/// it. Nothing may be destroyed before `settle` or `finish` has ended.
class ChunkWriter {
public:
    /// For chunks of at most `size` bytes, written on the strand `writing` at least `sliceSize` bytes at a time.
    ChunkWriter(Executor writing, const DestinationFile& file, qint64 size, qint64 sliceSize);

    /// Where the bytes of `range` are to arrive, from the start on. Not before an earlier attempt has settled.
    std::span<char> begin(ByteRange range);
    /// So many bytes have arrived. From any thread, one at a time.
    void received(qint64 length);
    /// Returns once nothing is being written. Not cut short by a cancellation.
    Task<void> settle();
    /// Writes what is not written yet of a chunk that is all there. Throws FileError where a byte could not be written.
    Task<void> finish();

private:
    void write(qint64 begin, qint64 end); // on m_writing

    const Executor m_writing;
    const DestinationFile& m_file;
    const qint64 m_sliceSize;
    BulkBuffer m_buffer;
    ByteRange m_range;
    qint64 m_handedOver = 0;      // bytes of the chunk that are written, or will be
    std::exception_ptr m_failure; // on m_writing
};

} // namespace palvera
