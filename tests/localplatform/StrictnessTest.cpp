#include "PlatformHarness.h"

#include <gmock/gmock.h>

namespace palvera::local {
namespace {

using testing::HasSubstr;

const QByteArray startJson = R"({"filename":"a.mov","contentType":"video/quicktime","byteSize":23})";

struct ServiceCase {
    const char* about;
    QByteArray method;
    QByteArray target;
    QByteArray body = {};
    HttpHeaders more = {};
    int status = 400;
};

const QByteArray startTarget = "/api/" + sampleRow + "/transfer/start";
const QByteArray bin = "/api/orgs/org-northlight/bin?";
const QByteArray assets = "/api/orgs/org-northlight/assets/files?";

const ServiceCase improper[] = {
    {"unknown path", "GET", "/api/nothing", {}, {}, 404},
    {"wrong method", "POST", "/api/orgs", {}, {}, 404},
    {"a slash too many", "GET", "/api/orgs/", {}, {}, 404},
    {"an empty identifier", "GET", "/api/orgs//projects", {}, {}, 404},
    {"an identifier as several segments", "GET", "/api/orgs/kestrel%2541/7%3Fb%23c/projects", {}, {}, 404},
    {"a raw space", "GET", "/api/orgs/org harbour/projects"},
    {"an escape in lower case", "GET", "/api/orgs/kestrel%2541%2f7%3Fb%23c/projects"},
    {"an escape of what needs none", "GET", "/api/orgs/org%2Dnorthlight/projects"},
    {"an escape cut short", "GET", "/api/orgs/org%2/projects"},
    {"a session escaped twice", "POST", "/api/orgs/org-northlight/bin/uploads/s%25201%252Fa%252Bb/abort"},
    {"a session with its hyphen", "POST", "/api/orgs/org-northlight/bin/uploads/a-b/abort"},
    {"a query where none belongs", "GET", "/api/orgs?x=1"},
    {"an empty query", "GET", "/api/orgs?"},
    {"an item missing", "GET", bin + "prefix=a"},
    {"items out of order", "GET", assets + "pageSize=60&page=1&sort=newest"},
    {"an item twice", "GET", bin + "limit=100&limit=100"},
    {"another sort", "GET", assets + "page=1&pageSize=60&sort=oldest"},
    {"an optional item that is empty", "GET", bin + "limit=100&q="},
    {"a number of zero", "GET", bin + "limit=0"},
    {"a number with a sign", "GET", bin + "limit=+5"},
    {"a plus for a space", "GET", bin + "limit=100&q=a+b"},
    {"an unescaped hyphen", "GET", bin + "limit=100&q=a-b"},
    {"a query escape in lower case", "GET", bin + "limit=100&q=a%2db"},
    {"a query escape of a letter", "GET", bin + "limit=100&q=%61"},
    {"a cursor that was not given out", "GET", bin + "limit=100&cursor=5"},
    {"an unknown header", "GET", "/api/orgs", {}, {{"Expect", "100-continue"}}},
    {"a header twice", "GET", "/api/orgs", {}, {{"Host", "again"}}},
    {"a type without a body", "GET", "/api/orgs", {}, {{"Content-Type", "application/json"}}},
    {"a body where none belongs", "POST", "/api/auth/logout", "{}"},
    {"no JSON", "POST", startTarget, "{"},
    {"no object", "POST", startTarget, "[]"},
    {"a key missing", "POST", "/api/auth/forgot", "{}"},
    {"a key missing inside", "POST", "/api/" + sampleRow + "/transfer/complete",
     R"({"object":"o","uploadId":"u","parts":[{"partNumber":1}]})"},
    {"a key too many", "POST", startTarget, startJson.chopped(1) + R"(,"duration":1})"},
    {"a wrong type", "POST", startTarget, QByteArray(startJson).replace("23", "\"23\"")},
    {"a fraction", "POST", startTarget, QByteArray(startJson).replace("23", "23.5")},
    {"a null for an absent field", "POST", startTarget, startJson.chopped(1) + R"(,"confirmed":null})"},
    {"a confirmation that is false", "POST", startTarget, startJson.chopped(1) + R"(,"confirmed":false})"},
    {"an empty file", "POST", startTarget, QByteArray(startJson).replace("23", "0")},
    {"a path for a name", "POST", startTarget, QByteArray(startJson).replace("a.mov", "x/a.mov")},
    {"no MIME type", "POST", startTarget, QByteArray(startJson).replace("video/quicktime", "mov")},
};

TEST(StrictnessTest, anImproperCallIsRefusedAndCounted)
{
    PlatformHarness harness;
    for (const auto& [about, method, target, body, more, status] : improper) {
        auto before = harness.platform.violations().size();
        auto headers = harness.serviceHeaders(body);
        headers += more;
        auto reply = harness.ask({.method = method, .target = target, .headers = headers}, body);
        EXPECT_EQ(reply.status, status) << about;
        EXPECT_EQ(harness.platform.violations().size(), before + 1) << about;
        auto json = QJsonDocument::fromJson(reply.body).object();
        EXPECT_TRUE(json[QStringLiteral("error")].isString() && json[QStringLiteral("message")].isString()) << about;
    }
}

TEST(StrictnessTest, aCallMustAcceptAndAnnounceJson)
{
    PlatformHarness harness;
    RequestHead head{.method = "GET", .target = "/api/orgs", .headers = {{"Accept", "*/*"}}};
    EXPECT_EQ(harness.ask(head).status, 400);
    head = {.method = "POST",
            .target = startTarget,
            .headers = {{"Accept", "application/json"}, {"Content-Type", "text/plain"}}};
    EXPECT_EQ(harness.ask(head, startJson).status, 400);
    EXPECT_EQ(harness.platform.violations().size(), 2);
}

TEST(StrictnessTest, properCallsWithEveryOddityAreLetIn)
{
    const QByteArray targets[] = {
        "orgs/org%20harbour/projects",
        "orgs/kestrel%2541%2F7%3Fb%23c/projects/p%2F100%25%3F%231/deliverables",
        "orgs/org-northlight/bin?limit=100&prefix=Rushes%202025%2FSecond%20unit%20%26%20pick%2Dups%2F",
        "orgs/org-northlight/bin?limit=1&q=%C3%A6vint&cursor=after%200%2F%2B%3D%3D",
        "orgs/org-northlight/assets/files?page=2&pageSize=60&sort=newest&q=v1&family=video",
    };
    PlatformHarness harness;
    for (const auto& target : targets)
        EXPECT_EQ(harness.get(target).status, 200) << target.toStdString();
    EXPECT_EQ(violationsOf(harness), "");
}

TEST(StrictnessTest, improperStorageRequestsAreRefusedAndCounted)
{
    PlatformHarness harness;
    auto upload = rowUpload(harness, QStringLiteral("a.mov"), QByteArray(23, 'x'));
    upload.start();
    auto target = PlatformHarness::targetOf(upload.urlOf(3));
    struct Case {
        const char* about;
        QByteArray target;
        qint64 length;
        HttpHeaders headers;
        int status;
    };
    const Case cases[] = {
        {"a type", target, 3, {{"Content-Type", "video/quicktime"}}, 400},
        {"a range", target, 3, {{"Range", "bytes=0-1"}}, 400},
        {"a part too long", target, 4, {}, 400},
        {"a respelled escape", QByteArray(target).replace("%2f", "%2F"), 3, {}, 403},
        {"an escape undone", QByteArray(target).replace("%7E", "~"), 3, {}, 403},
        {"a plus escaped", QByteArray(target).replace("a+b", "a%20b"), 3, {}, 403},
        {"another part", QByteArray(target).replace("/3/", "/2/"), 3, {}, 403},
    };
    for (const auto& [about, spoiled, length, headers, status] : cases) {
        auto before = harness.platform.violations().size();
        auto opening = harness.platform.openPart({.method = "PUT", .target = spoiled, .headers = headers}, length, {});
        EXPECT_EQ(opening.receiver, nullptr) << about;
        EXPECT_EQ(opening.refusal.status, status) << about;
        EXPECT_EQ(harness.platform.violations().size(), before + 1) << about;
    }
}

TEST(StrictnessTest, violationsNameNoSignature)
{
    PlatformHarness harness;
    auto upload = rowUpload(harness, QStringLiteral("a.mov"), QByteArray(23, 'x'));
    upload.start();
    harness.put(upload.urlOf(1) + u'0', QByteArray(10, 'x'));
    EXPECT_THAT(violationsOf(harness), HasSubstr("not as it was signed"));
    EXPECT_THAT(violationsOf(harness), testing::Not(HasSubstr("signature=")));
}

} // namespace
} // namespace palvera::local
