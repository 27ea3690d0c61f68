#include "screens/panel/TransfersView.h"

#include "files/Quantities.h"
#include "screens/TransferTexts.h"
#include "text/VisibleText.h"
#include "transfers/Transfers.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>

#include <boost/asio/post.hpp>

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

TransfersView::TransfersView(Transfers& transfers, Clock& clock, const Executor& main, Files files, QObject* parent)
    : QObject(parent),
      m_transfers(transfers),
      m_clock(clock),
      m_main(main),
      m_inFlight(transfers, clock, TransferRows::Which::inFlight),
      m_finished(transfers, clock, TransferRows::Which::finished),
      m_interrupted(transfers, main),
      m_files(std::move(files))
{
    m_tick.setInterval(1s);
    connect(&m_tick, &QTimer::timeout, &m_inFlight, &TransferRows::tick);
    connect(&transfers, &Transfers::itemAdded, this, &TransfersView::added);
    connect(&transfers, &Transfers::itemChanged, this, &TransfersView::updateSoon);
    connect(&transfers, &Transfers::itemRemoved, this, &TransfersView::updateSoon);
    connect(&transfers, &Transfers::inFlightChanged, this, &TransfersView::badgeChanged);
    connect(&m_interrupted, &InterruptedView::countChanged, this, &TransfersView::badgeChanged);
    for (auto* rows : {&m_inFlight, &m_finished})
        connect(rows, &TransferRows::countChanged, this, &TransfersView::tabTitlesChanged);
    connect(&m_interrupted, &InterruptedView::countChanged, this, &TransfersView::tabTitlesChanged);
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

QStringList TransfersView::tabTitles() const
{
    const auto titled = [](const QString& title, int count) {
        return count == 0 ? title : QStringLiteral("%1 (%2)").arg(title).arg(count);
    };
    return {titled(tr("In flight"), m_inFlight.count()), titled(tr("Finished"), m_finished.count()),
            titled(tr("Interrupted"), m_interrupted.count())};
}

bool TransfersView::areAllPaused() const
{
    return m_transfers.pausedCount() == m_transfers.inFlightCount();
}

QVariantList TransfersView::actions(const QString& key) const
{
    QVariantList actions;
    if (const auto* item = m_transfers.find(QUuid(key)))
        for (const auto action : actionsFor(*item))
            actions.append(
                QVariantMap{{QStringLiteral("action"), int(action)}, {QStringLiteral("text"), textOf(action)}});
    return actions;
}

TransferAction::Value TransfersView::mainAction(const QString& key) const
{
    const auto* item = m_transfers.find(QUuid(key));
    return item ? mainActionFor(*item) : TransferAction::Value::None;
}

void TransfersView::perform(const QString& key, TransferAction::Value action)
{
    using Action = TransferAction::Value;
    const QUuid id(key);
    const auto* found = m_transfers.find(id);
    if (!found || !actionsFor(*found).contains(action)) // it has changed since it was offered
        return;
    const auto item = *found;
    switch (action) {
    case Action::None:
        break;
    case Action::StartNow:
        return m_transfers.startNow(id);
    case Action::Pause:
        return m_transfers.pause(id);
    case Action::Resume:
        return m_transfers.goOn(id);
    case Action::TryAgain:
        m_transfers.tryAgain(id);
        break;
    case Action::Stop:
        return m_transfers.stop(id);
    case Action::ShowInFolder:
        return m_files.showInFolder(item.file);
    case Action::Open:
        return m_files.open(item.file);
    case Action::ShowDeliverable:
        Q_EMIT deliverableWanted(*item.target.asDeliverable());
        break;
    case Action::CopyError:
        return QGuiApplication::clipboard()->setText(messageOf(item.state));
    case Action::CopyName:
        return QGuiApplication::clipboard()->setText(item.name);
    case Action::Remove:
        return m_transfers.forget(id);
    }
}

QString TransfersView::stopTitle(const QString& key) const
{
    const auto* item = m_transfers.find(QUuid(key));
    return item ? palvera::stopTitle(*item) : QString();
}

QString TransfersView::stopMessage(const QString& key) const
{
    const auto* item = m_transfers.find(QUuid(key));
    return item ? palvera::stopMessage(*item) : QString();
}

void TransfersView::moveTo(const QString& key, int row)
{
    const int from = m_inFlight.rowOf(key);
    const int to = std::clamp(row, 0, std::max(0, m_inFlight.count() - 1));
    if (from >= 0 && to != from)
        m_transfers.move(QUuid(key), m_inFlight.idAt(to > from ? to + 1 : to));
}

void TransfersView::pauseAll()
{
    m_transfers.pauseAll();
}

void TransfersView::resumeAll()
{
    m_transfers.goOnAll();
}

QString TransfersView::stopAllMessage() const
{
    return tr("What has gone up is thrown away, so nothing half delivered is left in storage. What has come down is "
              "kept on disk.");
}

void TransfersView::stopAll()
{
    m_transfers.stopAll();
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
    updateSoon();
}

/// Once for the reports of all transfers that come together.
void TransfersView::updateSoon()
{
    if (std::exchange(m_isToUpdate, true))
        return;
    boost::asio::post(m_main, [self = QPointer<TransfersView>(this)] {
        if (self)
            self->update();
    });
}

void TransfersView::update()
{
    m_isToUpdate = false;
    const auto& items = m_transfers.items();
    bool waits =
        std::ranges::any_of(items, [](const Item& item) { return std::holds_alternative<Item::Retrying>(item.state); });
    if (waits != m_tick.isActive())
        waits ? m_tick.start() : m_tick.stop();
    const auto footing = footingOf(items);
    auto percent = overallPercent(footing);
    auto overall = percent ? percentText(*percent) : QString();
    if (std::exchange(m_overall, overall) != overall)
        Q_EMIT overallChanged();
    auto footer = footingText(footing, m_clock.wallNow());
    if (std::exchange(m_footer, footer) != footer)
        Q_EMIT footerChanged();
}

} // namespace palvera
