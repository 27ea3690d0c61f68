#include "screens/panel/Announcements.h"

#include "files/Quantities.h"
#include "screens/TransferTexts.h"
#include "text/VisibleText.h"
#include "transfers/Transfers.h"

namespace palvera {

namespace {

constexpr int few = 3;
constexpr int quarter = 25; // percent

} // namespace

Announcements::Announcements(const Transfers& transfers, QObject* parent) : QObject(parent), m_transfers(transfers)
{
    connect(&transfers, &Transfers::itemAdded, this, [this](const QUuid& id) {
        if (const auto* item = m_transfers.find(id))
            m_heard.insert(id, due(*item));
    });
    connect(&transfers, &Transfers::itemChanged, this, &Announcements::look);
    connect(&transfers, &Transfers::itemRemoved, this, [this](const QUuid& id) { m_heard.remove(id); });
}

Announcements::Heard Announcements::due(const Item& item)
{
    const bool isRetrying = std::holds_alternative<Item::Retrying>(item.state);
    return {.quarters = percentOf(item.sent, item.total) / quarter,
            .isStill = isRetrying || (std::holds_alternative<Item::Running>(item.state) && item.trouble),
            .isOver = !item.isInFlight()};
}

QString Announcements::textFor(const Item& item, const Heard& heard, bool withQuarters)
{
    const auto now = due(item);
    const auto name = visibleText(item.name);
    if (now.isOver) {
        if (heard.isOver || std::holds_alternative<Item::Stopped>(item.state))
            return {};
        return std::holds_alternative<Item::Done>(item.state)
                   ? tr("“%1” is done.").arg(name)
                   : tr("“%1” could not be transferred. %2").arg(name, troubleOf(item));
    }
    if (now.isStill && !heard.isStill)
        return tr("“%1” is at a standstill. %2").arg(name, troubleOf(item));
    const bool isFurther = now.quarters > heard.quarters && now.quarters * quarter < 100;
    return isFurther && withQuarters ? tr("“%1”: %2 percent.").arg(name).arg(now.quarters * quarter) : QString();
}

void Announcements::look(const QUuid& id)
{
    const auto* item = m_transfers.find(id);
    if (!item)
        return;
    auto& heard = m_heard[id];
    const auto text = textFor(*item, heard, m_transfers.inFlightCount() <= few);
    const auto now = due(*item);
    // One that comes to a standstill again and again is said to once for each quarter.
    const bool isStill = heard.isStill && now.quarters == heard.quarters ? true : now.isStill;
    heard = {.quarters = std::max(heard.quarters, now.quarters), .isStill = isStill, .isOver = now.isOver};
    if (!text.isEmpty())
        Q_EMIT announced(text);
}

} // namespace palvera
