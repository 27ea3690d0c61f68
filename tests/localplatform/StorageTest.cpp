#include "PlatformHarness.h"

#include <gmock/gmock.h>

namespace palvera::local {
namespace {

using namespace std::chrono_literals;

QString sampleUrl(PlatformHarness& harness)
{
    return harness.get("orgs/org-northlight/bin/download?key=Reel%20002%20of%20230%2Emov").text("url");
}

TEST(StorageTest, anAddressIsGoodUntilItExpiresAndThenIsNoViolation)
{
    PlatformHarness harness({.partSize = 10, .addressLife = 60s});
    auto upload = rowUpload(harness, QStringLiteral("a.mov"), QByteArray(23, 'x'));
    upload.start();
    auto url = upload.urlOf(1), download = sampleUrl(harness);
    harness.now += 59s;
    EXPECT_EQ(harness.put(url, upload.bytesOf(1)).status, 200);
    EXPECT_EQ(harness.download(download, "bytes=0-0").reply.status, 206);
    harness.now += 1s;
    auto refused = harness.put(url, upload.bytesOf(1));
    EXPECT_EQ(refused.status, 403);
    EXPECT_TRUE(refused.body.startsWith("<?xml"));
    EXPECT_EQ(harness.download(download, "bytes=0-0").reply.status, 403);
    EXPECT_EQ(violationsOf(harness), "");
}

TEST(StorageTest, aRangeBringsExactlyItsBytes)
{
    PlatformHarness harness;
    auto url = sampleUrl(harness);
    auto whole = PlatformHarness::bytesOf(harness.download(url));
    EXPECT_EQ(whole.size(), 165'537);
    auto part = harness.download(url, "bytes=1001-2007");
    EXPECT_EQ(PlatformHarness::bytesOf(part), whole.mid(1001, 1007));
    EXPECT_EQ(headerOf(part.reply.headers, "Content-Range"), "bytes 1001-2007/165537");
}

TEST(StorageTest, aRangeBeyondTheFileOrOutOfFormIsAViolation)
{
    for (const QByteArray range :
         {"bytes=0-165537", "bytes=5-4", "bytes=5-", "bytes=-5", "items=0-1", "bytes=0-1,3-4"}) {
        PlatformHarness harness;
        EXPECT_EQ(harness.download(sampleUrl(harness), range).reply.status, 400) << range.toStdString();
        EXPECT_EQ(harness.platform.violations().size(), 1) << range.toStdString();
    }
}

TEST(StorageTest, addressesHoldWhatACarelessClientRespells)
{
    PlatformHarness harness;
    auto upload = rowUpload(harness, QStringLiteral("Örn & co.mov"), QByteArray(23, 'x'));
    upload.start();
    for (const auto& url : {upload.urlOf(1), sampleUrl(harness)}) {
        EXPECT_TRUE(url.contains(QStringLiteral("%2f"))) << url.toStdString();
        EXPECT_TRUE(url.contains(QStringLiteral("%7E")) && url.contains(u'+')) << url.toStdString();
    }
    EXPECT_EQ(upload.send(1).status, 200);
}

} // namespace
} // namespace palvera::local
