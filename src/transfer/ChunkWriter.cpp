#include "transfer/ChunkWriter.h"

#include "platform/RunOn.h"

#include <boost/asio/post.hpp>

#include <utility>

namespace palvera {

ChunkWriter::ChunkWriter(Executor writing, const DestinationFile& file, qint64 size, qint64 sliceSize)
    : m_writing(std::move(writing)), m_file(file), m_sliceSize(sliceSize), m_buffer(size)
{}

std::span<char> ChunkWriter::begin(ByteRange range)
{
    m_range = range;
    m_handedOver = 0;
    m_failure = nullptr;
    return m_buffer.first(range.length);
}

void ChunkWriter::received(qint64 length)
{
    if (length - m_handedOver < m_sliceSize)
        return;
    boost::asio::post(m_writing, [this, from = std::exchange(m_handedOver, length), length] { write(from, length); });
}

Task<void> ChunkWriter::settle()
{
    return callOn(m_writing, [] {}); // after all that was posted before
}

Task<void> ChunkWriter::finish()
{
    co_await callOn(m_writing, [this] {
        write(m_handedOver, m_range.length);
        if (m_failure)
            std::rethrow_exception(m_failure);
        m_file.startStoring(m_range.offset, m_range.length);
    });
}

void ChunkWriter::write(qint64 begin, qint64 end)
{
    try {
        if (!m_failure)
            m_file.writeAt(m_range.offset + begin, m_buffer.first(end).subspan(static_cast<std::size_t>(begin)));
    } catch (...) {
        m_failure = std::current_exception();
    }
}

} // namespace palvera
