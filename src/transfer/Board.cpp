#include "transfer/Board.h"

#include <algorithm>
#include <utility>

namespace palvera {

namespace {

constexpr int mostTakeOvers = 2;
constexpr std::size_t rememberedPaces = 16;
constexpr std::chrono::minutes longPart{1};

} // namespace

Board::Board(std::vector<int> queue, ConfirmedParts done, qint64 partSize, qint64 byteSize, int lanes)
    : m_byteSize(byteSize),
      m_lanes(lanes),
      m_queue(std::move(queue)),
      m_done(std::move(done)),
      m_settled(qint64(m_done.size()) * partSize),
      m_allowed(lanes)
{
    if (m_queue.empty())
        m_finished->stop();
}

std::optional<int> Board::nextPart()
{
    std::lock_guard guard(m_lock);
    if (m_queue.empty())
        return std::nullopt;
    int part = m_queue.back();
    m_queue.pop_back();
    ++m_taken;
    return part;
}

void Board::watch(Sending sending)
{
    std::lock_guard guard(m_lock);
    const auto part = sending.part;
    m_inFlight[part] = {.sending = std::move(sending)};
}

void Board::settle(const Sending& sending, const QString& etag)
{
    const auto taken = sending.watcher->taken();
    std::lock_guard guard(m_lock);
    if (sending.cut->isStopped())
        return;
    m_done[sending.part] = etag;
    m_settled += sending.bytes;
    if (taken.count() > 0)
        m_paces.push_back(double(sending.bytes) / std::chrono::duration<double>(taken).count());
    if (m_paces.size() > rememberedPaces)
        m_paces.pop_front();
    m_broken = 0;
    if (taken > longPart) {
        m_allowed = std::max(1, m_allowed - 1);
        m_good = 0;
    } else if (m_allowed < m_lanes && ++m_good >= m_allowed) {
        m_allowed = std::min(m_lanes, 2 * m_allowed);
        m_good = 0;
    }
    leave(sending.part);
}

void Board::leave(int part)
{
    m_inFlight.erase(part);
    --m_taken;
    if (m_taken == 0 && m_queue.empty())
        m_finished->stop();
}

std::optional<int> Board::takeOver()
{
    std::lock_guard guard(m_lock);
    for (auto& [part, one] : m_inFlight) {
        const auto pace = one.sending.watcher->pace();
        const auto left = one.sending.bytes - one.sending.watcher->state().sent;
        const auto usual = usualPace(part);
        if (!pace || !usual)
            continue;
        const bool isSlow = left > 0 ? crawls(left, *pace, one.sending.bytes, *usual)
                                     : isOverdue(one.sending.watcher->standing(), one.sending.bytes, *usual);
        if (!isSlow || m_takenOver[part] == mostTakeOvers)
            continue;
        ++m_takenOver[part];
        one.sending.cut->stop();
        const auto taken = part;
        m_inFlight.erase(part);
        return taken;
    }
    return {};
}

/// Of the parts settled last and of those in flight but one.
std::optional<double> Board::usualPace(int without) const
{
    std::vector<double> paces(m_paces.begin(), m_paces.end());
    for (const auto& [part, one] : m_inFlight)
        if (auto pace = one.sending.watcher->pace(); pace && part != without)
            paces.push_back(pace->bytesPerSecond);
    return medianPace(std::move(paces));
}

bool Board::mayBeginAttempt()
{
    std::lock_guard guard(m_lock);
    if (m_attempts >= m_allowed)
        return false;
    ++m_attempts;
    return true;
}

void Board::attemptEnded(bool hasBroken)
{
    std::lock_guard guard(m_lock);
    --m_attempts;
    if (!hasBroken || ++m_broken <= m_allowed)
        return;
    m_allowed = std::max(1, m_allowed / 2);
    m_broken = 0;
    m_good = 0;
}

void Board::noteTrouble(int part, Trouble trouble, Clock::Moment now)
{
    std::lock_guard guard(m_lock);
    if (auto found = m_inFlight.find(part); found != m_inFlight.end()) {
        found->second.trouble = std::move(trouble);
        found->second.failed = now;
    }
}

std::optional<Trouble> Board::trouble(Clock::Moment now) const
{
    const auto silent = troubleOfSilence(silence(now));
    std::lock_guard guard(m_lock);
    // Between attempts storage has nothing to answer.
    if (silent &&
        std::ranges::any_of(m_inFlight, [](const auto& one) { return one.second.sending.watcher->isUnderWay(); }))
        return silent;
    const InFlight* latest = nullptr;
    for (const auto& [part, one] : m_inFlight) {
        const auto state = one.sending.watcher->state();
        bool isStuck = one.trouble && (state.sent == 0 || state.moved <= one.failed);
        if (!isStuck)
            return {};
        if (!latest || one.failed > latest->failed)
            latest = &one;
    }
    return latest ? latest->trouble : std::nullopt;
}

std::chrono::nanoseconds Board::silence(Clock::Moment now) const
{
    std::lock_guard guard(m_lock);
    std::optional<Clock::Moment> moved;
    for (const auto& [part, one] : m_inFlight)
        moved = std::max(moved, std::optional(one.sending.watcher->state().moved));
    return moved ? now - *moved : std::chrono::nanoseconds(0);
}

void Board::giveUp(int part)
{
    std::lock_guard guard(m_lock);
    leave(part);
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
    if (m_taken == 0)
        m_finished->stop();
}

qint64 Board::sent() const
{
    std::lock_guard guard(m_lock);
    qint64 sum = m_settled;
    for (const auto& [part, one] : m_inFlight)
        sum += one.sending.watcher->state().acknowledged;
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
