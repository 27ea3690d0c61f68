#include "cli/Listing.h"

#include "support/Json.h"
#include "support/QtPrinting.h"

namespace palvera::cli {

namespace {

using testing::ElementsAre;

TEST(Table, alignsByCellsShortensTheWidestFirstAndNeverAnIdentifier)
{
    const auto columns = listingOf(std::vector<Journal>{}).columns; // two of the five are quantities
    EXPECT_EQ(
        tableLines(columns, {{"a", "1 KB", "2 KB", "映画", "Salt"}, {"bcd", "15.2 KB", "1.0 GB", "x"}}, {}),
        QStringList({"KEY     SENT      OF  FILE  TO", "a       1 KB    2 KB  映画  Salt", "bcd  15.2 KB  1.0 GB  x"}));
    EXPECT_EQ(tableLines(columns, {{"a\nb", "", "", "\x1b]0;title\x07"}}, {})[1], "a b            ]0;title");
    const QStringList row{"identifier-0123456789", "1 KB", "2 KB", "A rather long name", "The Long Tide"};
    EXPECT_EQ(tableLines(columns, {row}, 58)[1], "identifier-0123456789  1 KB  2 KB  A rather …  The Long T…");
    EXPECT_EQ(tableLines(columns, {row}, 10)[1], "identifier-0123456789  1 KB  2 KB  A rat…  The L…");
}

TEST(Listing, ofDeliverablesTellsTitleAndFiledFile)
{
    Deliverable row{.id = "d", .label = "Master", .status = "delivered", .language = "en", .titleName = "Salt"};
    row.spec = QMap<QString, QString>{{"assetFilename", "salt.mov"}};
    auto listing = listingOf(QList<Deliverable>{row});
    EXPECT_THAT(listing.rows[0], ElementsAre("d", "delivered", "Master", "en", "Salt", "salt.mov"));
    EXPECT_EQ(listing.records[0], row.toJson());
}

TEST(Listing, ofAssetsFindsEachFilesProject)
{
    OrgAssetFile known{.key = "k1", .rowId = "d1", .filename = "a.mov", .byteSize = 70'000'000};
    OrgAssetFile orphan{.key = "k2", .rowId = "d2", .label = "Trailer", .deliveredAt = "soon"};
    OrgAssetRow row{.deliverable = {.id = "d1"}, .projectId = "p", .projectName = "Salt"};
    auto listing = listingOf(QList{known, orphan}, {row});
    EXPECT_THAT(listing.rows[0], ElementsAre("d1", "a.mov", "", "70.0 MB", "", "Salt"));
    EXPECT_THAT(listing.rows[1], ElementsAre("d2", "Trailer", "", "", "soon", ""));
    EXPECT_EQ(listing.records[0], jsonObject(R"({"key":"k1","rowId":"d1","object":"","family":"","filename":"a.mov",
        "byteSize":70000000,"projectId":"p","projectName":"Salt"})"));
    EXPECT_EQ(listing.records[1], jsonObject(R"({"key":"k2","rowId":"d2","object":"","family":"","label":"Trailer",
        "deliveredAt":"soon"})"));
}

TEST(Listing, ofABinFolderNamesFoldersByTheirWholePath)
{
    auto listing = listingOf("a/", {"a/b/", "c/"}, {{.key = "a/x.mov", .name = "x.mov", .size = 5}});
    EXPECT_EQ(listing.records[0], jsonObject(R"({"folder":"a/b/"})"));
    EXPECT_EQ(listing.records[1], jsonObject(R"({"folder":"a/c/"})"));
    EXPECT_EQ(listing.records[2], jsonObject(R"({"key":"a/x.mov","name":"x.mov","size":5})"));
    EXPECT_EQ(listing.rows[2][0], "a/x.mov");
}

TEST(Listing, ofJournalsCountsConfirmedBytesUpToTheFilesSize)
{
    Journal journal{.key = "k", .orgId = "o", .projectId = "p", .partSize = 1000, .partCount = 2, .byteSize = 1500};
    journal.filePath = "/a/b.mov";
    journal.done = {{1, "x"}, {2, "y"}};
    EXPECT_EQ(listingOf(std::vector{journal}).records[0], jsonObject(R"({"key":"k","file":"/a/b.mov","sent":1500,
        "total":1500,"orgId":"o","projectId":"p","deliverableId":"k"})"));
    journal.target = TransferTarget::Bin{.orgId = "o", .folder = "f/"};
    EXPECT_EQ(listingOf(std::vector{journal}).records[0]["folder"], "f/");
}

} // namespace

} // namespace palvera::cli
