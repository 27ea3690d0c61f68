#include "screens/deliverables/DeliverablesView.h"

#include "async/Clock.h"
#include "async/Failure.h"
#include "async/RunOn.h"
#include "async/TaskGroup.h"
#include "files/Quantities.h"
#include "screens/Wording.h"
#include "service/BrowsingOperations.h"
#include "transfers/Transfers.h"

#include <boost/asio/strand.hpp>

namespace palvera {

using namespace std::chrono_literals;

namespace {

constexpr auto refreshInterval = 30s;
/// The platform may take a while to file what has been uploaded.
constexpr auto filingTime = 20s;

// Values of the filter, which their labels are the translations of.
const QString filledKey = QStringLiteral("Filled");
const QString emptyKey = QStringLiteral("Empty");

FilterChoice fillingChoice(const QString& value)
{
    const auto label = value == filledKey  ? QObject::tr("Filled")
                       : value == emptyKey ? QObject::tr("Empty")
                                           : QObject::tr("All");
    return {.key = value, .label = label};
}

FilterChoice familyChoice(const QString& value)
{
    return {.key = value,
            .label = value == DeliverableFilter::all ? QObject::tr("All") : familyName(value, capitalisedWords(value))};
}

FilterChoice statusChoice(const QString& value)
{
    return {.key = value, .label = value == DeliverableFilter::all ? QObject::tr("All") : humanised(value)};
}

FilterChoice orderChoice(const QString& value)
{
    if (value == DeliverableOrder::name)
        return {.key = value, .label = DeliverablesView::tr("Name")};
    return {.key = value,
            .label =
                value == DeliverableOrder::status ? DeliverablesView::tr("Status") : DeliverablesView::tr("Platform")};
}

FilterChoice languageChoice(const QString& value)
{
    if (value == DeliverableFilter::all)
        return {.key = value, .label = QObject::tr("All")};
    return {.key = value, .label = languageName(value), .code = value};
}

/// Loads the rows; those that are the same as in `earlier` are the same objects. Background.
Task<DeliverableCards> fetchCards(API& api, QString org, QString project, DeliverableCards earlier)
{
    auto rows = co_await listDeliverables(api, org, project);
    QHash<QString, std::shared_ptr<const DeliverableCard>> known;
    for (const auto& card : earlier)
        known.insert(card->deliverable.id, card);
    DeliverableCards cards;
    cards.reserve(rows.size());
    for (const auto& row : rows) {
        auto card = known.value(row.id);
        if (!card || card->deliverable != row)
            card = std::make_shared<DeliverableCard>(row);
        cards.append(std::move(card));
    }
    co_return cards;
}

QString movingText(const Item& item)
{
    if (std::holds_alternative<Item::Waiting>(item.state))
        return QObject::tr("Waiting");
    const auto what = item.isPaused() ? QObject::tr("Paused") : QObject::tr("Transferring");
    return item.total < 1 ? what : QStringLiteral("%1 %2").arg(what, percentText(percentOf(item.sent, item.total)));
}

bool isStill(const Item& item)
{
    return item.isPaused() || std::holds_alternative<Item::Waiting>(item.state);
}

} // namespace

DeliverablesView::DeliverablesView(const Environment& environment, QObject* parent)
    : RowsModel({{"key", [](const auto& row) { return row.key; }},
                 {"title", [](const auto& row) { return row.card->title; }},
                 {"details", [](const auto& row) { return row.card->details; }},
                 {"symbol", [](const auto& row) { return familySymbol(row.card->deliverable.family); }},
                 {"tint", [](const auto& row) { return familyTint(row.card->deliverable.family); }},
                 {"badge", [this](const auto& row) { return badgeOf(row.card->deliverable); }},
                 {"moving", [this](const auto& row) { return m_moving.contains(row.key); }},
                 {"still", [this](const auto& row) { return m_moving.value(row.key).isStill; }},
                 {"failed", [this](const auto& row) { return hasFailed(row.key); }},
                 {"filed", [](const auto& row) { return row.card->isFiled; }},
                 {"spoken", [this](const auto& row) { return spokenOf(*row.card); }}},
                parent),
      m_environment(environment),
      m_decoding(boost::asio::make_strand(environment.background)),
      m_tasks(environment.main),
      m_uploadTasks(environment.main),
      m_families(familyChoice),
      m_statuses(statusChoice),
      m_languages(languageChoice),
      m_fillings(fillingChoice),
      m_orders(orderChoice)
{
    m_orders.setValues({DeliverableOrder::platform, DeliverableOrder::name, DeliverableOrder::status});
    m_fillings.setValues({DeliverableFilter::all, filledKey, emptyKey});
    auto& transfers = m_environment.transfers;
    connect(&transfers, &Transfers::itemAdded, this, &DeliverablesView::updateMovingOf);
    connect(&transfers, &Transfers::itemChanged, this, &DeliverablesView::updateMovingOf);
    connect(&transfers, &Transfers::itemRemoved, this, &DeliverablesView::updateMoving);
    connect(&transfers, &Transfers::failedUploadsChanged, this, &DeliverablesView::updateFailed);
    connect(&transfers, &Transfers::uploadsFinishedChanged, this, &DeliverablesView::loadSoonAfterUpload);
}

void DeliverablesView::open(const Org& org, const Project& project)
{
    leave();
    m_open = true;
    m_org = org;
    m_project = project;
    m_failure = nullptr;
    m_loading = true;
    m_filter = {};
    take({});
    Q_EMIT projectChanged();
    Q_EMIT filterChanged();
    Q_EMIT loadChanged();
    m_tasks.start(keepFresh());
}

void DeliverablesView::leave()
{
    m_open = false;
    m_tasks.stop();
    m_uploadTasks.stop();
    m_loadTaken = m_loadsBegun;
}

Task<void> DeliverablesView::close()
{
    leave();
    co_await m_tasks.close();
    co_await m_uploadTasks.close();
}

void DeliverablesView::load()
{
    if (m_open)
        m_tasks.start(loadOnce());
}

Task<void> DeliverablesView::keepFresh()
{
    for (;;) {
        co_await loadOnce();
        co_await m_environment.clock.sleep(refreshInterval);
    }
}

void DeliverablesView::loadSoonAfterUpload()
{
    if (!m_open)
        return;
    m_uploadTasks.stop();
    m_uploadTasks.start(loadAfterUpload());
}

Task<void> DeliverablesView::loadAfterUpload()
{
    co_await loadOnce();
    co_await m_environment.clock.sleep(filingTime);
    co_await loadOnce();
}

Task<void> DeliverablesView::loadOnce()
{
    const auto number = ++m_loadsBegun;
    m_loading = m_cards.isEmpty();
    Q_EMIT loadChanged();
    auto outcome = co_await answerOf(runOn(m_decoding, fetchCards(m_environment.api, m_org.id, m_project.id, m_cards)));
    if (number < m_loadTaken) // an older answer than the one on the screen
        co_return;
    m_loadTaken = number;
    m_loading = false;
    m_failure = outcome.failure;
    if (outcome.value) {
        take(*std::move(outcome.value));
        Q_EMIT loaded();
    }
    Q_EMIT loadChanged();
}

void DeliverablesView::take(DeliverableCards cards)
{
    if (cards == m_cards)
        return;
    m_cards = std::move(cards);
    m_sorted = sorted(m_cards, m_order);
    auto values = filterValues(m_cards);
    m_families.setValues(values.families);
    m_statuses.setValues(values.statuses);
    m_languages.setValues(values.languages);
    showRows(true);
}

void DeliverablesView::clear()
{
    setFilter({.search = m_filter.search});
}

void DeliverablesView::choose(QString DeliverableFilter::* what, const QString& value)
{
    auto filter = m_filter;
    filter.*what = value;
    setFilter(std::move(filter));
}

void DeliverablesView::setOrder(const QString& order)
{
    if (m_orders.indexOf(order) < 0 || std::exchange(m_order, order) == order)
        return;
    m_sorted = sorted(m_cards, m_order);
    showRows(false);
    Q_EMIT filterChanged();
}

QString DeliverablesView::filled() const
{
    switch (m_filter.filled) {
    case DeliverableFilter::Filled::yes:
        return filledKey;
    case DeliverableFilter::Filled::no:
        return emptyKey;
    case DeliverableFilter::Filled::all:
        break;
    }
    return DeliverableFilter::all;
}

void DeliverablesView::setFilled(const QString& filled)
{
    using Filled = DeliverableFilter::Filled;
    auto filter = m_filter;
    filter.filled = filled == filledKey ? Filled::yes : filled == emptyKey ? Filled::no : Filled::all;
    setFilter(std::move(filter));
}

void DeliverablesView::setFilter(DeliverableFilter filter)
{
    if (filter == m_filter)
        return;
    m_filter = std::move(filter);
    showRows(false);
    Q_EMIT filterChanged();
}

QString DeliverablesView::countText() const
{
    return tr("%1 of %2").arg(rows().size()).arg(m_cards.size());
}

void DeliverablesView::showRows(bool refreshing)
{
    if (std::exchange(m_refreshing, refreshing) != refreshing)
        Q_EMIT refreshingChanged();
    const auto query = queryOf(m_filter.search);
    QList<DeliverableRow> shown;
    for (const auto& card : m_sorted)
        if (matches(*card, m_filter, query))
            shown.append({.key = card->deliverable.id, .card = card});
    m_where.clear();
    setRows(shown);
    Q_EMIT countChanged();
}

const Deliverable* DeliverablesView::find(const QString& id) const
{
    auto found = std::ranges::find_if(m_cards, [&](const auto& card) { return card->deliverable.id == id; });
    return found == m_cards.end() ? nullptr : &(*found)->deliverable;
}

/// Of the deliverable of one item alone: the engines report often.
void DeliverablesView::updateMovingOf(const QUuid& item)
{
    const auto* changed = m_environment.transfers.find(item);
    if (const auto* deliverable = changed ? changed->target.asDeliverable() : nullptr)
        updateMovingAt(deliverable->deliverableId);
}

void DeliverablesView::updateMoving()
{
    for (const auto& id : m_moving.keys())
        updateMovingAt(id);
}

void DeliverablesView::updateMovingAt(const QString& id)
{
    const auto item = m_environment.transfers.activeItem(id);
    const auto now = item ? Moving{.text = movingText(*item), .isStill = isStill(*item)} : Moving{};
    if (m_moving.value(id) == now)
        return;
    if (item)
        m_moving.insert(id, now);
    else
        m_moving.remove(id);
    if (int row = rowOf(id); row >= 0)
        this->announce(row, {"badge", "moving", "still", "spoken"});
}

void DeliverablesView::updateFailed()
{
    if (!rows().isEmpty())
        this->announce(0, int(rows().size()) - 1, {"badge", "failed", "spoken"});
}

bool DeliverablesView::hasFailed(const QString& id) const
{
    return m_environment.transfers.failedUpload(id).has_value();
}

QString DeliverablesView::badgeOf(const Deliverable& row) const
{
    if (m_moving.contains(row.id))
        return m_moving.value(row.id).text;
    return hasFailed(row.id) ? tr("Upload failed") : humanised(row.status);
}

QString DeliverablesView::spokenOf(const DeliverableCard& card) const
{
    QStringList words{card.details, capitalisedWords(card.deliverable.family), badgeOf(card.deliverable)};
    if (card.isFiled)
        words.append(tr("a file is filed"));
    words.removeAll(QString());
    return words.join(QStringLiteral(", "));
}

int DeliverablesView::rowOf(const QString& id) const
{
    if (m_where.isEmpty())
        for (int row = 0; row < rows().size(); ++row)
            m_where.insert(rows()[row].key, row);
    return m_where.value(id, -1);
}

} // namespace palvera
