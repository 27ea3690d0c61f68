#include "screens/panel/InterruptedRows.h"

#include "text/VisibleText.h"
#include "transfers/Transfers.h"

namespace palvera {

InterruptedRows::InterruptedRows(Transfers& transfers, QObject* parent)
    : RowsModel({{"key", &InterruptedRow::key},
                 {"filename", &InterruptedRow::filename},
                 {"progress", &InterruptedRow::progress}},
                parent),
      m_transfers(transfers)
{
    connect(&transfers, &Transfers::journalsChanged, this, &InterruptedRows::update);
    update();
}

void InterruptedRows::update()
{
    QList<InterruptedRow> interrupted;
    for (const auto& journal : m_transfers.interruptedJournals())
        interrupted.append({.key = journal.key,
                            .filename = visibleText(journal.filename),
                            .progress = tr("%1 of %2 parts done").arg(journal.done.size()).arg(journal.partCount)});
    setRows(interrupted);
    Q_EMIT countChanged();
}

} // namespace palvera
