#pragma once

#include "transfers/Item.h"

#include <QHash>

#include <functional>
#include <vector>

namespace palvera {

/// Items in the order added, each found by its id. One thread.
class ItemList {
public:
    const std::vector<Item>& all() const { return m_items; }
    /// Null when no item has that id. Valid until the next change.
    const Item* find(const QUuid& id) const;

    void append(Item item);
    /// Lets `change` alter the item. False when no item has that id or nothing differs.
    bool change(const QUuid& id, const std::function<void(Item&)>& change);
    /// Does nothing when no item has that id.
    void remove(const QUuid& id);

private:
    std::vector<Item> m_items;
    QHash<QUuid, std::size_t> m_places; // in m_items
};

} // namespace palvera
