#include "app/ProjectRows.h"

#include "tests/support/QtPrinting.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

const QList<Project> projects = {
    {.id = "1", .name = "Long Tide", .reference = "LT-2024"},
    {.id = "2", .name = "Paper Moon"},
    {.id = "3", .name = "SALT", .reference = "moonlight"},
};

QStringList titles(const QString& search)
{
    QStringList titles;
    for (const auto& row : projectRows(projects, search))
        titles.append(row.title);
    return titles;
}

TEST(ProjectRowsTest, showsWhatMatchesInThePlatformsOrder)
{
    const std::vector<std::pair<const char*, QStringList>> cases = {
        {"", {"Assets", "Long Tide", "Paper Moon", "SALT"}},
        {"   ", {"Assets", "Long Tide", "Paper Moon", "SALT"}},
        {"moon", {"Paper Moon", "SALT"}}, // one by its name, one by its reference
        {" salt ", {"SALT"}},
        {"lt-20", {"Long Tide"}},
        {"ASS", {"Assets"}},
        {"ets", {"Assets"}},
        {"asset list", {}},
        {"a", {"Assets", "Paper Moon", "SALT"}},
    };
    for (const auto& [search, expected] : cases)
        EXPECT_EQ(titles(search), expected) << search;
}

} // namespace
} // namespace palvera
