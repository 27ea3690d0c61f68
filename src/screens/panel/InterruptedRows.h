#pragma once

#include "screens/RowsModel.h"

#include <QtQml/qqmlregistration.h>

namespace palvera {

class Transfers;

/// An upload that was cut off.
struct InterruptedRow {
    QString key; ///< the journal's
    QString filename;
    QString progress; ///< "12 of 40 parts done"

    bool operator==(const InterruptedRow&) const = default;
};

/// The uploads that earlier runs left unfinished. Main thread.
class InterruptedRows : public RowsModel<InterruptedRow> {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    /// Those of `transfers`, which must outlive this.
    explicit InterruptedRows(Transfers& transfers, QObject* parent = nullptr);

    int count() const { return rowCount(); }

Q_SIGNALS:
    void countChanged();

private:
    void update();

    Transfers& m_transfers;
};

} // namespace palvera
