#include "PlatformHarness.h"

#include "localplatform/FaultFile.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <fstream>

namespace palvera::local {
namespace {

using Kind = Fault::Kind;

/// Which of ten requests a rule meets, as a row of x and dots.
std::string metBy(FaultRule rule)
{
    rule.fault.kind = Kind::status;
    FaultScript script;
    script.add(std::move(rule));
    std::string row;
    for (int i = 0; i < 10; ++i)
        row += script.meet(Operation::put, i + 1).kind == Kind::status ? 'x' : '.';
    return row;
}

TEST(FaultsTest, aRuleMeetsTheRequestsItNames)
{
    struct Case {
        FaultRule rule;
        const char* met;
    };
    const Case cases[] = {
        {{}, "x........."},
        {{.times = 0}, "xxxxxxxxxx"},
        {{.after = 3, .times = 2}, "...xx....."},
        {{.after = 1, .times = 0, .every = 3}, ".x..x..x.."},
        {{.part = 4, .times = 0}, "...x......"},
        {{.operation = Operation::get, .times = 0}, ".........."},
        {{.operation = Operation::put, .times = 0, .chance = 0}, ".........."},
    };
    for (const auto& [rule, met] : cases)
        EXPECT_EQ(metBy(rule), met);
    FaultRule byChance{.times = 0, .chance = 0.5, .seed = 3};
    EXPECT_EQ(metBy(byChance), metBy(byChance));
    EXPECT_THAT(metBy(byChance), testing::AllOf(testing::HasSubstr("x"), testing::HasSubstr(".")));
}

TEST(FaultsTest, theFirstRuleThatFiresDecidesAndLatenciesAddUp)
{
    FaultScript script;
    script.add({.times = 0, .fault = {.latency = std::chrono::milliseconds(5)}});
    script.add({.fault = {.kind = Kind::refuse, .latency = std::chrono::milliseconds(7)}});
    script.add({.fault = {.kind = Kind::html}});
    auto fault = script.meet(Operation::me, {});
    EXPECT_EQ(fault.kind, Kind::refuse);
    EXPECT_EQ(fault.latency.count(), 12);
    EXPECT_EQ(script.meet(Operation::me, {}).kind, Kind::none);
}

TEST(FaultsTest, answersAreSpoiledAsAsked)
{
    const Reply part{.status = 200, .headers = {{"ETag", "\"t\""}}};
    EXPECT_TRUE(spoil(part, {.kind = Kind::noTag}).headers.isEmpty());
    EXPECT_EQ(spoil(part, {.kind = Kind::lowerCaseTag}).headers[0].first, "etag");
    EXPECT_EQ(spoil(part, {.kind = Kind::capitalTag}).headers[0].first, "Etag");
    EXPECT_EQ(spoil(part, {.kind = Kind::bareTag}).headers[0].second, "t");
    EXPECT_EQ(spoil(part, {.kind = Kind::expired}).status, 403);
    const Reply json{.body = R"({"partCount":3,"partSize":10})"};
    EXPECT_EQ(spoil(json, {.kind = Kind::truncated}).body, R"({"partCount":3)");
    EXPECT_EQ(spoil(json, {.kind = Kind::overwrite, .members = {{QStringLiteral("partSize"), 0}}}).body,
              R"({"partCount":3,"partSize":0})");
    EXPECT_EQ(spoil(json, {.kind = Kind::html}).status, 200);
    EXPECT_EQ(spoil(json, {.kind = Kind::status, .answer = Fault::Answer::empty}).body, "");
    EXPECT_EQ(spoil(json, {.kind = Kind::status, .status = 429, .error = QStringLiteral("slow")}).status, 429);
}

TEST(FaultsTest, aRefusalDoesNotAct)
{
    PlatformHarness harness;
    harness.platform.faults().add({.operation = Operation::start, .fault = {.kind = Kind::status}});
    auto upload = rowUpload(harness, QStringLiteral("a.mov"), QByteArray(23, 'x'));
    EXPECT_EQ(upload.start().status, 503);
    EXPECT_TRUE(harness.platform.state()[QStringLiteral("uploads")].toArray().isEmpty());
    EXPECT_EQ(upload.start().status, 200);
    harness.platform.faults().replace({{.operation = Operation::put, .fault = {.kind = Kind::expired}}});
    EXPECT_EQ(upload.send(1).status, 403);
    EXPECT_EQ(upload.send(1).status, 200);
}

TEST(FaultsTest, aPartCanBeLeftUnsigned)
{
    PlatformHarness harness;
    auto upload = rowUpload(harness, QStringLiteral("a.mov"), QByteArray(23, 'x'));
    upload.start();
    harness.platform.faults().add({.operation = Operation::parts, .fault = {.kind = Kind::unsignedPart, .part = 2}});
    auto urls = upload.sign(1, 3).json[QStringLiteral("urls")].toArray();
    ASSERT_EQ(urls.size(), 2);
    EXPECT_EQ(urls[1][QStringLiteral("partNumber")].toInt(), 3);
}

TEST(FaultsTest, downloadsCanBeShortOrSayAnotherRange)
{
    PlatformHarness harness;
    auto url = harness.get("orgs/org-northlight/bin/download?key=Reel%20002%20of%20230%2Emov").text("url");
    harness.platform.faults().add({.operation = Operation::get, .fault = {.kind = Kind::shortBody, .bytes = 3}});
    harness.platform.faults().add({.operation = Operation::get, .fault = {.kind = Kind::wrongRange}});
    EXPECT_EQ(harness.download(url, "bytes=0-9").length, 7);
    harness.platform.faults().replace({{.fault = {.kind = Kind::wrongRange}}});
    EXPECT_EQ(headerOf(harness.download(url, "bytes=0-9").reply.headers, "Content-Range"), "bytes 1-10/165537");
}

TEST(FaultsTest, downloadsCanIgnoreTheRangeOrBeOfAnotherObject)
{
    PlatformHarness harness;
    auto url = harness.get("orgs/org-northlight/bin/download?key=Reel%20002%20of%20230%2Emov").text("url");
    auto tagNow = [&] { return headerOf(harness.download(url, "bytes=0-9").reply.headers, "ETag"); };
    auto tag = tagNow();
    EXPECT_EQ(tag.size(), 34);
    EXPECT_EQ(tagNow(), tag);
    harness.platform.faults().add({.operation = Operation::get, .fault = {.kind = Kind::otherTag}});
    EXPECT_NE(tagNow(), tag);
    harness.platform.faults().add({.operation = Operation::get, .fault = {.kind = Kind::ignoreRange}});
    auto whole = harness.download(url, "bytes=0-9");
    EXPECT_EQ(whole.reply.status, 200);
    EXPECT_EQ(whole.length, 165537);
    EXPECT_EQ(headerOf(whole.reply.headers, "Content-Range"), QByteArray());
}

TEST(FaultsTest, aFileDescribesRules)
{
    auto rules = readFaultRules(R"({"rules":[{"operation":"bin-start","after":1,"times":2,"action":"status",
        "status":429,"answer":"empty","latencyMs":40},{"action":"overwrite","members":{"partCount":0}}]})");
    ASSERT_EQ(rules.size(), 2U);
    EXPECT_EQ(rules[0].operation, Operation::binStart);
    EXPECT_EQ(rules[0].times, 2);
    EXPECT_EQ(rules[0].fault.kind, Kind::status);
    EXPECT_EQ(rules[0].fault.status, 429);
    EXPECT_EQ(rules[0].fault.answer, Fault::Answer::empty);
    EXPECT_EQ(rules[0].fault.latency.count(), 40);
    EXPECT_EQ(rules[1].operation, std::nullopt);
    EXPECT_TRUE(rules[1].fault.members.contains(QStringLiteral("partCount")));
    for (const char* wrong :
         {"[]", "{", R"({"rules":1})", R"({"rules":[{"acton":"html"}]})", R"({"rules":[{"action":"explode"}]})",
          R"({"rules":[{"operation":"fly"}]})", R"({"rules":[{"after":-1}]})"})
        EXPECT_THROW(readFaultRules(wrong), std::runtime_error) << wrong;
}

TEST(FaultsTest, aChangedFileIsReadAgainAndABrokenOneLeavesTheRules)
{
    QTemporaryDir folder;
    std::filesystem::path path = folder.filePath(QStringLiteral("faults.json")).toStdString();
    auto write = [&, age = std::chrono::hours(9)](const char* text) mutable {
        std::ofstream(path) << text;
        std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() - --age);
    };
    FaultScript script;
    write(R"({"rules":[]})");
    FaultFile file(path, script);
    write(R"({"rules":[{"action":"html","times":0}]})");
    EXPECT_EQ(script.meet(Operation::me, {}).kind, Kind::none);
    file.refresh();
    EXPECT_EQ(script.meet(Operation::me, {}).kind, Kind::html);
    write("{");
    testing::internal::CaptureStderr();
    file.refresh();
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::HasSubstr("faults.json"));
    EXPECT_EQ(script.meet(Operation::me, {}).kind, Kind::html);
}

} // namespace
} // namespace palvera::local
