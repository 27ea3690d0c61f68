#include "transfers/ItemList.h"

namespace palvera {

const Item* ItemList::find(const QUuid& id) const
{
    auto place = m_places.find(id);
    return place == m_places.end() ? nullptr : &m_items[*place];
}

void ItemList::append(Item item)
{
    m_places.insert(item.id, m_items.size());
    m_items.push_back(std::move(item));
}

bool ItemList::change(const QUuid& id, const std::function<void(Item&)>& change)
{
    auto place = m_places.find(id);
    if (place == m_places.end())
        return false;
    Item changed = m_items[*place];
    change(changed);
    if (changed == m_items[*place])
        return false;
    m_items[*place] = std::move(changed);
    return true;
}

void ItemList::remove(const QUuid& id)
{
    auto found = m_places.constFind(id);
    if (found == m_places.constEnd())
        return;
    auto place = *found;
    m_places.erase(found);
    m_items.erase(m_items.begin() + std::ptrdiff_t(place));
    for (; place < m_items.size(); ++place)
        m_places[m_items[place].id] = place;
}

} // namespace palvera
