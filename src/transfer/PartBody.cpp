#include "transfer/PartBody.h"

#include "transfer/UploadFailures.h"

#include <algorithm>
#include <cstring>

namespace palvera {

namespace {

/// Bytes read from the file at a time: small enough to be in the processor's cache still when they are sent.
constexpr qint64 sliceSize = 1LL << 20;

} // namespace

PartBody::PartBody(const SourceFile& file, ByteRange range, std::span<char> buffer)
    : m_file(file), m_range(range), m_buffer(buffer)
{}

std::size_t PartBody::read(qint64 offset, std::span<char> into)
{
    qint64 length = std::min(qint64(into.size()), m_range.length - offset);
    if (m_buffer.empty()) {
        into = into.first(std::size_t(length));
        if (m_file.readAt(m_range.offset + offset, into) < length)
            throw SourceChanged();
        return into.size();
    }
    fillUpTo(offset + length);
    std::memcpy(into.data(), m_buffer.data() + offset, std::size_t(length));
    return std::size_t(length);
}

void PartBody::fillUpTo(qint64 end)
{
    while (m_filled < end) {
        qint64 wanted = std::min(sliceSize, m_range.length - m_filled);
        auto slice = m_buffer.subspan(std::size_t(m_filled), std::size_t(wanted));
        if (m_file.readAt(m_range.offset + m_filled, slice) < wanted)
            throw SourceChanged();
        m_filled += wanted;
    }
}

} // namespace palvera
