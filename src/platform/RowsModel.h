#pragma once

#include "platform/RowChanges.h"

#include <QAbstractListModel>

namespace palvera {

/// A list of `Row`s, which are values with a `key`, for views that keep their place and animate what changes: rows are
/// inserted and removed in runs and never reset. Lives on the main thread.
template <class Row>
class RowsModel : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : int(m_rows.size()); }

protected:
    const QList<Row>& rows() const { return m_rows; }

    void setRows(const QList<Row>& wanted)
    {
        for (const auto& change : rowChanges(keysOf(m_rows), keysOf(wanted))) {
            const auto last = change.first + change.count - 1;
            if (change.kind == RowChange::Kind::remove) {
                beginRemoveRows({}, change.first, last);
                m_rows.remove(change.first, change.count);
                endRemoveRows();
            } else {
                beginInsertRows({}, change.first, last);
                for (int i = change.first; i <= last; ++i)
                    m_rows.insert(i, wanted[i]);
                endInsertRows();
            }
        }
        for (int i = 0; i < m_rows.size(); ++i) {
            if (m_rows[i] == wanted[i])
                continue;
            m_rows[i] = wanted[i];
            Q_EMIT dataChanged(index(i), index(i));
        }
    }

private:
    static QStringList keysOf(const QList<Row>& rows)
    {
        QStringList keys;
        for (const auto& row : rows)
            keys.append(row.key);
        return keys;
    }

    QList<Row> m_rows;
};

} // namespace palvera
