#include "screens/deliverables/DeliverableFilter.h"

#include "screens/Wording.h"
#include "text/TextOrder.h"

#include <QSet>

namespace palvera {

namespace {

QStringList sorted(const QSet<QString>& values)
{
    QStringList list(values.begin(), values.end());
    // By code point, which is not the order of UTF-16's units.
    std::ranges::sort(list, [](const QString& a, const QString& b) { return a.toUcs4() < b.toUcs4(); });
    list.prepend(DeliverableFilter::all);
    return list;
}

} // namespace

const QString DeliverableFilter::all = QStringLiteral("All");

const QString DeliverableOrder::platform = QStringLiteral("platform");
const QString DeliverableOrder::name = QStringLiteral("name");
const QString DeliverableOrder::status = QStringLiteral("status");

DeliverableCards sorted(DeliverableCards cards, const QString& order)
{
    if (order == DeliverableOrder::platform)
        return cards;
    QStringList texts;
    texts.reserve(cards.size());
    for (const auto& card : cards)
        texts.append(order == DeliverableOrder::name ? card->title : humanised(card->deliverable.status));
    DeliverableCards inOrder;
    inOrder.reserve(cards.size());
    for (const auto at : textOrder(texts))
        inOrder.append(cards[at]);
    return inOrder;
}

bool DeliverableFilter::isSet() const
{
    auto unset = DeliverableFilter{.search = search};
    return *this != unset;
}

bool matches(const DeliverableCard& card, const DeliverableFilter& filter, const QString& query)
{
    const auto& row = card.deliverable;
    auto isSet = [](const QString& wanted) { return wanted != DeliverableFilter::all; };
    if ((isSet(filter.family) && filter.family != row.family) ||
        (isSet(filter.status) && filter.status != row.status) ||
        (isSet(filter.language) && filter.language != row.language.value_or(QString())))
        return false;
    if (filter.filled != DeliverableFilter::Filled::all &&
        card.isFiled != (filter.filled == DeliverableFilter::Filled::yes))
        return false;
    return query.isEmpty() || card.searchText.contains(query);
}

QString queryOf(const QString& search)
{
    return search.trimmed().toLower();
}

FilterValues filterValues(const DeliverableCards& cards)
{
    QSet<QString> families, statuses, languages;
    for (const auto& card : cards) {
        families.insert(card->deliverable.family);
        statuses.insert(card->deliverable.status);
        if (card->deliverable.language)
            languages.insert(*card->deliverable.language);
    }
    return {.families = sorted(families), .statuses = sorted(statuses), .languages = sorted(languages)};
}

} // namespace palvera
