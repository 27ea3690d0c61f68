#include "cli/Table.h"

#include "cli/DisplayText.h"
#include "text/VisibleText.h"

#include <algorithm>
#include <numeric>

namespace palvera::cli {

namespace {

constexpr int gapCells = 2, narrowest = 6; // cells

QList<int> naturalWidths(const QList<QStringList>& lines, qsizetype columns)
{
    QList<int> widths(columns, 0);
    for (const auto& line : lines)
        for (qsizetype column = 0; column < columns; ++column)
            widths[column] = std::max(widths[column], cellsOf(line.value(column)));
    return widths;
}

/// Takes cells from the widest column that may give way, one at a time, so that equals stay equal.
void fitInto(int width, QList<int>& widths, const QList<Column>& columns)
{
    auto total = std::accumulate(widths.begin(), widths.end(), gapCells * int(widths.size() - 1));
    for (; total > width; --total) {
        auto widest = -1;
        for (int column = 0; column < columns.size(); ++column)
            if (columns[column].room == Column::Room::some && widths[column] > narrowest &&
                (widest < 0 || widths[column] > widths[widest]))
                widest = column;
        if (widest < 0)
            return;
        --widths[widest];
    }
}

QString lineOf(const QStringList& cells, const QList<Column>& columns, const QList<int>& widths)
{
    QStringList parts;
    for (qsizetype column = 0; column < columns.size(); ++column) {
        auto cell = shortened(cells.value(column), widths[column]);
        bool right = columns[column].side == Column::Side::right;
        parts.append(right ? paddedBefore(cell, widths[column]) : padded(cell, widths[column]));
    }
    auto line = parts.join(QString(gapCells, u' '));
    while (line.endsWith(u' '))
        line.chop(1);
    return line;
}

} // namespace

QStringList tableLines(const QList<Column>& columns, const QList<QStringList>& rows, std::optional<int> width)
{
    QList<QStringList> lines(1);
    for (const auto& column : columns)
        lines.first().append(column.title);
    for (const auto& row : rows) {
        QStringList cells;
        for (const auto& cell : row)
            cells.append(visibleText(cell));
        lines.append(cells);
    }
    auto widths = naturalWidths(lines, columns.size());
    if (width)
        fitInto(*width, widths, columns);
    QStringList table;
    for (const auto& line : lines)
        table.append(lineOf(line, columns, widths));
    return table;
}

} // namespace palvera::cli
