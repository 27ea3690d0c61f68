#include "files/BulkBuffer.h"

#include "files/FileError.h"

#include <QObject>

#include <sys/mman.h>

namespace palvera {

namespace {

constexpr std::size_t hugePage = 2U << 20;

} // namespace

BulkBuffer::BulkBuffer(qint64 size) : m_size(size)
{
    const auto length = (static_cast<std::size_t>(size) + hugePage - 1) / hugePage * hugePage;
    m_bytes.reset(static_cast<char*>(std::aligned_alloc(hugePage, length)));
    if (!m_bytes)
        throw FileError(QObject::tr("There is not enough memory to hold %1 MB at a time.").arg(size / 1'000'000));
    ::madvise(m_bytes.get(), length, MADV_HUGEPAGE); // only advice: small pages serve too
}

} // namespace palvera
