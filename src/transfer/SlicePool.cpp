#include "transfer/SlicePool.h"

#include <algorithm>

namespace palvera {

namespace {

constexpr qint64 blockSize = 2 << 20;

} // namespace

SlicePool::Slice SlicePool::take()
{
    std::lock_guard guard(m_lock);
    if (m_spare.empty())
        addBlock();
    Slice slice(m_spare.back(), GiveBack{this});
    m_spare.pop_back();
    return slice;
}

void SlicePool::addBlock()
{
    auto bytes = m_blocks.emplace_back(std::max(blockSize, m_sliceSize)).first(std::max(blockSize, m_sliceSize));
    for (auto left = bytes; qint64(left.size()) >= m_sliceSize; left = left.subspan(std::size_t(m_sliceSize)))
        m_spare.push_back(left.data());
}

void SlicePool::giveBack(char* bytes)
{
    std::lock_guard guard(m_lock);
    m_spare.push_back(bytes);
}

} // namespace palvera
