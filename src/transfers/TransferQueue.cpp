#include "transfers/TransferQueue.h"

#include "async/Failure.h"

namespace palvera {

TransferQueue::TransferQueue(Executor main, int most, std::function<std::ptrdiff_t(const QUuid&)> placeOf)
    : m_main(std::move(main)), m_most(most), m_placeOf(std::move(placeOf))
{}

void TransferQueue::setMost(int most)
{
    m_most = most;
    fill();
}

bool TransferQueue::enter(const QUuid& id)
{
    auto& entry = m_entries[id];
    if (!entry)
        entry = std::make_shared<Entry>(m_main);
    entry->hasSlot = entry->hasSlot || m_urgent.contains(id);
    fill();
    return m_entries[id]->hasSlot;
}

Task<void> TransferQueue::untilGranted(QUuid id)
{
    const auto entry = m_entries.value(id);
    while (entry && !entry->hasSlot && !entry->hasLeft)
        co_await entry->changed.wait();
    if (!entry || entry->hasLeft)
        throwCancelled();
}

void TransferQueue::startNow(const QUuid& id)
{
    m_urgent.insert(id);
    enter(id);
    m_entries[id]->changed.set();
}

void TransferQueue::leave(const QUuid& id)
{
    const auto entry = m_entries.take(id);
    if (!entry)
        return;
    entry->hasLeft = true;
    entry->changed.set();
    fill();
}

void TransferQueue::forget(const QUuid& id)
{
    m_urgent.remove(id);
    leave(id);
}

int TransferQueue::taken() const
{
    return int(std::ranges::count_if(m_entries, [](const auto& entry) { return entry->hasSlot; }));
}

void TransferQueue::fill()
{
    for (int free = m_most - taken(); free > 0; --free) {
        std::shared_ptr<Entry> next;
        std::ptrdiff_t place = 0;
        for (auto entry = m_entries.cbegin(); entry != m_entries.cend(); ++entry) {
            if ((*entry)->hasSlot)
                continue;
            const auto its = m_placeOf(entry.key());
            if (!next || its < place) {
                next = *entry;
                place = its;
            }
        }
        if (!next)
            return;
        next->hasSlot = true;
        next->changed.set();
    }
}

} // namespace palvera
