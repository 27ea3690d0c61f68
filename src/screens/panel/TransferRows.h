#pragma once

#include "screens/RowsModel.h"
#include "screens/panel/TransferRow.h"

#include <QtQml/qqmlregistration.h>

namespace palvera {

class Transfers;

/// The transfers in flight, in their order, or those that are over, the latest first. A change of one touches its row
/// only.
///
/// Lives on the main thread.
class TransferRows : public RowsModel<TransferRow> {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum class Which { inFlight, finished };
    /// Those of `transfers`, which must outlive this, as `clock` has it.
    TransferRows(Transfers& transfers, Clock& clock, Which which, QObject* parent = nullptr);

    int count() const { return rowCount(); }
    /// The id of the item of that row; null when there is no such row.
    QUuid idAt(int row) const { return row < 0 || row >= rowCount() ? QUuid() : QUuid(rows()[row].key); }
    /// -1 when it is none of them.
    int rowOf(const QString& key) const;
    /// Brings what is said of the time up to date.
    void tick();

Q_SIGNALS:
    void countChanged();

private:
    void update(const QUuid& id);
    void remove(const QUuid& id);
    void move(const QUuid& id);
    int placeFor(const QUuid& id) const;

    Transfers& m_transfers;
    Clock& m_clock;
    const Which m_which;
};

} // namespace palvera
