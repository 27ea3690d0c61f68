#include "transfer/PartBody.h"

#include "transfer/UploadFailures.h"

#include <algorithm>

namespace palvera {

std::size_t PartBody::read(qint64 offset, std::span<char> into)
{
    into = into.first(std::min(into.size(), std::size_t(m_range.length - offset)));
    if (m_file.readAt(m_range.offset + offset, into) < qint64(into.size()))
        throw SourceChanged();
    return into.size();
}

} // namespace palvera
