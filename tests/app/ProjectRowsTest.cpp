#include "app/ProjectRows.h"

#include "tests/support/QtPrinting.h"

namespace palvera {
namespace {

using namespace Qt::StringLiterals;

TEST(ProjectRowsTest, showsWhatMatchesInThePlatformsOrder)
{
    const QList<Project> projects = {
        {.id = "1", .name = "Long Tide", .reference = "LT-2024"},
        {.id = "2", .name = "Paper Moon"},
        {.id = "3", .name = "SALT", .reference = "moonlight"},
        {.id = "p-4", .name = u"\u200b "_s}, // nothing to see
    };
    const std::pair<const char*, const char*> cases[] = {
        {"", "Assets, Long Tide, Paper Moon, SALT, p-4"},
        {"   ", "Assets, Long Tide, Paper Moon, SALT, p-4"},
        {"moon", "Paper Moon, SALT"}, // one by its name, one by its reference
        {" salt ", "SALT"},
        {"ASS", "Assets"},
        {"asset list", ""},
    };
    for (const auto& [search, expected] : cases) {
        QStringList titles;
        for (const auto& row : projectRows(projects, search))
            titles.append(row.title);
        EXPECT_EQ(titles.join(", "), expected) << search;
    }
    const QList<Project> mixed = {
        {.id = "1", .name = "Reel 10"}, {.id = "2", .name = "reel 9"}, {.id = "3", .name = u"Ödland"_s}};
    QStringList keys;
    for (const auto& row : projectRows(mixed, "", ProjectOrder::Name))
        keys.append(row.key);
    EXPECT_EQ(keys, QStringList({"", "3", "2", "1"})) << "the assets first, then as a reader expects";
}

} // namespace
} // namespace palvera
