#include "transfer/ChunkWriter.h"

#include <algorithm>
#include <cstring>

namespace palvera {

void ChunkWriter::begin(ByteRange range)
{
    m_range = range;
    m_kept = 0;
    m_taken = 0;
    m_written = 0;
    m_filled = 0;
}

ByteRange ChunkWriter::goOn()
{
    m_kept = m_taken;
    return {.offset = m_range.offset + m_kept, .length = m_range.length - m_kept};
}

void ChunkWriter::take(std::span<const char> bytes)
{
    m_taken += static_cast<qint64>(bytes.size());
    while (!bytes.empty()) {
        const auto fits = std::min(static_cast<std::size_t>(m_sliceSize - m_filled), bytes.size());
        std::memcpy(m_slice.get() + m_filled, bytes.data(), fits); // std::copy was measured to cost twice as much
        bytes = bytes.subspan(fits);
        m_filled += static_cast<qint64>(fits);
        if (m_filled == m_sliceSize)
            writeSlice();
    }
    if (m_taken == m_range.length) {
        writeSlice();
        m_file.startStoring(m_range.offset, m_range.length);
    }
}

void ChunkWriter::writeSlice()
{
    m_file.writeAt(m_range.offset + m_written, {m_slice.get(), static_cast<std::size_t>(m_filled)});
    m_written += m_filled;
    m_filled = 0;
}

} // namespace palvera
