#include "PlatformHarness.h"

namespace palvera::local {
namespace {

using namespace std::chrono_literals;

struct Case {
    const char* about;
    QByteArray line;
    QByteArray body = {};
    HttpHeaders headers = {};
    const char* answer = "400 bad_request";
    bool counted = true; ///< as what no proper client sends
};

const QByteArray bin = "/api/orgs/org-northlight/bin", assets = "/api/orgs/org-northlight/assets/files?";
const QByteArray start = "POST " + row + "/transfer/start", parts = "POST " + row + "/transfer/parts";
const QByteArray complete = "POST " + row + "/transfer/complete", progress = "POST " + row + "/transfer/progress";
const QByteArray otherRow = QByteArray(row).replace("row-5", "row-6");
const QByteArray abortion = "POST " + row + "/transfer/abort", filing = "POST " + row + "/asset";

const QByteArray signBody = '{' + upload(1) + R"(,"from":1,"to":1})";
const QByteArray fileBody = '{' + upload(1).split(',')[0] + R"(,"filename":"a.mov"})";
const QByteArray reportBody = R"({"bytesSent":5,"bytesTotal":23})";
const QByteArray one = R"({"partNumber":1,"etag":"1.1-a-1"})", two = R"({"partNumber":2,"etag":"1.2-a-2"})";
const QByteArray three = R"({"partNumber":3,"etag":"1.3-3-3"})";

// Of upload 1 every part is stored, of upload 2 none; the one part of upload 3 is too short, upload 4 has many; upload
// 5 was aborted and upload 6 is complete.
const Case calls[] = {
    {"wrong method", "POST /api/orgs", {}, {}, "404 not_found"},
    {"an empty identifier", "GET /api/orgs//projects", {}, {}, "404 not_found"},
    {"a raw space", "GET /api/orgs/org harbour/projects"},
    {"an escape in lower case", "GET /api/orgs/kestrel%2541%2f7%3Fb%23c/projects"},
    {"an escape of what needs none", "GET /api/orgs/org%2Dnorthlight/projects"},
    {"a session with its hyphen", "POST " + bin + "/uploads/a-b/abort", '{' + upload(9) + '}'},
    {"a query where none belongs", "GET /api/orgs?x=1"},
    {"a cursor that was not given out", "GET " + bin + "?limit=100&cursor=5"},
    {"an unknown header", "GET /api/orgs", {}, {accept, {"Expect", "100-continue"}}},
    {"a header twice", "GET /api/orgs", {}, {accept, accept}},
    {"any answer accepted", "GET /api/orgs", {}, {{"Accept", "*/*"}}},
    {"a type without a body", "GET /api/orgs", {}, {accept, {"Content-Type", "application/json"}}},
    {"a body of another type", start, startBody, {accept, {"Content-Type", "text/plain"}}},
    {"a body where none belongs", "POST /api/auth/logout", "{}", {accept}},
    {"a key missing", "POST /api/auth/forgot", "{}"},
    {"a key too many", start, with(startBody, "}", R"(,"duration":1})")},
    {"a key too many inside", complete, completion(1, {with(one, "}", R"(,"size":10})"), two, three})},
    {"a wrong type", progress, with(reportBody, "}", R"(,"bytesPerSecond":"1"})")},
    {"a fraction", progress, with(reportBody, "5", "5.5")},
    {"a confirmation that is false", start, with(startBody, "}", R"(,"confirmed":false})")},
    {"an empty file", start, with(startBody, "23", "0")},
    {"a path for a name", start, with(startBody, "a.mov", "x/a.mov")},
    {"the folder above for a name", "POST " + bin + "/uploads", with(startBody, "a.mov", "..")},
    {"no MIME type", start, with(startBody, "video/quicktime", "mov")},
    {"the address of part 0", parts, with(signBody, R"("from":1)", R"("from":0)")},
    {"the address of a part beyond the last", parts, with(signBody, R"("to":1)", R"("to":4)")},
    {"seventeen addresses at once", parts, '{' + upload(4) + R"(,"from":1,"to":17})"},
    {"another upload's object", parts, with(signBody, "01-1/", "01-2/")},
    {"another row's upload", "POST " + otherRow + "/transfer/abort", '{' + upload(1) + '}'},
    {"a part left out", complete, completion(1, {one, two})},
    {"a part too many", complete, completion(1, {one, two, three, three})},
    {"parts out of order", complete, completion(1, {two, one, three})},
    {"a wrong tag", complete, completion(1, {one, with(two, "1.2-a-2", "1.1-a-1"), three})},
    {"a tag in its quotes", complete, completion(1, {one, with(two, "1.2-a-2", R"(\"1.2-a-2\")"), three})},
    {"a part that is not stored", complete, completion(2, {one, two, three})},
    {"a part that is too short", complete, completion(3, {with(one, "1.1-a-1", "3.1-5-4")})},
    {"filed under another name", filing, with(fileBody, R"("filename":"a)", R"("filename":"b)")},
    {"more sent than there is", progress, with(reportBody, "5", "24")},
    {"the progress of no upload", progress, with(reportBody, "23", "22")},
    {"an unknown state", progress, with(reportBody, "}", R"(,"status":"paused"})")},
    {"no cookie", "GET /api/orgs", {}, {accept}, "401 unauthorized", false},
    {"an unknown cookie", "GET /api/me", {}, {accept, {"Cookie", "pv_session=x"}}, "401 unauthorized", false},
    {"a code that nobody asked for", "POST /api/auth/totp", R"({"code":"135790"})", {}, "409 no_code_asked", false},
    {"a path to the state", "GET " + bin + "/download?key=%2E%2E%2Fstate%2Ejson", {}, {}, "404 object_not_f", false},
    {"an upload that was aborted", complete, completion(5, {}), {}, "404 upload_not_found", false},
    {"a second completion", complete, completion(6, {one}), {}, "409 already_complete", false},
    {"an abort of what is complete", abortion, '{' + upload(6) + '}', {}, "409 already_complete", false},
    {"filed before it is complete", filing, fileBody, {}, "409 not_complete", false},
    {"filed on another row", "POST " + otherRow + "/asset", fileBody, {}, "409 wrong_deliverable", false},
    {"no such file", filing, with(fileBody, "01-1/", "01-9/"), {}, "404 object_not_found", false},
};

struct StrictnessTest : testing::Test {
    void expectAnswers(std::span<const Case> cases)
    {
        for (const auto& [about, line, body, headers, answer, counted] : cases) {
            const auto before = harness.platform.violations().size();
            const auto reply = harness.ask(line, body, headers);
            EXPECT_EQ(QByteArray::number(reply.status), QByteArray(answer).left(3)) << about;
            EXPECT_TRUE(reply.body.contains(answer + 4)) << about << ": " << reply.body.toStdString();
            EXPECT_EQ(harness.platform.violations().size() - before, counted ? 1 : 0) << about;
        }
    }

