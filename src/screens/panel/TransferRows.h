#pragma once

#include "screens/RowsModel.h"
#include "screens/panel/TransferRow.h"

#include <QtQml/qqmlregistration.h>

namespace palvera {

class Transfers;

/// The transfers in flight, or those that are over, in the order added. A change of one touches its row only.
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
    /// Brings what is said of the time up to date.
    void tick();

Q_SIGNALS:
    void countChanged();

private:
    void update(const QUuid& id);
    void remove(const QUuid& id);
    int rowOf(const QString& key) const;
    int placeFor(const QUuid& id) const;

    Transfers& m_transfers;
    Clock& m_clock;
    const Which m_which;
};

} // namespace palvera
