#include "transfer/Board.h"

#include <utility>

namespace palvera {

Board::Board(std::vector<int> queue, ConfirmedParts done, qint64 partSize, qint64 byteSize)
    : m_byteSize(byteSize),
      m_queue(std::move(queue)),
      m_done(std::move(done)),
      m_settled(qint64(m_done.size()) * partSize)
{}

std::optional<int> Board::nextPart()
{
    std::lock_guard guard(m_lock);
    if (m_queue.empty())
        return std::nullopt;
    int part = m_queue.back();
    m_queue.pop_back();
    return part;
}

void Board::watch(int part, std::shared_ptr<SendWatcher> watcher)
{
    std::lock_guard guard(m_lock);
    m_watchers[part] = std::move(watcher);
}

void Board::settle(int part, const QString& etag, qint64 bytes)
{
    std::lock_guard guard(m_lock);
    m_done[part] = etag;
    m_settled += bytes;
    m_watchers.erase(part);
}

void Board::giveUp(int part)
{
    std::lock_guard guard(m_lock);
    m_watchers.erase(part);
}

void Board::noteFailure(std::exception_ptr failure)
{
    std::lock_guard guard(m_lock);
    if (!m_failure)
        m_failure = std::move(failure);
}

void Board::clearQueue()
{
    std::lock_guard guard(m_lock);
    m_queue.clear();
}

qint64 Board::sent() const
{
    std::lock_guard guard(m_lock);
    qint64 sum = m_settled;
    for (const auto& [part, watcher] : m_watchers)
        sum += watcher->state().sent;
    return std::min(sum, m_byteSize);
}

std::size_t Board::doneCount() const
{
    std::lock_guard guard(m_lock);
    return m_done.size();
}

ConfirmedParts Board::done() const
{
    std::lock_guard guard(m_lock);
    return m_done;
}

std::size_t Board::queued() const
{
    std::lock_guard guard(m_lock);
    return m_queue.size();
}

std::exception_ptr Board::failure() const
{
    std::lock_guard guard(m_lock);
    return m_failure;
}

} // namespace palvera
