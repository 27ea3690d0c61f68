#pragma once

#include "transfers/ItemList.h"

#include <QObject>

namespace palvera {

/// The transfers of this run as a screen observes them: each change is announced by the item's id. Main thread.
class TransferItems : public QObject {
    Q_OBJECT

public:
    explicit TransferItems(Clock& clock, QObject* parent) : QObject(parent), m_clock(clock) {}

    // As of ItemList.
    const std::vector<Item>& items() const { return m_items.all(); }
    const Item* find(const QUuid& id) const { return m_items.find(id); }
    std::ptrdiff_t placeOf(const QUuid& id) const { return m_items.placeOf(id); }
    std::vector<Item> inFlight() const { return m_items.inFlight(); }
    std::vector<Item> finished() const { return m_items.finished(); }
    std::optional<Item> activeItem(const QString& deliverableId) const { return m_items.activeItem(deliverableId); }
    std::vector<Item> binUploads(const QString& orgId) const { return m_items.binUploads(orgId); }

    int inFlightCount() const { return m_inFlight; }
    /// Of these.
    int pausedCount() const { return m_paused; }
    /// Puts it before another one; at the end when there is none of that id. Those that wait begin in that order.
    void move(const QUuid& id, const QUuid& before);

Q_SIGNALS:
    void itemAdded(const QUuid& id);
    void itemChanged(const QUuid& id);
    void itemRemoved(const QUuid& id);
    /// It has another place among the items.
    void itemMoved(const QUuid& id);
    /// Others are in flight, or paused.
    void inFlightChanged();

protected:
    void append(Item item);
    void change(const QUuid& id, const std::function<void(Item&)>& change);
    void setState(const QUuid& id, Item::State state);
    void remove(QUuid id); // a copy: it may be the item's own
    /// What an engine reports.
    void apply(const QUuid& id, qint64 sent, qint64 total, std::optional<double> rate,
               const std::optional<Trouble>& trouble);

private:
    void count(int inFlight, int paused);

    Clock& m_clock;
    ItemList m_items;
    int m_inFlight = 0;
    int m_paused = 0;
};

} // namespace palvera
