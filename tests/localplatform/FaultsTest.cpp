#include "PlatformHarness.h"

#include "localplatform/FaultFile.h"

namespace palvera::local {
namespace {

std::vector<FaultRule> rule(const QByteArray& members)
{
    return readFaultRules("{\"rules\":[{" + members + "}]}");
}

TEST(FaultsTest, aRuleMeetsTheRequestsItNames)
{
    const std::pair<const char*, const char*> cases[] = {
        {R"("times":0)", "xxxxxxxxxx"},
        {R"("after":3,"times":2)", "...xx....."},
        {R"("after":1,"times":0,"every":3)", ".x..x..x.."},
        {R"("part":4,"times":0)", "...x......"},
        {R"("operation":"get","times":0)", ".........."},
        {R"("times":0,"chance":0)", ".........."},
    };
    for (const auto& [members, met] : cases) {
        FaultScript script;
        script.replace(rule(R"("action":"status",)" + QByteArray(members)));
        std::string row;
        for (int part = 1; part <= 10; ++part)
            row += script.meet(Operation::put, part).kind == Fault::Kind::status ? 'x' : '.';
        EXPECT_EQ(row, met) << members;
    }
}

TEST(FaultsTest, whatIsNoRuleIsRefused)
{
    for (const char* wrong : {"{", R"({"rules":1})", R"({"rules":[{"acton":"html"}]})", R"({"rules":[{"after":-1}]})",
                              R"({"rules":[{"action":"fly"}]})", R"({"rules":[{"operation":"fly"}]})"})
        EXPECT_THROW(readFaultRules(wrong), std::runtime_error) << wrong;
}

TEST(FaultsTest, anAnswerIsSpoiledAsAsked)
{
    PlatformHarness harness({.partSize = 10, .tags = Tags::md5});
    harness.start();
    const auto put = "PUT " + harness.partTarget(1, 3);
    const auto get = "GET " + harness.sampleTarget();
    const std::tuple<QByteArray, QByteArray, const char*> cases[] = {
        {put, R"("action":"none")", R"(200 ETag: "902fbdd2b1df0c4f70b4a5d23525e932")"},
        {put, R"("action":"lower-case-tag")", R"(200 etag: "902fbdd2b1df0c4f70b4a5d23525e932")"},
        {put, R"("action":"capital-tag")", R"(200 Etag: "902fbdd2b1df0c4f70b4a5d23525e932")"},
        {put, R"("action":"bare-tag")", "200 ETag: 902fbdd2b1df0c4f70b4a5d23525e932"},
        {put, R"("action":"expired")", "403"},
        {get, R"("action":"short-body","bytes":3)", "206 Content-Range: bytes 0-9/165537, 7 bytes"},
        {get, R"("action":"wrong-range")", "206 Content-Range: bytes 1-10/165537, 10 bytes"},
        {get, R"("action":"ignore-range")", "200, 165537 bytes"},
        {get, R"("action":"other-tag")", R"(206 ETag: "another" Content-Range: bytes 0-9/165537, 10 bytes)"},
    };
    for (const auto& [line, members, expected] : cases) {
        harness.platform.faults().replace(rule(members));
        const auto reply = line == put ? harness.ask(put, "ABC") : harness.ask(get, {}, {{"Range", "bytes=0-9"}});
        auto text = QByteArray::number(reply.status);
        for (const auto& [name, value] : reply.headers)
            if (name == "Content-Range" || value == "\"another\"" || (line == put && name.toLower() == "etag"))
                text += ' ' + name + ": " + value;
        if (line == get)
            text += ", " + QByteArray::number(reply.body.size()) + " bytes";
        EXPECT_EQ(text, expected) << members.toStdString();
    }
}

} // namespace
} // namespace palvera::local
