#pragma once

#include <QAbstractItemModel>
#include <QStringList>

#include <string>
#include <vector>

namespace palvera {

/// What the delegate of that row of a list knows under that name.
inline QVariant valueAt(const QAbstractItemModel& list, int row, const QByteArray& role)
{
    return list.data(list.index(row, 0), list.roleNames().key(role, -1));
}

inline std::string titlesOf(const QAbstractItemModel& list)
{
    QStringList titles;
    for (int row = 0; row < list.rowCount(); ++row)
        titles.append(valueAt(list, row, "title").toString());
    return titles.join(' ').toStdString();
}

/// Notes what a list tells its views: "+2-3" of rows inserted, "-1-1" of rows removed, "*0-0 badge filed" of the roles
/// that changed.
struct RowsWatch {
    std::vector<std::string> changes;

    explicit RowsWatch(const QAbstractItemModel& list)
    {
        using Model = QAbstractItemModel;
        auto note = [this](char what) {
            return [this, what](const QModelIndex&, int first, int last) {
                changes.push_back(what + std::to_string(first) + "-" + std::to_string(last));
            };
        };
        QObject::connect(&list, &Model::rowsInserted, note('+'));
        QObject::connect(&list, &Model::rowsRemoved, note('-'));
        QObject::connect(&list, &Model::dataChanged, [=, this, &list](auto& from, auto& to, const QList<int>& roles) {
            note('*')({}, from.row(), to.row());
            for (auto role : roles)
                changes.back() += " " + list.roleNames().value(role).toStdString();
        });
    }
};

} // namespace palvera
