#pragma once

#include "screens/RowChanges.h"

#include <QAbstractListModel>

#include <functional>

namespace palvera {

/// A list of `Row`s, which are values with a `key`, for views that keep their place and animate what changes: rows are
/// inserted and removed in runs and never reset. Lives on the main thread.
template <class Row>
class RowsModel : public QAbstractListModel {
public:
    /// What a delegate knows of a row: by which name, and how it is had from the row.
    struct Role {
        QByteArray name;
        std::function<QVariant(const Row&)> value;
    };

    explicit RowsModel(QList<Role> roles, QObject* parent = nullptr)
        : QAbstractListModel(parent), m_roles(std::move(roles))
    {}

    int rowCount(const QModelIndex& parent = {}) const final { return parent.isValid() ? 0 : int(m_rows.size()); }

    QVariant data(const QModelIndex& index, int role) const final
    {
        const auto place = role - Qt::UserRole;
        if (place < 0 || place >= m_roles.size() || !this->checkIndex(index, CheckIndexOption::IndexIsValid))
            return {};
        return m_roles[place].value(m_rows[index.row()]);
    }

    QHash<int, QByteArray> roleNames() const final
    {
        QHash<int, QByteArray> names;
        for (int place = 0; place < m_roles.size(); ++place)
            names.insert(Qt::UserRole + place, m_roles[place].name);
        return names;
    }

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
        const auto before = std::exchange(m_rows[at], row);
        QList<int> changed;
        for (int place = 0; place < m_roles.size(); ++place)
            if (m_roles[place].value(before) != m_roles[place].value(row))
                changed.append(Qt::UserRole + place);
        if (!changed.isEmpty())
            Q_EMIT dataChanged(index(at), index(at), changed);
    }
    /// Tells the views that these roles of a row, or of all from one to another, changed by something outside of them.
    void announce(int at, const QByteArrayList& names) { announce(at, at, names); }
    void announce(int first, int last, const QByteArrayList& names)
    {
        QList<int> changed;
        for (const auto& name : names)
            changed.append(roleNames().key(name));
        Q_EMIT dataChanged(index(first), index(last), changed);
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
    /// `to` is its place afterwards.
    void moveRow(int from, int to)
    {
        beginMoveRows({}, from, from, {}, to > from ? to + 1 : to);
        m_rows.move(from, to);
        endMoveRows();
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

    const QList<Role> m_roles;
    QList<Row> m_rows;
};

} // namespace palvera
