#include "service/AssetRecords.h"
#include "service/JsonReader.h"
#include "support/Json.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

TEST(AssetRecordsTest, aFileNeedsItsKeyAndRow)
{
    EXPECT_EQ(decoded<OrgAssetFile>(R"({"key":"k","rowId":"r"})"), (OrgAssetFile{.key = "k", .rowId = "r"}));
    EXPECT_EQ(decoded<OrgAssetFile>(R"({"key":"k","rowId":"r","object":1,"filename":2,"label":[],"family":null,
                                        "byteSize":"x","deliveredAt":{}})"),
              (OrgAssetFile{.key = "k", .rowId = "r"}));
    EXPECT_EQ(decoded<OrgAssetFile>(R"({"key":"k","rowId":"r","object":"o","filename":"f","label":"l","family":"v",
                                        "byteSize":"7","deliveredAt":"2026-01-31T12:00:00Z"})"),
              (OrgAssetFile{.key = "k",
                            .rowId = "r",
                            .object = "o",
                            .filename = "f",
                            .label = "l",
                            .family = "v",
                            .byteSize = 7,
                            .deliveredAt = "2026-01-31T12:00:00Z"}));
    EXPECT_THROW(decoded<OrgAssetFile>(R"({"key":"k"})"), DecodingError);
    EXPECT_THROW(decoded<OrgAssetFile>(R"({"key":"k","rowId":1})"), DecodingError);
}

TEST(AssetRecordsTest, aFileWasDeliveredAtADate)
{
    const OrgAssetFile file{.key = "k", .rowId = "r", .deliveredAt = "2026-01-31T12:00:00.5Z"};
    EXPECT_EQ(file.deliveredDate(), QDateTime({2026, 1, 31}, {12, 0, 0, 500}, Qt::UTC));
    EXPECT_EQ((OrgAssetFile{.key = "k", .rowId = "r"}).deliveredDate(), std::nullopt);
}

TEST(AssetRecordsTest, aRowIsADeliverableWithItsProject)
{
    EXPECT_EQ(
        decoded<OrgAssetRow>(R"({"id":"d","label":"L","projectId":"p","projectName":"P","projectReference":"R"})"),
        (OrgAssetRow{
            .deliverable = {.id = "d", .label = "L"}, .projectId = "p", .projectName = "P", .projectReference = "R"}));
    EXPECT_EQ(decoded<OrgAssetRow>(R"({"id":"d","projectId":"p","projectName":1,"projectReference":2})"),
              (OrgAssetRow{.deliverable = {.id = "d"}, .projectId = "p"}));
    EXPECT_THROW(decoded<OrgAssetRow>(R"({"projectId":"p"})"), DecodingError);
    EXPECT_THROW(decoded<OrgAssetRow>(R"({"id":"d"})"), DecodingError);
}

TEST(AssetRecordsTest, aPageNeedsEveryMember)
{
    const auto whole = jsonObject(R"({"files":[{"key":"k","rowId":"r"}],"rows":[{"id":"d","projectId":"p"}],
                                      "total":120,"page":1,"pageSize":60})");
    EXPECT_EQ(OrgAssetsPage::fromJson(whole), (OrgAssetsPage{.files = {{.key = "k", .rowId = "r"}},
                                                             .rows = {{.deliverable = {.id = "d"}, .projectId = "p"}},
                                                             .total = 120,
                                                             .page = 1,
                                                             .pageSize = 60}));
    for (const QString& key : whole.keys()) {
        QJsonObject partial = whole;
        partial.remove(key);
        EXPECT_THROW(OrgAssetsPage::fromJson(partial), DecodingError) << key.toStdString();
    }
}

} // namespace
} // namespace palvera
