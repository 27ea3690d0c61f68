#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace palvera::cli {

struct Column {
    enum class Side { left, right };
    enum class Room {
        whole, ///< an identifier to copy: never shortened
        some,  ///< gives way where the terminal is narrow
    };

    QString title;
    Side side = Side::left;
    Room room = Room::some;
};

/// The lines of a table: a head, then `rows`, whose cells are made printable and stand in line under their column's
/// title. Shortens the widest columns that may give way until a line fits into `width` cells; unlimited when absent.
QStringList tableLines(const QList<Column>& columns, const QList<QStringList>& rows, std::optional<int> width);

} // namespace palvera::cli
