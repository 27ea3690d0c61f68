#include "cli/Listing.h"

#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace palvera::cli {

using namespace Qt::StringLiterals;

namespace {

using testing::ElementsAre;

TEST(Listing, ofDeliverablesTellsTitleAndFiledFile)
{
    Deliverable row{.id = u"d"_s,
                    .label = u"Picture master"_s,
                    .status = u"delivered"_s,
                    .language = u"en"_s,
                    .titleName = u"Salt"_s,
                    .spec = QMap<QString, QString>{{u"assetFilename"_s, u"salt.mov"_s}}};
    auto listing = listingOf(QList<Deliverable>{row});
    EXPECT_THAT(listing.rows[0],
                ElementsAre(u"d"_s, u"delivered"_s, u"Picture master"_s, u"en"_s, u"Salt"_s, u"salt.mov"_s));
    EXPECT_EQ(listing.records[0][u"spec"_s][u"assetFilename"_s], u"salt.mov"_s);
}

TEST(Listing, ofAssetsFindsEachFilesProject)
{
    OrgAssetFile known{.key = u"k1"_s, .rowId = u"d1"_s, .filename = u"a.mov"_s, .byteSize = 70'000'000};
    OrgAssetFile orphan{.key = u"k2"_s, .rowId = u"d2"_s, .label = u"Trailer"_s, .deliveredAt = u"soon"_s};
    OrgAssetRow row{.deliverable = {.id = u"d1"_s}, .projectId = u"p"_s, .projectName = u"Salt"_s};
    auto listing = listingOf(QList{known, orphan}, {row});
    EXPECT_THAT(listing.rows[0], ElementsAre(u"d1"_s, u"a.mov"_s, u""_s, u"70.0 MB"_s, u""_s, u"Salt"_s));
    EXPECT_THAT(listing.rows[1], ElementsAre(u"d2"_s, u"Trailer"_s, u""_s, u""_s, u"soon"_s, u""_s));
    EXPECT_EQ(listing.records[0][u"projectId"_s], u"p"_s);
    EXPECT_FALSE(listing.records[1].contains(u"projectId"_s));
    EXPECT_FALSE(listing.records[1].contains(u"byteSize"_s));
}

TEST(Listing, ofABinFolderNamesFoldersByTheirWholePath)
{
    auto listing = listingOf(u"a/"_s, {u"a/b/"_s, u"c/"_s}, {{.key = u"a/x.mov"_s, .name = u"x.mov"_s}});
    EXPECT_EQ(listing.records[0], (QJsonObject{{u"folder"_s, u"a/b/"_s}}));
    EXPECT_EQ(listing.records[1], (QJsonObject{{u"folder"_s, u"a/c/"_s}}));
    EXPECT_EQ(listing.rows[2][0], u"a/x.mov"_s);
}

TEST(Listing, ofJournalsCountsConfirmedBytesUpToTheFilesSize)
{
    Journal journal{
        .key = u"k"_s, .orgId = u"o"_s, .projectId = u"p"_s, .partSize = 1000, .partCount = 2, .byteSize = 1500};
    journal.filePath = u"/a/b.mov"_s;
    journal.done = {{1, u"x"_s}, {2, u"y"_s}};
    auto listing = listingOf(std::vector{journal});
    EXPECT_EQ(listing.records[0], (QJsonObject{{u"key"_s, u"k"_s},
                                               {u"file"_s, u"/a/b.mov"_s},
                                               {u"sent"_s, 1500},
                                               {u"total"_s, 1500},
                                               {u"orgId"_s, u"o"_s},
                                               {u"projectId"_s, u"p"_s},
                                               {u"deliverableId"_s, u"k"_s}}));
    journal.target = TransferTarget::Bin{.orgId = u"o"_s, .folder = u"f/"_s};
    EXPECT_EQ(listingOf(std::vector{journal}).records[0][u"folder"_s], u"f/"_s);
}

} // namespace

} // namespace palvera::cli