    PlatformHarness harness;
};

TEST_F(StrictnessTest, everyWrongCallIsRefused)
{
    for (const char* size : {"23", "23", "10", "200", "23", "23"})
        harness.start(size);
    const QByteArrayList sent{harness.send(1, 1), harness.send(1, 2), harness.send(1, 3)};
    harness.ask("PUT " + harness.partTarget(3, 1), "short");
    harness.ask(abortion, '{' + upload(5) + '}');
    EXPECT_EQ(harness.ask("PUT " + harness.partTarget(5, 1), "0123456789").status, 404);
    harness.ask(complete, completion(6, {harness.send(6, 1), harness.send(6, 2), harness.send(6, 3)}));
    expectAnswers(calls);
    EXPECT_EQ(harness.ask(complete, completion(1, sent)).status, 200);
}

TEST_F(StrictnessTest, storageTakesAddressesOnlyAsTheyWereSigned)
{
    harness.start();
    const auto put = "PUT " + harness.partTarget(1, 3);
    const auto get = "GET " + harness.sampleTarget();
    const auto* mismatch = "403 SignatureDoesNotMatch";
    const Case improper[] = {
        {"a type", put, "ABC", {{"Content-Type", "video/quicktime"}}},
        {"a cookie", put, "ABC", {{"Cookie", harness.cookie}}},
        {"a part too long", put, "ABCD"},
        {"an empty part", put},
        {"a respelled escape", with(put, "%2f", "%2F"), "ABC", {}, mismatch},
        {"an escape undone", with(put, "%7E", "~"), "ABC", {}, mismatch},
        {"a plus escaped", with(put, "a+b", "a%20b"), "ABC", {}, mismatch},
        {"another part", with(put, "/3/", "/2/"), "ABC", {}, mismatch},
        {"a later end", with(put, "expires=1", "expires=2"), "ABC", {}, mismatch},
        {"another method", with(put, "PUT", "GET"), {}, {}, mismatch},
        {"an unknown method", with(get, "GET", "DELETE"), {}, {}, "405 MethodNotAllowed"},
        {"a range beyond the end", get, {}, {{"Range", "bytes=0-165537"}}},
        {"a range without an end", get, {}, {{"Range", "bytes=5-"}}},
    };
    expectAnswers(improper);
    EXPECT_FALSE(harness.platform.violations().join(' ').contains("signature="));
    harness.now += 15min - 1s;
    EXPECT_EQ(harness.ask(put, "ABC").status, 200);
    EXPECT_EQ(harness.ask(get, {}, {{"Range", "bytes=9-2007"}}).body, harness.ask(get).body.mid(9, 1999));
    harness.now += 1s;
    expectAnswers(std::array<Case, 2>{
        {{"late", put, "ABC", {}, "403 expired", false}, {"late", get, {}, {}, "403 expired", false}}});
}

} // namespace
} // namespace palvera::local
