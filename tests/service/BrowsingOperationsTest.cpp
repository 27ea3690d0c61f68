#include "ServiceTest.h"

#include "service/BrowsingOperations.h"

namespace palvera {
namespace {

struct BrowsingOperationsTest : ServiceTest {
    /// What `operation` asks for when it gets `answer`, past the service address.
    template <class T>
    QByteArray asked(Task<T> operation, QByteArray answer)
    {
        client.answer(200, std::move(answer));
        simulation.run(std::move(operation));
        return lastRequest().replace("https://service.test/api/", "");
    }

    const QByteArray assets = R"({"files":[],"rows":[],"total":0,"page":1,"pageSize":60})";
    const QByteArray bin = R"({"objects":[]})";
};

TEST_F(BrowsingOperationsTest, listsAreUnwrapped)
{
    client.answer(200, R"({"orgs":[{"id":"o","name":"N"}]})");
    EXPECT_EQ(simulation.run(listOrgs(api)), QList<Org>({{.id = "o", .name = "N"}}));
    client.answer(200, R"({"projects":[{"id":"p","name":"N"}]})");
    EXPECT_EQ(simulation.run(listProjects(api, "o")), QList<Project>({{.id = "p", .name = "N"}}));
    client.answer(200, R"({"deliverables":[{"id":"d"}]})");
    EXPECT_EQ(simulation.run(listDeliverables(api, "o", "p")), QList<Deliverable>({{.id = "d"}}));
    client.answer(200, R"({"url":"https://s/x?a=%2E"})");
    EXPECT_EQ(simulation.run(assetURL(api, "o", "p", "d", "x")), "https://s/x?a=%2E");
}

TEST_F(BrowsingOperationsTest, identifiersStayOneSegment)
{
    EXPECT_EQ(asked(listOrgs(api), R"({"orgs":[]})"), "GET orgs");
    EXPECT_EQ(asked(listProjects(api, "o 1"), R"({"projects":[]})"), "GET orgs/o%201/projects");
    EXPECT_EQ(asked(listDeliverables(api, "..", "a/b?c#d%2F"), R"({"deliverables":[]})"),
              "GET orgs/%2E%2E/projects/a%2Fb%3Fc%23d%252F/deliverables");
    EXPECT_EQ(asked(assetURL(api, "o", "p", "d/1", "a/b.mov"), R"({"url":"u"})"),
              "GET orgs/o/projects/p/deliverables/d%2F1/asset-url?object=a%2Fb%2Emov");
    EXPECT_EQ(asked(listBin(api, "a/b", {}), bin), "GET orgs/a%2Fb/bin?limit=100");
    EXPECT_EQ(asked(listAssetFiles(api, "a?b", {}), assets),
              "GET orgs/a%3Fb/assets/files?page=1&pageSize=60&sort=newest");
}

TEST_F(BrowsingOperationsTest, deliveredFilesAreAskedForNewestFirst)
{
    EXPECT_EQ(asked(listAssetFiles(api, "o", {.search = ""}), assets),
              "GET orgs/o/assets/files?page=1&pageSize=60&sort=newest");
    EXPECT_EQ(asked(listAssetFiles(api, "o", {.search = "a b&c", .family = "audio_stems", .page = 3, .pageSize = 20}),
                    assets),
              "GET orgs/o/assets/files?page=3&pageSize=20&sort=newest&q=a%20b%26c&family=audio%5Fstems");
}

TEST_F(BrowsingOperationsTest, theBinIsAskedForPageByPage)
{
    EXPECT_EQ(asked(listBin(api, "o", {.prefix = "", .search = "", .cursor = ""}), bin), "GET orgs/o/bin?limit=100");
    EXPECT_EQ(asked(listBin(api, "o", {.prefix = "a b/c/", .search = "x", .cursor = "=", .limit = 7}), bin),
              "GET orgs/o/bin?limit=7&prefix=a%20b%2Fc%2F&q=x&cursor=%3D");
    EXPECT_EQ(asked(binDownloadURL(api, "o", "a/b-c.mov"), R"({"url":"u"})"),
              "GET orgs/o/bin/download?key=a%2Fb%2Dc%2Emov");
}

} // namespace
} // namespace palvera
