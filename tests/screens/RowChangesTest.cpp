#include "screens/RowChanges.h"

#include "tests/support/QtPrinting.h"

#include <random>

namespace palvera {
namespace {

using enum RowChange::Kind;
using testing::ElementsAre;

QStringList applied(QStringList rows, const QStringList& to)
{
    for (const auto& [kind, first, count] : rowChanges(rows, to)) {
        if (kind == remove)
            rows.remove(first, count);
        else if (kind == insert)
            rows = rows.mid(0, first) + to.mid(first, count) + rows.mid(first);
        else
            std::ranges::copy(to.mid(first, count), rows.begin() + first);
    }
    return rows;
}

TEST(RowChangesTest, leadFromAnyRowsToAnyOthers)
{
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        QStringList from, to; // with repeated keys, too
        for (auto* list : {&from, &to})
            for (unsigned i = random() % 9; i > 0; --i)
                list->append(QString::number(random() % 6));
        EXPECT_EQ(applied(from, to), to) << from.join("").toStdString();
    }
}

TEST(RowChangesTest, leaveAloneWhatStaysAndReplaceAListThatChangesAllOverInItsPlace)
{
    EXPECT_THAT(rowChanges({"a", "b", "c"}, {"a", "b", "c"}), testing::IsEmpty());
    EXPECT_THAT(rowChanges({"a", "b", "c", "d", "e"}, {"a", "d"}),
                ElementsAre(RowChange{remove, 4, 1}, RowChange{remove, 1, 2}));
    EXPECT_THAT(rowChanges({"b", "d"}, {"a", "b", "c", "d"}),
                ElementsAre(RowChange{insert, 0, 1}, RowChange{insert, 2, 1}));
    QStringList all, odd;
    for (int i = 0; i < 1000; ++i) {
        all.append(QString::number(i));
        if (i % 2 == 1 || i < 10)
            odd.append(QString::number(i));
    }
    EXPECT_THAT(rowChanges(all, odd), ElementsAre(RowChange{replace, 10, 494}, RowChange{remove, 504, 495}));
    const QStringList turned(odd.rbegin(), odd.rend());
    for (const auto& [from, to] : {std::pair(all, odd), std::pair(odd, all), std::pair(odd, turned)})
        EXPECT_EQ(applied(from, to), to);
}

} // namespace
} // namespace palvera
