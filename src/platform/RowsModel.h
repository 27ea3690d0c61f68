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
            switch (change.kind) {
            case RowChange::Kind::remove:
                removeRun(change.first, change.count);
                break;
            case RowChange::Kind::insert:
                insertRun(change.first, wanted.mid(change.first, change.count));
                break;
            case RowChange::Kind::replace:
                replaceRun(change.first, wanted.mid(change.first, change.count));
                break;
            }
        }
        for (int i = 0; i < m_rows.size(); ++i)
            setRow(i, wanted[i]);
    }
    /// Tells the views of those roles alone that changed.
    void setRow(int at, const Row& row)
    {
        if (m_rows[at] == row)
            return;
        const auto roles = roleNames().keys();
        QVariantList before;
        for (auto role : roles)
            before.append(this->data(index(at), role));
        m_rows[at] = row;
        QList<int> changed;
        for (qsizetype i = 0; i < roles.size(); ++i)
            if (this->data(index(at), roles[i]) != before[i])
                changed.append(roles[i]);
        if (!changed.isEmpty())
            Q_EMIT dataChanged(index(at), index(at), changed);
    }
    void insertRun(int first, const QList<Row>& rows)
    {
        beginInsertRows({}, first, first + int(rows.size()) - 1);
        m_rows.insert(first, rows.size(), Row());
        std::ranges::copy(rows, m_rows.begin() + first);
        endInsertRows();
    }
    void replaceRun(int first, const QList<Row>& rows)
    {
        std::ranges::copy(rows, m_rows.begin() + first);
        Q_EMIT dataChanged(index(first), index(first + int(rows.size()) - 1));
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
