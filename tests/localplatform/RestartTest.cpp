#include "PlatformHarness.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace palvera::local {
namespace {

const QByteArray body = "0123456789abcdefghijABC";

class RestartTest : public testing::Test {
protected:
    RestartTest() { restart(); }

    /// As after a kill: nothing is told to the platform that ends.
    void restart()
    {
        auto cookie = harness ? harness->cookie : QByteArray();
        harness.reset();
        harness = std::make_unique<PlatformHarness>(PlatformOptions{.partSize = 10, .folder = folder.path()});
        if (!cookie.isEmpty())
            harness->cookie = cookie;
    }

    UploadSteps upload(const QString& filename) { return rowUpload(*harness, filename, body); }

    QJsonObject lastUpload()
    {
        return harness->platform.state()[QStringLiteral("uploads")].toArray().last().toObject();
    }

    QTemporaryDir folder;
    std::unique_ptr<PlatformHarness> harness;
};

TEST_F(RestartTest, anUploadGoesOnWithThePartsThatWereAnswered)
{
    auto before = upload(QStringLiteral("a.mov"));
    before.start();
    before.send(1);
    before.send(3);
    restart();
    auto after = upload(QStringLiteral("a.mov"));
    after.object = before.object;
    after.uploadId = before.uploadId;
    after.partSize = 10;
    after.tags = before.tags;
    EXPECT_EQ(after.send(2).status, 200);
    EXPECT_EQ(after.complete().status, 200);
    EXPECT_EQ(after.file(sampleRow).status, 200);
    restart();
    EXPECT_EQ(lastUpload()[QStringLiteral("parts")][QStringLiteral("1")][QStringLiteral("times")].toInt(), 1);
    EXPECT_TRUE(lastUpload()[QStringLiteral("filed")].toBool());
    QFile object(lastUpload()[QStringLiteral("path")].toString());
    ASSERT_TRUE(object.open(QIODevice::ReadOnly));
    EXPECT_TRUE(object.fileName().endsWith(QStringLiteral("/a.mov")));
    EXPECT_EQ(object.readAll(), body);
    auto url = harness->get(sampleRow + "/asset-url?object=" + escapeAll(after.object.toUtf8()));
    EXPECT_EQ(PlatformHarness::bytesOf(harness->download(url.text("url"))), body);
}

TEST_F(RestartTest, aPartLogCutShortLosesOnlyItsLastLine)
{
    auto steps = upload(QStringLiteral("a.mov"));
    steps.start();
    steps.send(1);
    steps.send(2);
    QFile log(folder.filePath(QStringLiteral("parts-1.log")));
    ASSERT_TRUE(log.open(QIODevice::ReadWrite));
    log.resize(log.size() - 1);
    log.close();
    restart();
    EXPECT_EQ(lastUpload()[QStringLiteral("parts")].toObject().keys(), QStringList{QStringLiteral("1")});
}

TEST_F(RestartTest, aSecondCopyOfAPartDoesNotDisturbTheFirst)
{
    auto steps = upload(QStringLiteral("a.mov"));
    steps.start();
    auto target = PlatformHarness::targetOf(steps.urlOf(1));
    steps.send(1);
    {
        auto late = harness->platform.openPart({.method = "PUT", .target = target}, 10, {});
        late.receiver->write({"XXXX", 4}); // and then the connection breaks
    }
    steps.send(2);
    steps.send(3);
    ASSERT_EQ(steps.complete().status, 200);
    QFile object(lastUpload()[QStringLiteral("path")].toString());
    ASSERT_TRUE(object.open(QIODevice::ReadOnly));
    EXPECT_EQ(object.readAll(), body);
}

TEST_F(RestartTest, sessionsAndBinUploadsSurvive)
{
    UploadSteps steps(*harness, "orgs/org-northlight/bin/uploads", QStringLiteral("b.mov"), body);
    auto session = steps.start().text("sessionId");
    steps.base = "orgs/org-northlight/bin/uploads/" + sessionSegment(session);
    steps.sendAll();
    steps.complete();
    restart();
    EXPECT_EQ(harness->get("me").status, 200);
    auto first = harness->get("orgs/org-northlight/bin?limit=1").json[QStringLiteral("objects")][0];
    EXPECT_EQ(first[QStringLiteral("key")].toString(), QStringLiteral("b.mov"));
}

} // namespace
} // namespace palvera::local
