#pragma once

#include <QAbstractItemModel>

/// What the delegate of that row of a list knows under that name.
inline QVariant valueAt(const QAbstractItemModel& list, int row, const QByteArray& role)
{
    return list.data(list.index(row, 0), list.roleNames().key(role, -1));
}
