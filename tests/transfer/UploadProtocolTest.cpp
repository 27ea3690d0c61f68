#include "transfer/UploadProtocol.h"
#include "service/API.h"
#include "support/FakeHttpClient.h"
#include "support/Json.h"
#include "support/QtPrinting.h"
#include "support/ScopedVariable.h"
#include "support/Simulation.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

struct UploadProtocolTest : testing::Test {
    ScopedVariable serviceAddress{"PV_API", "https://service.test/api"};
    Simulation simulation;
    FakeHttpClient client{simulation.clock};
    API api{{.client = client, .executor = simulation.executor()}};
    const TransferTarget deliverable =
        TransferTarget::Deliverable{.orgId = "o", .projectId = "p", .deliverableId = "d/1"};
    const TransferTarget bin = TransferTarget::Bin{.orgId = "O", .folder = "f"};

    /// The path and the body with which `operation` asks, when it gets `answer`.
    template <class T>
    std::pair<QByteArray, QJsonObject> asked(Task<T> operation, const QByteArray& answer)
    {
        client.answer(200, answer);
        simulation.run(std::move(operation));
        const auto& request = client.requests().back();
        EXPECT_EQ(request.method, "POST");
        return {QByteArray(request.url).replace("https://service.test/api/", ""), jsonObject(request.body)};
    }
};

TEST_F(UploadProtocolTest, absentFieldsAreLeftOut)
{
    const StartBody start{.filename = "f.mov", .contentType = "video/quicktime", .byteSize = 9007199254740993};
    EXPECT_EQ(QJsonDocument(start.toJson()).toJson(QJsonDocument::Compact),
              R"({"byteSize":9007199254740993,"contentType":"video/quicktime","filename":"f.mov"})");
    EXPECT_EQ((StartBody{.filename = "f", .contentType = "t", .byteSize = 1, .confirmed = true}.toJson()),
              jsonObject(R"({"filename":"f","contentType":"t","byteSize":1,"confirmed":true})"));
    EXPECT_EQ((BinStartBody{.filename = "f", .contentType = "t", .byteSize = 1}.toJson()),
              jsonObject(R"({"filename":"f","contentType":"t","byteSize":1})"));
    EXPECT_EQ((BinStartBody{.filename = "f", .contentType = "t", .byteSize = 1, .folder = ""}.toJson()),
              jsonObject(R"({"filename":"f","contentType":"t","byteSize":1,"folder":""})"));
    EXPECT_EQ((ConfirmBody{.object = "k", .filename = "f"}.toJson()), jsonObject(R"({"object":"k","filename":"f"})"));
    EXPECT_EQ((ConfirmBody{.object = "k", .filename = "f", .durationSeconds = 1.5}.toJson()),
              jsonObject(R"({"object":"k","filename":"f","durationSeconds":1.5})"));
    EXPECT_EQ((ProgressBody{.bytesSent = 1, .bytesTotal = 2}.toJson()),
              jsonObject(R"({"bytesSent":1,"bytesTotal":2})"));
    EXPECT_EQ((ProgressBody{.bytesSent = 1, .bytesTotal = 2, .bytesPerSecond = 0.5, .status = "stopped"}.toJson()),
              jsonObject(R"({"bytesSent":1,"bytesTotal":2,"bytesPerSecond":0.5,"status":"stopped"})"));
}

