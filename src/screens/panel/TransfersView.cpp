#include "screens/panel/TransfersView.h"

#include "files/Quantities.h"
#include "text/VisibleText.h"
#include "transfers/Transfers.h"

namespace palvera {

using namespace std::chrono_literals;

namespace {

/// Of the deliverable, or of the organisation whose bin it is.
QString placeOf(const Item& item)
{
    const auto* deliverable = item.target.asDeliverable();
    return deliverable ? deliverable->deliverableId : item.target.orgId();
}

} // namespace

std::optional<int> overallPercent(const std::vector<Item>& items)
{
    qint64 sent = 0;
    qint64 total = 0;
    for (const auto& item : items) {
        if (!item.isInFlight() || item.total < 1)
            continue;
        sent += std::min(item.sent, item.total);
        total += item.total;
    }
    return total < 1 ? std::nullopt : std::optional(percentOf(sent, total));
}

TransfersView::TransfersView(Transfers& transfers, Clock& clock, const Executor& main, QObject* parent)
    : QObject(parent),
      m_transfers(transfers),
      m_inFlight(transfers, clock, TransferRows::Which::inFlight),
      m_finished(transfers, clock, TransferRows::Which::finished),
      m_interrupted(transfers, main)
{
    m_tick.setInterval(1s);
    connect(&m_tick, &QTimer::timeout, &m_inFlight, &TransferRows::tick);
    connect(&transfers, &Transfers::itemAdded, this, &TransfersView::added);
    connect(&transfers, &Transfers::itemChanged, this, &TransfersView::update);
    connect(&transfers, &Transfers::itemRemoved, this, &TransfersView::update);
    connect(&transfers, &Transfers::inFlightChanged, this, &TransfersView::badgeChanged);
    connect(&m_interrupted, &InterruptedView::countChanged, this, &TransfersView::badgeChanged);
    connect(&transfers, &Transfers::panelOpenChanged, this, &TransfersView::noteOpen);
    connect(&transfers, &Transfers::doubtChanged, this, &TransfersView::doubtChanged);
}

void TransfersView::setTab(Tab tab)
{
    if (std::exchange(m_tab, tab) == tab)
        return;
    if (tab == Interrupted)
        m_interrupted.load();
    Q_EMIT tabChanged();
}

bool TransfersView::isPanelOpen() const
{
    return m_transfers.isPanelOpen();
}

void TransfersView::setPanelOpen(bool open)
{
    const auto seen = isPanelOpen() ? m_openFor : QSet<QString>();
    m_transfers.setPanelOpen(open);
    if (!open)
        m_openFor += seen;
}

/// It opens where there is something to see.
void TransfersView::noteOpen()
{
    m_openFor.clear();
    if (isPanelOpen())
        for (const auto& item : m_transfers.inFlight())
            m_openFor.insert(placeOf(item));
    if (isPanelOpen() && (isMoving() || m_interrupted.count() > 0))
        setTab(isMoving() ? InFlight : Interrupted);
    Q_EMIT panelOpenChanged();
}

void TransfersView::showInterrupted()
{
    setPanelOpen(true);
    setTab(Interrupted);
}

bool TransfersView::isMoving() const
{
    return m_transfers.inFlightCount() > 0;
}

QString TransfersView::badge() const
{
    const auto count = isMoving() ? m_transfers.inFlightCount() : m_interrupted.count();
    return count == 0 ? QString() : QString::number(count);
}

QString TransfersView::badgeText() const
{
    return isMoving() || badge().isEmpty() ? badge() : tr("%1 cut off").arg(badge());
}

QString TransfersView::doubtText() const
{
    auto doubt = m_transfers.doubt();
    if (!doubt)
        return {};
    QStringList place{doubt->deliverable.contextLine().value_or(QString()), doubt->deliverable.label};
    place.removeAll(QString());
    return tr("Going to %1\n\n%2").arg(visibleText(place.join(QStringLiteral(" · "))), doubt->message);
}

void TransfersView::stop(const QString& key)
{
    m_transfers.stop(QUuid(key));
}

void TransfersView::clearFinished()
{
    m_transfers.clearFinished();
}

void TransfersView::confirmDoubt()
{
    m_transfers.confirmDoubt();
}

void TransfersView::dismissDoubt()
{
    m_transfers.dismissDoubt();
}

/// Whoever has closed it does not want it back for the same.
void TransfersView::added(const QUuid& id)
{
    const auto place = placeOf(*m_transfers.find(id));
    if (isPanelOpen())
        m_openFor.insert(place);
    else if (!m_openFor.contains(place))
        setPanelOpen(true);
    update();
}

void TransfersView::update()
{
    const auto& items = m_transfers.items();
    bool waits =
        std::ranges::any_of(items, [](const Item& item) { return std::holds_alternative<Item::Retrying>(item.state); });
    if (waits != m_tick.isActive())
        waits ? m_tick.start() : m_tick.stop();
    auto percent = overallPercent(items);
    auto overall = percent ? QStringLiteral("%1%").arg(*percent) : QString();
    if (std::exchange(m_overall, overall) != overall)
        Q_EMIT overallChanged();
}

} // namespace palvera
