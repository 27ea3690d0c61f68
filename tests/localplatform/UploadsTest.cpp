#include "PlatformHarness.h"

#include <gmock/gmock.h>

namespace palvera::local {
namespace {

const QByteArray body = "0123456789abcdefghijABC"; // three parts of ten bytes at most

QJsonObject rowOf(PlatformHarness& harness, const QString& id)
{
    auto rows = harness.get("orgs/org-northlight/projects/long-tide/deliverables").json;
    for (const auto& row : rows[QStringLiteral("deliverables")].toArray())
        if (row[QStringLiteral("id")] == id)
            return row.toObject();
    return {};
}

int timesStored(PlatformHarness& harness, const QString& part)
{
    auto uploads = harness.platform.state()[QStringLiteral("uploads")].toArray();
    return uploads.last()[QStringLiteral("parts")][part][QStringLiteral("times")].toInt();
}

TEST(UploadsTest, anUploadEndsFiledOnItsRowAndComesDownAgain)
{
    PlatformHarness harness;
    auto upload = rowUpload(harness, QStringLiteral("Final cut.mov"), body);
    EXPECT_EQ(upload.start().status, 200);
    EXPECT_EQ(upload.partCount, 3);
    upload.sendAll();
    EXPECT_EQ(upload.complete().status, 200);
    EXPECT_EQ(upload.file(sampleRow).status, 200);

    auto row = rowOf(harness, QStringLiteral("long-tide-row-5"));
    EXPECT_EQ(row[QStringLiteral("status")].toString(), QStringLiteral("delivered"));
    EXPECT_EQ(row[QStringLiteral("spec")][QStringLiteral("assetBytes")].toString(), QStringLiteral("23"));
    auto url = harness.get(sampleRow + "/asset-url?object=" + escapeAll(upload.object.toUtf8()));
    auto whole = harness.download(url.text("url"));
    EXPECT_EQ(whole.reply.status, 200);
    EXPECT_EQ(PlatformHarness::bytesOf(whole), body);
    auto newest = harness.get("orgs/org-northlight/assets/files?page=1&pageSize=60&sort=newest").json;
    EXPECT_EQ(newest[QStringLiteral("files")][0][QStringLiteral("object")].toString(), upload.object);
    EXPECT_EQ(violationsOf(harness), "");
}

TEST(UploadsTest, aBinUploadIsSpokenOfByItsEscapedSessionAndListedUnderItsObject)
{
    PlatformHarness harness;
    UploadSteps upload(harness, "orgs/org%20harbour/bin/uploads", QStringLiteral("Reel ä.mov"), body);
    auto started = upload.start({{QStringLiteral("folder"), QStringLiteral("Rushes 1/")}});
    EXPECT_EQ(started.text("sessionId"), QStringLiteral("s 1/a+b"));
    upload.base = "orgs/org%20harbour/bin/uploads/s%201%2Fa%2Bb";
    upload.sendAll();
    EXPECT_EQ(upload.complete().status, 200);

    auto listing = harness.get("orgs/org%20harbour/bin?limit=100&prefix=Rushes%201%2F").json;
    auto entry = listing[QStringLiteral("objects")][0];
    EXPECT_EQ(entry[QStringLiteral("key")].toString(), upload.object);
    EXPECT_EQ(entry[QStringLiteral("size")].toInteger(), body.size());
    auto url = harness.get("orgs/org%20harbour/bin/download?key=" + escapeAll(upload.object.toUtf8()));
    EXPECT_EQ(PlatformHarness::bytesOf(harness.download(url.text("url"), "bytes=9-10")), "9a");
    EXPECT_EQ(violationsOf(harness), "");
}

TEST(UploadsTest, aSecondCompletionIsAConflictAndFilingTwiceIsNot)
{
    PlatformHarness harness;
    auto upload = rowUpload(harness, QStringLiteral("a.mov"), body);
    upload.start();
    upload.sendAll();
    EXPECT_EQ(upload.file(sampleRow).status, 409); // not complete
    upload.complete();
    auto again = upload.complete();
    EXPECT_EQ(again.status, 409);
    EXPECT_EQ(again.text("error"), QStringLiteral("already_complete"));
    EXPECT_EQ(upload.file(sampleRow).status, 200);
    EXPECT_EQ(upload.file(sampleRow).status, 200);
    EXPECT_EQ(upload.file("orgs/org-northlight/projects/long-tide/deliverables/long-tide-row-6").status, 409);
    upload.object = QStringLiteral("deliveries/none");
    EXPECT_EQ(upload.file(sampleRow).status, 404);
}

TEST(UploadsTest, anAbortedUploadIsGone)
{
    PlatformHarness harness;
    auto upload = rowUpload(harness, QStringLiteral("a.mov"), body);
    upload.start();
    auto url = upload.urlOf(1);
    EXPECT_EQ(upload.abort().status, 200);
    EXPECT_EQ(upload.abort().status, 404);
    EXPECT_EQ(upload.complete().status, 404);
    EXPECT_EQ(harness.put(url, upload.bytesOf(1)).status, 404);
}

TEST(UploadsTest, aCompletionMustNameEveryPartAsStored)
{
    struct Case {
        const char* about;
        void (*spoil)(UploadSteps&);
    };
    const Case cases[] = {
        {"a part missing", [](UploadSteps& upload) { upload.tags.erase(2); }},
        {"another tag", [](UploadSteps& upload) { upload.tags[2] = upload.tags[1]; }},
        {"a tag with its quotes", [](UploadSteps& upload) { upload.tags[2] = '"' + upload.tags[2] + '"'; }},
        {"a number too high",
         [](UploadSteps& upload) {
             upload.tags[4] = upload.tags[3];
             upload.tags.erase(3);
         }},
    };
    for (const auto& [about, spoil] : cases) {
        PlatformHarness harness;
        auto upload = rowUpload(harness, QStringLiteral("a.mov"), body);
        upload.start();
        upload.sendAll();
        spoil(upload);
        EXPECT_EQ(upload.complete().status, 400) << about;
        EXPECT_EQ(harness.platform.violations().size(), 1) << about;
    }
}

TEST(UploadsTest, aPartThatIsTooShortSpoilsTheCompletion)
{
    PlatformHarness harness;
    auto upload = rowUpload(harness, QStringLiteral("a.mov"), body);
    upload.start();
    upload.sendAll();
    auto shorter = harness.put(upload.urlOf(2), "abc");
    upload.tags[2] = headerOf(shorter.headers, "ETag").replace('"', "");
    EXPECT_EQ(shorter.status, 200); // storage takes it, as real storage does
    EXPECT_EQ(upload.complete().status, 400);
    EXPECT_EQ(harness.put(upload.urlOf(2), "").status, 400);
}

TEST(UploadsTest, aSecondFileTakesThePlaceOfTheFirst)
{
    PlatformHarness harness;
    for (const auto& name : {QStringLiteral("first.mov"), QStringLiteral("second.mov")}) {
        auto upload = rowUpload(harness, name, body);
        upload.start();
        upload.sendAll();
        upload.complete();
        EXPECT_EQ(upload.file(sampleRow).status, 200);
    }
    auto found = [&](const QByteArray& name) {
        auto page = harness.get("orgs/org-northlight/assets/files?page=1&pageSize=60&sort=newest&q=" + name).json;
        return page[QStringLiteral("total")].toInt();
    };
    EXPECT_EQ(found("first"), 0);
    EXPECT_EQ(found("second"), 1);
}

TEST(UploadsTest, aPartIsStoredOnlyWhenItHasArrivedWhole)
{
    PlatformHarness harness;
    auto upload = rowUpload(harness, QStringLiteral("a.mov"), body);
    upload.start();
    {
        RequestHead head{.method = "PUT", .target = PlatformHarness::targetOf(upload.urlOf(1))};
        auto opening = harness.platform.openPart(head, 10, {});
        opening.receiver->write({"01234", 5});
    }
    EXPECT_EQ(timesStored(harness, QStringLiteral("1")), 0);
    upload.send(1);
    upload.send(1);
    EXPECT_EQ(timesStored(harness, QStringLiteral("1")), 2);
}

TEST(UploadsTest, aDraftMustBeConfirmed)
{
    PlatformHarness harness;
    auto upload = rowUpload(harness, QStringLiteral("My DRAFT cut.mov"), body);
    auto refused = upload.start();
    EXPECT_EQ(refused.status, 409);
    EXPECT_EQ(refused.text("error"), QStringLiteral("delivery_doubt"));
    EXPECT_EQ(upload.start({{QStringLiteral("confirmed"), true}}).status, 200);
    EXPECT_EQ(violationsOf(harness), "");
}

TEST(UploadsTest, aHugeFileGetsLargerPartsInsteadOfTooMany)
{
    PlatformHarness harness({.partSize = 1 << 20});
    auto answer =
        harness.post(sampleRow + "/transfer/start", {{QStringLiteral("filename"), QStringLiteral("a.mov")},
                                                     {QStringLiteral("contentType"), QStringLiteral("video/quicktime")},
                                                     {QStringLiteral("byteSize"), 1LL << 40}});
    EXPECT_EQ(answer.json[QStringLiteral("partCount")].toInt(), 10'000);
}

TEST(UploadsTest, md5TagsAreTheHashOfThePart)
{
    PlatformHarness harness({.partSize = 10, .tags = Tags::md5});
    auto upload = rowUpload(harness, QStringLiteral("a.mov"), body);
    upload.start();
    upload.send(3);
    EXPECT_EQ(upload.tags[3], QCryptographicHash::hash("ABC", QCryptographicHash::Md5).toHex());
}

TEST(UploadsTest, progressIsKeptAndChecked)
{
    PlatformHarness harness;
    auto upload = rowUpload(harness, QStringLiteral("a.mov"), body);
    upload.start();
    auto report = [&](QJsonObject json) { return harness.post(sampleRow + "/transfer/progress", json).status; };
    EXPECT_EQ(report({{QStringLiteral("bytesSent"), 5}, {QStringLiteral("bytesTotal"), 23}}), 200);
    auto progress = harness.platform.state()[QStringLiteral("progress")].toObject();
    EXPECT_EQ(progress[QStringLiteral("long-tide-row-5")][QStringLiteral("bytesSent")].toInt(), 5);
    EXPECT_EQ(report({{QStringLiteral("bytesSent"), 24}, {QStringLiteral("bytesTotal"), 23}}), 400);
    EXPECT_EQ(report({{QStringLiteral("bytesSent"), 5}, {QStringLiteral("bytesTotal"), 22}}), 400);
    EXPECT_EQ(report({{QStringLiteral("bytesSent"), 0},
                      {QStringLiteral("bytesTotal"), 1},
                      {QStringLiteral("status"), QStringLiteral("stopped")}}),
              200);
    EXPECT_EQ(report({{QStringLiteral("bytesSent"), 0},
                      {QStringLiteral("bytesTotal"), 1},
                      {QStringLiteral("status"), QStringLiteral("paused")}}),
              400);
}

} // namespace
} // namespace palvera::local
