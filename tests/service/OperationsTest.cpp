#include "ServiceTest.h"

#include "http/TransportError.h"
#include "service/BrowsingOperations.h"
#include "service/SignInOperations.h"

namespace palvera {
namespace {

using OperationsTest = ServiceTest;

TEST_F(OperationsTest, eachIsOneRequest)
{
    const QByteArray url = R"({"url":"u"})", bin = R"({"objects":[]})";
    const QByteArray assets = R"({"files":[],"rows":[],"total":0,"page":1,"pageSize":60})";
    const AssetQuery noAssets{.search = "", .family = ""};
    const AssetQuery someAssets{.search = "a b&c", .family = "audio_stems", .page = 3, .pageSize = 20};
    const BinQuery noBin{.prefix = "", .search = "", .cursor = ""};
    const BinQuery someBin{.prefix = "a b/c/", .search = "x", .cursor = "=", .limit = 7};
    const auto run = [this](auto operation) { simulation.run(std::move(operation)); };
    const std::tuple<QByteArray, std::function<void()>, const char*> cases[] = {
        {R"({"projects":[]})", [&] { run(listProjects(*api, "o 1")); }, "GET orgs/o%201/projects"},
        {R"({"deliverables":[]})", [&] { run(listDeliverables(*api, "..", "a/b?c")); },
         "GET orgs/%2E%2E/projects/a%2Fb%3Fc/deliverables"},
        {url, [&] { run(assetURL(*api, "o", "p/1", "d/1", "a/b.mov")); },
         "GET orgs/o/projects/p%2F1/deliverables/d%2F1/asset-url?object=a%2Fb%2Emov"},
        {assets, [&] { run(listAssetFiles(*api, "a?b", noAssets)); },
         "GET orgs/a%3Fb/assets/files?page=1&pageSize=60&sort=newest"},
        {assets, [&] { run(listAssetFiles(*api, "o", someAssets)); },
         "GET orgs/o/assets/files?page=3&pageSize=20&sort=newest&q=a%20b%26c&family=audio%5Fstems"},
        {bin, [&] { run(listBin(*api, "a/b", noBin)); }, "GET orgs/a%2Fb/bin?limit=100"},
        {bin, [&] { run(listBin(*api, "o", someBin)); }, "GET orgs/o/bin?limit=7&prefix=a%20b%2Fc%2F&q=x&cursor=%3D"},
        {url, [&] { run(binDownloadURL(*api, "o/1", "a/b-c.mov")); },
         "GET orgs/o%2F1/bin/download?key=a%2Fb%2Dc%2Emov"},
    };
    for (const auto& [answer, call, request] : cases) {
        client.answer(200, answer);
        call();
        EXPECT_EQ(lastRequest(), request);
    }
}

TEST_F(OperationsTest, anAddressOfADownloadThatOthersCanReadIsNotGivenOut)
{
    const QByteArray exposed = R"({"url":"http://storage.example/x"})";
    client.answer(200, exposed);
    EXPECT_THROW(simulation.run(assetURL(*api, "o", "p", "d", "x")), TransportError);
    client.answer(200, exposed);
    EXPECT_THROW(simulation.run(binDownloadURL(*api, "o", "x")), TransportError);
}

TEST_F(OperationsTest, aBrowserStartsAtTheService)
{
    const QByteArray start = "https://service.test/api/auth/workos/start?native=1&return=%2F";
    EXPECT_EQ(webStartURL(*api, {}, {}), start);
    EXPECT_EQ(webStartURL(*api, "google", "a+b@c.d"), start + "&provider=google&email=a%2Bb%40c%2Ed");
}

} // namespace
} // namespace palvera
