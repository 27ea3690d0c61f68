#include "service/Addresses.h"
#include "files/Preferences.h"
#include "service/Site.h"
#include "support/QtPrinting.h"

namespace palvera {
namespace {

TEST(AddressesTest, takesAWebAddressApart)
{
    const std::pair<const char*, Address> cases[] = {
        {"https://host/api", {"https://host", "/api", ""}},
        {"http://127.0.0.1:8080", {"http://127.0.0.1:8080", "", ""}},
        {"http://[::1]:80/a/b?c=d#e", {"http://[::1]:80", "/a/b", "c=d"}},
        {"https://host?c=/d", {"https://host", "", "c=/d"}},
        {"https://bücher.example/ü", {"https://xn--bcher-kva.example", "/%C3%BC", ""}},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(parseAddress(text), expected) << text;
    for (const char* text : {"", "not an address", "host/api", "/api", "ftp://host/api", "file:///api", "https://",
                             "https:///api", "https://ho st/api", "https://host:port/", "mailto:a@b.c", "http:host"})
        EXPECT_EQ(parseAddress(text), std::nullopt) << text;
}

TEST(AddressesTest, joinsAPathOntoTheBase)
{
    const std::pair<const char*, const char*> cases[] = {
        {"/orgs/abc/projects", "https://host/api/orgs/abc/projects"},
        {"a b/c", "https://host/api/a%20b/c"},
        {"a%20b%2Fc", "https://host/api/a%20b%2Fc"},
        {"%zz%4%g1%1g%", "https://host/api/%25zz%254%25g1%251g%25"},
        {"a#b\"<>[]\\^`{|}ü", "https://host/api/a%23b%22%3C%3E%5B%5D%5C%5E%60%7B%7C%7D%C3%BC"},
        {"-._~!$&'()*+,;=:@", "https://host/api/-._~!$&'()*+,;=:@"},
        {"a?", "https://host/api/a"},
        {"a?b=%2F&c?d", "https://host/api/a?b=%2F&c?d"},
    };
    for (const auto& [path, expected] : cases)
        EXPECT_EQ(joinAddress({"https://host", "/api", ""}, path), expected) << path;
    EXPECT_EQ(joinAddress({"https://host", "", ""}, "me"), "https://host/me");
    EXPECT_EQ(joinAddress({"https://host", "/api", "key=1"}, "me?a=b"), "https://host/api/me?a=b");
}

TEST(AddressesTest, whatIsPutIntoAnAddressStaysInItsPlace)
{
    const std::tuple<const char*, QByteArray, QByteArray, QString> cases[] = {
        {"azAZ09-_.~", "azAZ09-_.~", "azAZ09%2D%5F%2E%7E", "azAZ09%2D%5F%2E%7E"},
        {"a b&c=+", "a%20b&c=+", "a%20b%26c%3D%2B", "a%20b%26c%3D%2B"},
        {"a/b?c#d", "a%2Fb%3Fc%23d", "a%2Fb%3Fc%23d", "a%2Fb%3Fc%23d"},
        {"a%2Fb", "a%252Fb", "a%252Fb", "a%252Fb"},
        {".", "%2E", "%2E", "%2E"},
        {"..", "%2E%2E", "%2E%2E", "%2E%2E"},
        {"../me", "..%2Fme", "%2E%2E%2Fme", "%2E%2E%2Fme"},
        {"€😀", "%E2%82%AC%F0%9F%98%80", "%E2%82%AC%F0%9F%98%80", "%E2%82%AC%F0%9F%98%80"},
        // A session keeps letters, marks and digits of any script.
        {"ü५e\u0301", "%C3%BC%E0%A5%ABe%CC%81", "%C3%BC%E0%A5%ABe%CC%81", "ü५e\u0301"},
    };
    for (const auto& [text, identifier, value, session] : cases) {
        EXPECT_EQ(joinAddress({"", "", ""}, pathSegment(text) + "/x"), '/' + identifier + "/x") << text;
        EXPECT_EQ(queryValue(text).toUtf8(), value) << text;
        EXPECT_EQ(alphanumericSegment(text), session) << text;
    }
    EXPECT_EQ(joinAddress({"", "", ""}, "s/" + alphanumericSegment("ü/")), "/s/%C3%BC%2F");
}

TEST(SiteTest, isStagingUnlessLiveWasChosenAndIsKept)
{
    QTemporaryDir root;
    Preferences preferences(root.filePath("palvera.conf"));
    EXPECT_EQ(currentSite(preferences), Site::qa);
    for (const char* other : {"qa", "Live", "", "live "}) {
        preferences.setString("pv.site", other);
        EXPECT_EQ(currentSite(preferences), Site::qa) << other;
    }
    for (const auto& [site, stored] : {std::pair(Site::live, "live"), std::pair(Site::qa, "qa")}) {
        storeSite(preferences, site);
        EXPECT_EQ(preferences.string("pv.site"), stored);
        EXPECT_EQ(currentSite(preferences), site);
    }
}

} // namespace
} // namespace palvera
