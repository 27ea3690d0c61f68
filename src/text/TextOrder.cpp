#include "text/TextOrder.h"

#include <QCollator>

#include <algorithm>

namespace palvera {

QList<qsizetype> textOrder(const QStringList& texts)
{
    const QLocale user; // that of machines, C, knows no numbers within names
    QCollator collator(user.language() == QLocale::C ? QLocale(QLocale::English) : user);
    collator.setNumericMode(true);
    std::vector<std::pair<QCollatorSortKey, qsizetype>> keys; // a key is costly, a comparison of two is not
    keys.reserve(std::size_t(texts.size()));
    for (qsizetype at = 0; at < texts.size(); ++at)
        keys.emplace_back(collator.sortKey(texts[at]), at);
    std::ranges::sort(keys, [](const auto& one, const auto& other) {
        const int difference = one.first.compare(other.first);
        return difference < 0 || (difference == 0 && one.second < other.second);
    });
    QList<qsizetype> order;
    order.reserve(texts.size());
    for (const auto& [key, at] : keys)
        order.append(at);
    return order;
}

} // namespace palvera
