#include "transfer/ChunkWriter.h"

#include <boost/asio/post.hpp>
#include <boost/asio/use_awaitable.hpp>

#include <algorithm>
#include <cstring>
#include <utility>

namespace palvera {

ChunkWriter::ChunkWriter(Executor writing, const DestinationFile& file, SlicePool& slices)
    : m_writing(std::move(writing)), m_file(file), m_slices(slices)
{}

void ChunkWriter::begin(ByteRange range)
{
    m_range = range;
    m_taken = 0;
    m_handedOver = 0;
    m_filled = 0;
    m_failure = nullptr;
}

void ChunkWriter::take(std::span<const char> bytes)
{
    m_taken += static_cast<qint64>(bytes.size());
    while (!bytes.empty()) {
        if (!m_slice)
            m_slice = m_slices.take();
        const auto fits = std::min(static_cast<std::size_t>(m_slices.sliceSize() - m_filled), bytes.size());
        std::memcpy(m_slice.get() + m_filled, bytes.data(), fits); // std::copy was measured to cost twice as much
        bytes = bytes.subspan(fits);
        m_filled += static_cast<qint64>(fits);
        if (m_filled == m_slices.sliceSize())
            writeSlice();
    }
}

void ChunkWriter::writeSlice()
{
    const auto offset = m_range.offset + m_handedOver;
    const auto length = std::exchange(m_filled, 0);
    m_handedOver += length;
    boost::asio::post(m_writing, [this, slice = std::move(m_slice), offset, length] {
        write(offset, {slice.get(), static_cast<std::size_t>(length)});
    });
}

Task<void> ChunkWriter::settle()
{
    // Posted, to come after all that was posted before. What is dispatched, as callOn does, overtakes that where the
    // caller was itself resumed from the strand.
    return boost::asio::post(m_writing, boost::asio::use_awaitable);
}

Task<void> ChunkWriter::finish()
{
    if (m_filled > 0)
        writeSlice();
    boost::asio::post(m_writing, [this] { m_file.startStoring(m_range.offset, m_range.length); });
    co_await settle();
    if (m_failure)
        std::rethrow_exception(m_failure);
}

void ChunkWriter::write(qint64 offset, std::span<const char> bytes)
{
    try {
        if (!m_failure)
            m_file.writeAt(offset, bytes);
    } catch (...) {
        m_failure = std::current_exception();
    }
}

} // namespace palvera
