#include "screens/InterruptedRows.h"

#include "transfers/Transfers.h"

namespace palvera {

InterruptedRows::InterruptedRows(Transfers& transfers, QObject* parent) : RowsModel(parent), m_transfers(transfers)
{
    connect(&transfers, &Transfers::journalsChanged, this, &InterruptedRows::update);
    update();
}

void InterruptedRows::update()
{
    QList<InterruptedRow> interrupted;
    for (const auto& journal : m_transfers.interruptedJournals())
        interrupted.append({.key = journal.key,
                            .filename = journal.filename,
                            .progress = tr("%1 of %2 parts done").arg(journal.done.size()).arg(journal.partCount)});
    setRows(interrupted);
    Q_EMIT countChanged();
}

QVariant InterruptedRows::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto& row = rows()[index.row()];
    switch (role) {
    case keyRole:
        return row.key;
    case filenameRole:
        return row.filename;
    case progressRole:
        return row.progress;
    default:
        return {};
    }
}

QHash<int, QByteArray> InterruptedRows::roleNames() const
{
    return {{keyRole, "key"}, {filenameRole, "filename"}, {progressRole, "progress"}};
}

} // namespace palvera
