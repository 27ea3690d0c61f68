#include "screens/RowChanges.h"

#include "tests/support/QtPrinting.h"

#include <gmock/gmock.h>

#include <random>

namespace palvera {
namespace {

QStringList applied(QStringList rows, const QStringList& to)
{
    for (const auto& change : rowChanges(rows, to)) {
        if (change.kind == RowChange::Kind::remove) {
            rows.remove(change.first, change.count);
            continue;
        }
        for (int i = change.first; i < change.first + change.count; ++i) {
            if (change.kind == RowChange::Kind::insert)
                rows.insert(i, to[i]);
            else
                rows[i] = to[i];
        }
    }
    return rows;
}

TEST(RowChangesTest, leadFromAnyRowsToAnyOthers)
{
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        QStringList from, to;
        for (auto* list : {&from, &to})
            for (unsigned i = random() % 9; i > 0; --i)
                list->append(QString(QChar('a' + int(random() % 6)))); // repeated keys, too
        EXPECT_EQ(applied(from, to), to) << from.join("").toStdString();
    }
}

TEST(RowChangesTest, aListThatChangesAllOverIsReplacedInItsPlaceBetweenWhatStays)
{
    using enum RowChange::Kind;
    QStringList all, odd;
    for (int i = 0; i < 1000; ++i) {
        all.append(QString::number(i));
        if (i % 2 == 1 || i < 10)
            odd.append(QString::number(i));
    }
    EXPECT_THAT(rowChanges(all, odd), testing::ElementsAre(RowChange{replace, 10, 494}, RowChange{remove, 504, 495}));
    EXPECT_EQ(applied(all, odd), odd);
    EXPECT_EQ(applied(odd, all), all);
    auto turned = odd;
    std::ranges::reverse(turned);
    EXPECT_EQ(applied(odd, turned), turned);
    EXPECT_EQ(applied(all, turned), turned);
}

TEST(RowChangesTest, leaveAloneWhatStays)
{
    using enum RowChange::Kind;
    EXPECT_THAT(rowChanges({"a", "b", "c"}, {"a", "b", "c"}), testing::IsEmpty());
    EXPECT_THAT(rowChanges({"a", "b", "c", "d", "e"}, {"a", "d"}),
                testing::ElementsAre(RowChange{remove, 4, 1}, RowChange{remove, 1, 2}));
    EXPECT_THAT(rowChanges({"b", "d"}, {"a", "b", "c", "d"}),
                testing::ElementsAre(RowChange{insert, 0, 1}, RowChange{insert, 2, 1}));
}

} // namespace
} // namespace palvera
