#include "transfers/TransferItems.h"

namespace palvera {

void TransferItems::append(Item item)
{
    const auto id = item.id;
    m_items.append(std::move(item));
    count(int(find(id)->isInFlight()), int(find(id)->isPaused()));
    Q_EMIT itemAdded(id);
}

void TransferItems::move(const QUuid& id, const QUuid& before)
{
    if (m_items.move(id, before))
        Q_EMIT itemMoved(id);
}

void TransferItems::change(const QUuid& id, const std::function<void(Item&)>& change)
{
    // Taken from the change itself: whoever hears of it may change the item again before this goes on.
    int inFlight = 0;
    int paused = 0;
    bool differs = m_items.change(id, [&](Item& item) {
        inFlight -= int(item.isInFlight());
        paused -= int(item.isPaused());
        change(item);
        inFlight += int(item.isInFlight());
        paused += int(item.isPaused());
    });
    if (!differs)
        return;
    if (inFlight != 0 || paused != 0)
        count(inFlight, paused);
    Q_EMIT itemChanged(id);
}

void TransferItems::setState(const QUuid& id, Item::State state)
{
    change(id, [&](Item& item) {
        item.state = std::move(state);
        item.trouble.reset();
    });
}

void TransferItems::apply(const QUuid& id, qint64 sent, qint64 total, std::optional<double> rate,
                          const std::optional<Trouble>& trouble)
{
    change(id, [&](Item& item) {
        item.apply(sent, total, rate, m_clock.now());
        item.trouble = item.isPaused() ? std::nullopt : trouble;
    });
}

void TransferItems::remove(QUuid id)
{
    const auto* item = find(id);
    if (!item)
        return;
    const int wasInFlight = int(item->isInFlight()), wasPaused = int(item->isPaused());
    m_items.remove(id);
    if (wasInFlight)
        count(-wasInFlight, -wasPaused);
    Q_EMIT itemRemoved(id);
}

void TransferItems::count(int inFlight, int paused)
{
    m_inFlight += inFlight;
    m_paused += paused;
    Q_EMIT inFlightChanged();
}

} // namespace palvera
