#include "cli/Table.h"

#include "cli/DisplayText.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace palvera::cli {

using namespace Qt::StringLiterals;

namespace {

using testing::ElementsAre;
using Room = Column::Room;
using Side = Column::Side;

const QList<Column> columns{{u"ID"_s, Side::left, Room::whole},
                            {u"SIZE"_s, Side::right, Room::whole},
                            {u"NAME"_s, Side::left, Room::some},
                            {u"PROJECT"_s, Side::left, Room::some}};

TEST(Table, alignsByCells)
{
    auto lines =
        tableLines(columns, {{u"a"_s, u"1 KB"_s, u"映画"_s, u"Salt"_s}, {u"bcd"_s, u"15.2 KB"_s, u"x"_s, {}}}, {});
    EXPECT_THAT(lines,
                ElementsAre(u"ID      SIZE  NAME  PROJECT"_s, u"a       1 KB  映画  Salt"_s, u"bcd  15.2 KB  x"_s));
}

TEST(Table, shortensTheWidestColumnsFirstAndNeverAnIdentifier)
{
    auto lines = tableLines(
        columns, {{u"identifier-0123456789"_s, u"1 KB"_s, u"A rather long name of a thing"_s, u"The Long Tide"_s}}, 52);
    EXPECT_EQ(lines[1], u"identifier-0123456789  1 KB  A rather …  The Long T…"_s);
    for (const auto& line : lines)
        EXPECT_LE(cellsOf(line), 52);
}

TEST(Table, leavesColumnsReadableWhereTheTerminalIsTooNarrow)
{
    auto lines = tableLines(columns, {{u"id"_s, u"1 KB"_s, u"long name"_s, u"long project"_s}}, 10);
    EXPECT_EQ(lines[1], u"id  1 KB  long …  long …"_s);
}

TEST(Table, makesEveryCellPrintable)
{
    auto lines = tableLines(columns, {{u"a\nb"_s, {}, u"\x1b]0;title\x07"_s, {}}}, {});
    EXPECT_EQ(lines[1], u"a b        �]0;title�"_s);
}

} // namespace

} // namespace palvera::cli
