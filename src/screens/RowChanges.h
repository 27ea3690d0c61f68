#pragma once

#include <QStringList>

#include <vector>

namespace palvera {

/// A run of rows that a list model removes, inserts, or gives other rows' place to.
struct RowChange {
    enum class Kind { remove, insert, replace };

    Kind kind;
    int first; ///< from 0, in the rows as they are when this change's turn comes
    int count;

    bool operator==(const RowChange&) const = default;
};

/// What makes the rows with the keys `from` into those with the keys `to`: every removal, from the end on, then every
/// insertion, from the start on. Rows that stay in their order are left alone; one that moved is removed and inserted.
/// Keys need not be unique. In time proportional to the rows. Where that comes to more than 64 runs, all rows between
/// the first and the last difference are replaced in their places, and what is then too many or too few is removed or
/// inserted: a view spends more on a run than on the rows in it, and most on a row that it has to make anew.
std::vector<RowChange> rowChanges(const QStringList& from, const QStringList& to);

} // namespace palvera
