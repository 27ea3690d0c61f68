#pragma once

#include "transfers/Item.h"

#include <QHash>

#include <functional>
#include <vector>

namespace palvera {

/// Items in the order in which they were added or put since, each found by its id. One thread.
class ItemList {
public:
    const std::vector<Item>& all() const { return m_items; }
    /// Null when no item has that id. Valid until the next change.
    const Item* find(const QUuid& id) const;
    /// In the order; -1 when no item has that id.
    std::ptrdiff_t placeOf(const QUuid& id) const;

    // In their order:

    std::vector<Item> inFlight() const;
    /// Those that are not in flight.
    std::vector<Item> finished() const;
    /// The first item in flight, of either kind, of that deliverable.
    std::optional<Item> activeItem(const QString& deliverableId) const;
    /// The uploads in flight into that organisation's bin.
    std::vector<Item> binUploads(const QString& orgId) const;

    void append(Item item);
    /// Lets `change` alter the item. False when no item has that id or nothing differs.
    bool change(const QUuid& id, const std::function<void(Item&)>& change);
    /// Puts it before another one; at the end when there is none of that id. False when it is there already.
    bool move(const QUuid& id, const QUuid& before);
    /// Does nothing when no item has that id.
    void remove(const QUuid& id);

private:
    std::vector<Item> all(const std::function<bool(const Item&)>& wanted) const;
    void renumber(std::size_t from);

    std::vector<Item> m_items;
    QHash<QUuid, std::size_t> m_places; // in m_items
};

} // namespace palvera
