#include "transfers/ItemList.h"

namespace palvera {

const Item* ItemList::find(const QUuid& id) const
{
    auto place = m_places.find(id);
    return place == m_places.end() ? nullptr : &m_items[*place];
}

std::ptrdiff_t ItemList::placeOf(const QUuid& id) const
{
    auto place = m_places.find(id);
    return place == m_places.end() ? -1 : std::ptrdiff_t(*place);
}

std::vector<Item> ItemList::all(const std::function<bool(const Item&)>& wanted) const
{
    std::vector<Item> found;
    std::ranges::copy_if(m_items, std::back_inserter(found), wanted);
    return found;
}

std::vector<Item> ItemList::inFlight() const
{
    return all([](const Item& item) { return item.isInFlight(); });
}

std::vector<Item> ItemList::finished() const
{
    return all([](const Item& item) { return !item.isInFlight(); });
}

std::optional<Item> ItemList::activeItem(const QString& deliverableId) const
{
    auto found = std::ranges::find_if(m_items, [&](const Item& item) {
        const auto* deliverable = item.target.asDeliverable();
        return deliverable && deliverable->deliverableId == deliverableId && item.isInFlight();
    });
    return found == m_items.end() ? std::nullopt : std::optional(*found);
}

std::vector<Item> ItemList::binUploads(const QString& orgId) const
{
    return all([&](const Item& item) {
        const auto* bin = item.target.asBin();
        return item.kind == Item::Kind::upload && bin && bin->orgId == orgId && item.isInFlight();
    });
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

bool ItemList::move(const QUuid& id, const QUuid& before)
{
    const auto from = placeOf(id);
    if (from < 0 || id == before)
        return false;
    auto to = placeOf(before);
    if (to < 0)
        to = std::ptrdiff_t(m_items.size());
    if (to == from + 1)
        return false;
    const auto first = m_items.begin();
    if (to > from)
        std::rotate(first + from, first + from + 1, first + to);
    else
        std::rotate(first + to, first + from, first + from + 1);
    renumber(std::size_t(std::min(from, to)));
    return true;
}

void ItemList::remove(const QUuid& id)
{
    const auto place = placeOf(id);
    if (place < 0)
        return;
    m_places.remove(id);
    m_items.erase(m_items.begin() + place);
    renumber(std::size_t(place));
}

void ItemList::renumber(std::size_t from)
{
    for (auto place = from; place < m_items.size(); ++place)
        m_places[m_items[place].id] = place;
}

} // namespace palvera
