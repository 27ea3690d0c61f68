#include "PlatformHarness.h"

#include <QSet>

#include <gmock/gmock.h>

namespace palvera::local {
namespace {

TEST(BrowsingTest, sampleDataHasEveryOddity)
{
    PlatformHarness harness;
    auto orgs = harness.get("orgs").json[QStringLiteral("orgs")].toArray();
    QString ids;
    for (const auto& org : orgs)
        ids += org[QStringLiteral("id")].toString();
    for (QChar odd : QStringLiteral(" %/?#"))
        EXPECT_TRUE(ids.contains(odd)) << odd.toLatin1();
    EXPECT_TRUE(harness.get("orgs/org-quiet/projects").json[QStringLiteral("projects")].toArray().isEmpty());

    auto rows = harness.get("orgs/org-northlight/projects/long-tide/deliverables")
                    .json[QStringLiteral("deliverables")]
                    .toArray();
    EXPECT_GT(rows.size(), 300);
    QSet<QString> families, levels, rowIds;
    bool numberAsText = false, specNoObject = false, onlyId = false;
    for (const auto& value : rows) {
        const auto row = value.toObject();
        families.insert(row[QStringLiteral("family")].toString());
        levels.insert(row[QStringLiteral("level")].toString());
        rowIds.insert(row[QStringLiteral("id")].toString());
        numberAsText |= row[QStringLiteral("seasonNumber")].isString();
        specNoObject |= row[QStringLiteral("spec")].isString();
        onlyId |= row.size() == 1;
    }
    EXPECT_GE(families.size(), 7);
    EXPECT_TRUE(levels.contains(QStringLiteral("episode")) && levels.contains(QStringLiteral("season")));
    EXPECT_EQ(rowIds.size(), rows.size());
    EXPECT_TRUE(numberAsText && specNoObject && onlyId);
}

TEST(BrowsingTest, deliveredFilesComePageByPageWithTheirRows)
{
    PlatformHarness harness;
    QSet<QString> keys;
    qint64 total = 1;
    for (int page = 1; keys.size() < total && page < 20; ++page) {
        auto answer =
            harness
                .get("orgs/org-northlight/assets/files?page=" + QByteArray::number(page) + "&pageSize=60&sort=newest")
                .json;
        total = answer[QStringLiteral("total")].toInteger();
        QSet<QString> rows;
        for (const auto& row : answer[QStringLiteral("rows")].toArray())
            rows.insert(row[QStringLiteral("id")].toString());
        for (const auto& file : answer[QStringLiteral("files")].toArray()) {
            keys.insert(file[QStringLiteral("key")].toString());
            EXPECT_TRUE(rows.contains(file[QStringLiteral("rowId")].toString()));
        }
    }
    EXPECT_GT(total, 120);
    EXPECT_EQ(keys.size(), total);
    auto audio = harness.get("orgs/org-northlight/assets/files?page=1&pageSize=60&sort=newest&family=audio").json;
    EXPECT_LT(audio[QStringLiteral("total")].toInteger(), total);
}

TEST(BrowsingTest, theBinPagesByCursorAndHasFoldersOnItsFirstPage)
{
    PlatformHarness harness;
    QSet<QString> keys;
    QByteArray cursor;
    int pages = 0;
    do {
        auto page = harness.get("orgs/org-northlight/bin?limit=100" + cursor).json;
        for (const auto& entry : page[QStringLiteral("objects")].toArray())
            keys.insert(entry[QStringLiteral("key")].toString());
        EXPECT_EQ(page.contains(QStringLiteral("folders")), pages == 0);
        auto next = page[QStringLiteral("nextCursor")].toString();
        cursor = next.isEmpty() ? QByteArray() : "&cursor=" + escapeAll(next.toUtf8());
        ++pages;
    } while (!cursor.isEmpty() && pages < 9);
    EXPECT_EQ(pages, 3);
    EXPECT_EQ(keys.size(), 230);
    auto found = harness.get("orgs/org-northlight/bin?limit=100&q=take").json[QStringLiteral("objects")].toArray();
    EXPECT_EQ(found.size(), 5);
}

TEST(BrowsingTest, everyDeliveredSampleComesDownInItsSize)
{
    PlatformHarness harness;
    auto files = harness.get("orgs/kestrel%2541%2F7%3Fb%23c/assets/files?page=1&pageSize=60&sort=newest")
                     .json[QStringLiteral("files")]
                     .toArray();
    ASSERT_FALSE(files.isEmpty());
    for (const auto& file : files) {
        auto row = QUrl::toPercentEncoding(file[QStringLiteral("rowId")].toString());
        auto url = harness.get("orgs/kestrel%2541%2F7%3Fb%23c/projects/p%2F100%25%3F%231/deliverables/" + row +
                               "/asset-url?object=" + escapeAll(file[QStringLiteral("object")].toString().toUtf8()));
        auto size = file[QStringLiteral("byteSize")].toVariant().toLongLong();
        EXPECT_EQ(harness.download(url.text("url")).length, size);
    }
    EXPECT_EQ(violationsOf(harness), "");
}

TEST(BrowsingTest, whatIsNotThereIsNotFoundAndNoViolation)
{
    PlatformHarness harness;
    for (const QByteArray path : {"orgs/none/projects", "orgs/org-northlight/projects/none/deliverables",
                                  "orgs/org-northlight/bin/download?key=none"})
        EXPECT_EQ(harness.get(path).status, 404) << path.toStdString();
    EXPECT_EQ(violationsOf(harness), "");
}

} // namespace
} // namespace palvera::local