TEST_F(UploadProtocolTest, answersDecode)
{
    EXPECT_EQ(decoded<Started>(R"({"object":"k","uploadId":"u","partSize":8388608,"partCount":3,"sessionId":"s"})"),
              (Started{.object = "k", .uploadId = "u", .partSize = 8388608, .partCount = 3, .sessionId = "s"}));
    EXPECT_EQ(
        decoded<Started>(R"({"object":"k","uploadId":"u","partSize":1,"partCount":3,"sessionId":null})").sessionId,
        std::nullopt);
    for (const char* key : {"object", "uploadId", "partSize", "partCount"}) {
        auto partial = jsonObject(R"({"object":"k","uploadId":"u","partSize":1,"partCount":3})");
        partial.remove(key);
        EXPECT_THROW(Started::fromJson(partial), DecodingError) << key;
    }
    EXPECT_EQ(decoded<PartURLs>(R"({"urls":[{"partNumber":4,"url":"https://s/4?x=%2F"}]})"),
              (PartURLs{.urls = {{.partNumber = 4, .url = "https://s/4?x=%2F"}}}));
    EXPECT_THROW(decoded<PartURLs>(R"({"urls":[{"partNumber":"4","url":"u"}]})"), DecodingError);
    EXPECT_EQ(decoded<Completed>("{}"), Completed{});
    EXPECT_EQ(decoded<Completed>(R"({"object":"k"})").object, "k");
}

TEST_F(UploadProtocolTest, startsAskAtTheirPlaces)
{
    const QByteArray started = R"({"object":"k","uploadId":"u","partSize":1,"partCount":1})";
    const StartBody start{.filename = "f", .contentType = "t", .byteSize = 1};
    EXPECT_EQ(asked(startUpload(api, deliverable, start), started),
              std::pair(QByteArray("orgs/o/projects/p/deliverables/d%2F1/transfer/start"), start.toJson()));
    const BinStartBody binStart{.filename = "f", .contentType = "t", .byteSize = 1, .folder = "f"};
    EXPECT_EQ(asked(startBinUpload(api, *bin.asBin(), binStart), started),
              std::pair(QByteArray("orgs/O/bin/uploads"), binStart.toJson()));
}

TEST_F(UploadProtocolTest, theStepsOfAnUploadAskAtItsBasePath)
{
    const PartsBody parts{.object = "k", .uploadId = "u", .from = 17, .to = 32};
    EXPECT_EQ(asked(signParts(api, bin, "a b/c", parts), R"({"urls":[]})"),
              std::pair(QByteArray("orgs/O/bin/uploads/a%20b%2Fc/parts"),
                        jsonObject(R"({"object":"k","uploadId":"u","from":17,"to":32})")));
    const CompleteBody complete{
        .object = "k", .uploadId = "u", .parts = {{.partNumber = 1, .etag = "x"}, {.partNumber = 2, .etag = "y"}}};
    EXPECT_EQ(asked(completeUpload(api, deliverable, {}, complete), "{}"),
              std::pair(QByteArray("orgs/o/projects/p/deliverables/d%2F1/transfer/complete"),
                        jsonObject(R"({"object":"k","uploadId":"u",
                                       "parts":[{"partNumber":1,"etag":"x"},{"partNumber":2,"etag":"y"}]})")));
    EXPECT_EQ(asked(abortUpload(api, bin, "s", {.object = "k", .uploadId = "u"}), "ignored"),
              std::pair(QByteArray("orgs/O/bin/uploads/s/abort"), jsonObject(R"({"object":"k","uploadId":"u"})")));
}

TEST_F(UploadProtocolTest, aDeliverableIsToldOfItsFile)
{
    EXPECT_EQ(asked(confirmAsset(api, deliverable, {.object = "k", .filename = "f"}), "ignored").first,
              "orgs/o/projects/p/deliverables/d%2F1/asset");
    EXPECT_EQ(asked(reportProgress(api, deliverable, {.bytesSent = 1, .bytesTotal = 2}), "ignored").first,
              "orgs/o/projects/p/deliverables/d%2F1/transfer/progress");
}

TEST_F(UploadProtocolTest, aDoubtReachesTheCaller)
{
    client.answer(409, R"({"message":"Is it the right file?","error":"delivery_doubt"})");
    try {
        simulation.run(startUpload(api, deliverable, {.filename = "f", .contentType = "t", .byteSize = 1}));
        FAIL() << "it started";
    } catch (const APIError& error) {
        EXPECT_EQ(error.status(), 409);
        EXPECT_EQ(error.message(), "Is it the right file?");
        EXPECT_EQ(error.code(), "delivery_doubt");
    }
}

} // namespace
} // namespace palvera
