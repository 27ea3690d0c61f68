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
            if (change.kind == RowChange::Kind::remove)
                removeRun(change.first, change.count);
            else
                insertRun(change.first, wanted.mid(change.first, change.count));
        }
        for (int i = 0; i < m_rows.size(); ++i)
            setRow(i, wanted[i]);
    }
    void setRow(int at, const Row& row)
    {
        if (m_rows[at] == row)
            return;
        m_rows[at] = row;
        Q_EMIT dataChanged(index(at), index(at));
    }
    void insertRun(int first, const QList<Row>& rows)
    {
        beginInsertRows({}, first, first + int(rows.size()) - 1);
        m_rows.insert(first, rows.size(), Row());
        std::ranges::copy(rows, m_rows.begin() + first);
        endInsertRows();
    }
    void removeRun(int first, int count)
    {
        beginRemoveRows({}, first, first + count - 1);
        m_rows.remove(first, count);
        endRemoveRows();
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
