#include "screens/panel/TransferRows.h"

#include "transfers/Transfers.h"

namespace palvera {

namespace {

QString keyOf(const QUuid& id)
{
    return id.toString(QUuid::WithoutBraces);
}

} // namespace

TransferRows::TransferRows(Transfers& transfers, Clock& clock, Which which, QObject* parent)
    : RowsModel({{"key", &TransferRow::key},
                 {"symbol", &TransferRow::symbol},
                 {"title", &TransferRow::title},
                 {"titleName", &TransferRow::titleName},
                 {"name", &TransferRow::name},
                 {"transferState", [](const TransferRow& row) { return int(row.state); }}, // items have a "state"
                 {"inFlight", &TransferRow::isInFlight},
                 {"fraction", &TransferRow::fraction},
                 {"percent", &TransferRow::percent},
                 {"figures", &TransferRow::figures},
                 {"status", &TransferRow::status},
                 {"detail", &TransferRow::detail},
                 {"samples", [](const TransferRow& row) { return QVariant::fromValue(row.samples); }},
                 {"graphFraction", &TransferRow::graphFraction},
                 {"spoken", &TransferRow::spoken}},
                parent),
      m_transfers(transfers),
      m_clock(clock),
      m_which(which)
{
    for (const auto& item : transfers.items())
        update(item.id);
    connect(&transfers, &Transfers::itemAdded, this, &TransferRows::update);
    connect(&transfers, &Transfers::itemChanged, this, &TransferRows::update);
    connect(&transfers, &Transfers::itemRemoved, this, &TransferRows::remove);
    connect(&transfers, &Transfers::itemMoved, this, &TransferRows::move);
}

void TransferRows::update(const QUuid& id)
{
    const auto* item = m_transfers.find(id);
    bool belongs = item && item->isInFlight() == (m_which == Which::inFlight);
    if (!belongs)
        return remove(id);
    auto changed = transferRow(*item, m_clock.wallNow());
    if (int row = rowOf(changed.key); row >= 0)
        return setRow(row, changed);
    insertRun(placeFor(id), {changed});
    Q_EMIT countChanged();
}

void TransferRows::remove(const QUuid& id)
{
    int row = rowOf(keyOf(id));
    if (row < 0)
        return;
    removeRun(row, 1);
    Q_EMIT countChanged();
}

void TransferRows::tick()
{
    for (int row = 0; row < rows().size(); ++row)
        if (const auto* item = m_transfers.find(QUuid(rows()[row].key)))
            setRow(row, transferRow(*item, m_clock.wallNow()));
}

int TransferRows::rowOf(const QString& key) const
{
    auto found = std::ranges::find(rows(), key, &TransferRow::key);
    return found == rows().end() ? -1 : int(found - rows().begin());
}

void TransferRows::move(const QUuid& id)
{
    const int from = rowOf(keyOf(id));
    if (from < 0 || m_which == Which::finished)
        return;
    int to = 0;
    const auto place = m_transfers.placeOf(id);
    for (const auto& row : rows())
        if (m_transfers.placeOf(QUuid(row.key)) < place)
            ++to;
    if (to != from)
        moveRow(from, to);
}

int TransferRows::placeFor(const QUuid& id) const
{
    if (m_which == Which::finished)
        return 0;
    int place = int(rows().size());
    const auto its = m_transfers.placeOf(id);
    while (place > 0 && m_transfers.placeOf(QUuid(rows()[place - 1].key)) > its)
        --place;
    return place;
}

} // namespace palvera
