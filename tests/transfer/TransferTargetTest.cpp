#include "transfer/TransferTarget.h"
#include "service/JsonReader.h"
#include "support/Json.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>

#include <set>

namespace palvera {
namespace {

using Deliverable = TransferTarget::Deliverable;
using Bin = TransferTarget::Bin;

const TransferTarget deliverable = Deliverable{.orgId = "o", .projectId = "p", .deliverableId = "d"};

TEST(TransferTargetTest, standsForItselfAsJson)
{
    const struct {
        TransferTarget target;
        const char* text;
    } cases[] = {
        {deliverable, R"({"deliverable":{"orgId":"o","projectId":"p","deliverableId":"d"}})"},
        {Bin{.orgId = "o", .folder = {}}, R"({"bin":{"orgId":"o"}})"},
        {Bin{.orgId = "o", .folder = ""}, R"({"bin":{"orgId":"o","folder":""}})"},
        {Bin{.orgId = "o", .folder = "a/b"}, R"({"bin":{"orgId":"o","folder":"a/b"}})"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(each.target.toJson(), jsonObject(each.text));
        EXPECT_EQ(decoded<TransferTarget>(each.text), each.target) << each.text;
    }
    EXPECT_EQ(decoded<TransferTarget>(R"({"bin":{"orgId":"o","folder":null}})"), TransferTarget(Bin{.orgId = "o"}));
}

TEST(TransferTargetTest, isExactlyOneCase)
{
    for (const char* text : {R"({})", R"({"other":{}})", R"({"bin":{"orgId":"o"},"deliverable":{}})"})
        try {
            decoded<TransferTarget>(text);
            ADD_FAILURE() << text;
        } catch (const DecodingError& error) {
            EXPECT_EQ(error.text(), "Invalid number of keys found, expected one.");
        }
    for (const char* text : {R"({"bin":{}})", R"({"bin":"o"})", R"({"bin":{"orgId":"o","folder":1}})",
                             R"({"deliverable":{"orgId":"o","projectId":"p"}})"})
        EXPECT_THROW(decoded<TransferTarget>(text), DecodingError) << text;
}

TEST(TransferTargetTest, differsInEveryField)
{
    const std::vector<TransferTarget> all{deliverable,
                                          Deliverable{.orgId = "O", .projectId = "p", .deliverableId = "d"},
                                          Deliverable{.orgId = "o", .projectId = "P", .deliverableId = "d"},
                                          Deliverable{.orgId = "o", .projectId = "p", .deliverableId = "D"},
                                          Bin{.orgId = "o"},
                                          Bin{.orgId = "o", .folder = ""},
                                          Bin{.orgId = "o", .folder = "f"},
                                          Bin{.orgId = "O", .folder = "f"}};
    std::set<std::size_t> hashes;
    for (std::size_t left = 0; left < all.size(); ++left) {
        hashes.insert(qHash(all[left], 1));
        for (std::size_t right = 0; right < all.size(); ++right)
            EXPECT_EQ(all[left] == all[right], left == right) << left << ' ' << right;
        EXPECT_EQ(qHash(all[left], 1), qHash(decoded<TransferTarget>(QJsonDocument(all[left].toJson()).toJson()), 1));
    }
    EXPECT_EQ(hashes.size(), all.size());
}

TEST(TransferTargetTest, anUploadStandsUnderItsPath)
{
    const struct {
        TransferTarget target;
        std::optional<QString> session;
        const char* path;
    } cases[] = {
        {deliverable, {}, "orgs/o/projects/p/deliverables/d/transfer"},
        {deliverable, "s", "orgs/o/projects/p/deliverables/d/transfer"},
        {Deliverable{.orgId = "a/b", .projectId = "..", .deliverableId = "50%?"},
         {},
         "orgs/a%2Fb/projects/%2E%2E/deliverables/50%25%3F/transfer"},
        {Bin{.orgId = "O"}, "a b/c", "orgs/O/bin/uploads/a%20b%2Fc"},
        {Bin{.orgId = "O", .folder = "f"}, "x-1", "orgs/O/bin/uploads/x%2D1"},
        {Bin{.orgId = "O"}, {}, "orgs/O/bin/uploads/"},
    };
    for (const auto& each : cases)
        EXPECT_EQ(each.target.basePath(each.session), each.path);
}

TEST(TransferTargetTest, namesItsOrganisationAndProject)
{
    EXPECT_EQ(deliverable.orgId(), "o");
    EXPECT_EQ(deliverable.projectId(), "p");
    EXPECT_EQ(TransferTarget(Bin{.orgId = "b"}).orgId(), "b");
    EXPECT_EQ(TransferTarget(Bin{.orgId = "b"}).projectId(), "");
}

} // namespace
} // namespace palvera
