#include "http/Redirects.h"
#include "http/TransportError.h"

#include "support/FakeHttpClient.h"
#include "support/Simulation.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

using namespace std::chrono_literals;

TEST(RedirectsTest, anAnswerLeadsOnWhereItsStatusAndItsAddressSaySo)
{
    struct {
        int status;
        const char* location;
        std::optional<QByteArray> next;
    } const rows[]{{302, "https://b.test/x?y=%2F", "https://b.test/x?y=%2F"},
                   {301, "/other", "https://a.test/other"},
                   {303, "next#part", "https://a.test/folder/next"},
                   {307, "//b.test/x", "https://b.test/x"},
                   {308, "http://b.test/", "http://b.test/"},
                   {302, "file:///etc/passwd", {}},
                   {302, "https://", {}},
                   {302, "", {}},
                   {300, "/other", {}},
                   {304, "/other", {}},
                   {200, "/other", {}}};
    for (const auto& [status, location, next] : rows)
        EXPECT_EQ(redirectOf({.status = status, .headers = {{"Location", location}}}, "https://a.test/folder/file"),
                  next)
            << status << " " << location;
}

struct FollowingTest : testing::Test {
    Simulation world;
    FakeHttpClient client{world.clock};

    HttpResponse get(const QByteArray& url)
    {
        return world.run(sendFollowing(client, world.clock, {.url = url, .totalTimeout = 15s},
                                       [](const QByteArray& each) { return each.startsWith("https:"); }));
    }
};

TEST_F(FollowingTest, goesOnFiveTimesWithinTheTimeThatThereIsForAllOfItToAllowedAddressesAlone)
{
    client.latency = 2s;
    client.handler = [](const HttpRequest& request) -> HttpResponse { // each leads to the one below, 0 to none
        const int left = request.url.mid(request.url.lastIndexOf('/') + 1).toInt();
        if (left == 0)
            return {.status = 200, .body = "here"};
        return {.status = 302, .headers = {{"Location", QByteArray::number(left - 1)}}};
    };
    EXPECT_EQ(get("https://a.test/5").body, "here");
    EXPECT_EQ(client.requests().back().totalTimeout, 5s);
    EXPECT_THROW(get("https://a.test/6"), TransportError);
    EXPECT_EQ(client.requests().size(), 12u);
    EXPECT_THROW(get("http://a.test/"), TransportError);
    client.handler = [](const HttpRequest&) -> HttpResponse {
        return {.status = 302, .headers = {{"Location", "http://a.test/"}}};
    };
    EXPECT_THROW(get("https://a.test/"), TransportError);
    EXPECT_EQ(client.requests().size(), 13u);
}

} // namespace
} // namespace palvera
