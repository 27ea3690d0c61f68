#include "service/Addresses.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

TEST(AddressesTest, takesAWebAddressApart)
{
    const struct {
        const char* text;
        Address expected;
    } cases[] = {
        {"https://host/api", {"https://host", "/api", ""}},
        {"http://127.0.0.1:8080", {"http://127.0.0.1:8080", "", ""}},
        {"http://[::1]:80/a/b?c=d#e", {"http://[::1]:80", "/a/b", "c=d"}},
        {"https://host?c=/d", {"https://host", "", "c=/d"}},
        {"https://bücher.example/ü", {"https://xn--bcher-kva.example", "/%C3%BC", ""}},
    };
    for (const auto& each : cases)
        EXPECT_EQ(parseAddress(each.text), each.expected) << each.text;
}

TEST(AddressesTest, nothingElseIsAWebAddress)
{
    for (const char* text : {"", " ", "not an address", "host/api", "/api", "ftp://host/api", "file:///api", "https://",
                             "https:///api", "https://ho st/api", "https://host:port/", "mailto:a@b.c", "http:host"})
        EXPECT_EQ(parseAddress(text), std::nullopt) << text;
}

TEST(AddressesTest, joinsAPathOntoTheBase)
{
    const Address base{"https://host", "/api", ""};
    const struct {
        const char* path;
        const char* expected;
    } cases[] = {
        {"orgs/abc/projects", "https://host/api/orgs/abc/projects"},
        {"/orgs", "https://host/api/orgs"},
        {"a b/c", "https://host/api/a%20b/c"},
        {"a%20b%2Fc", "https://host/api/a%20b%2Fc"},
        {"100%", "https://host/api/100%25"},
        {"%zz%4%g1%1g", "https://host/api/%25zz%254%25g1%251g"},
        {"a#b\"<>[]\\^`{|}", "https://host/api/a%23b%22%3C%3E%5B%5D%5C%5E%60%7B%7C%7D"},
        {"-._~!$&'()*+,;=:@", "https://host/api/-._~!$&'()*+,;=:@"},
        {"ü", "https://host/api/%C3%BC"},
        {"a?", "https://host/api/a"},
        {"a?b=%2F&c=d", "https://host/api/a?b=%2F&c=d"},
        {"a?b?c", "https://host/api/a?b?c"},
    };
    for (const auto& each : cases)
        EXPECT_EQ(joinAddress(base, each.path), each.expected) << each.path;
}

TEST(AddressesTest, joinsOntoAnyBase)
{
    EXPECT_EQ(joinAddress({"https://host", "", ""}, "me"), "https://host/me");
    EXPECT_EQ(joinAddress({"https://host", "/api/", ""}, "me"), "https://host/api/me");
    EXPECT_EQ(joinAddress({"https://host", "/api", "key=1"}, "me"), "https://host/api/me?key=1");
    EXPECT_EQ(joinAddress({"https://host", "/api", "key=1"}, "me?a=b"), "https://host/api/me?a=b");
}

TEST(AddressesTest, anIdentifierStaysOneSegment)
{
    const struct {
        const char* identifier;
        const char* onTheWire;
    } cases[] = {
        {"abc-1_2", "abc-1_2"}, {"a/b", "a%2Fb"}, {"a?b", "a%3Fb"},     {"a#b", "a%23b"},
        {"a%2Fb", "a%252Fb"},   {".", "%2E"},     {"..", "%2E%2E"},     {"...", "..."},
        {"a b", "a%20b"},       {"ü", "%C3%BC"},  {"../me", "..%2Fme"}, {"%2E%2E", "%252E%252E"},
    };
    for (const auto& each : cases)
        EXPECT_EQ(joinAddress({"", "", ""}, pathSegment(each.identifier) + "/x"),
                  '/' + QByteArray(each.onTheWire) + "/x")
            << each.identifier;
}

TEST(AddressesTest, aSegmentIsSafeBeforeItIsJoined)
{
    EXPECT_EQ(pathSegment("a#b?c/d%e"), "a%23b%3Fc%2Fd%25e");
}

TEST(AddressesTest, aQueryValueKeepsOnlyAsciiLettersAndDigits)
{
    EXPECT_EQ(queryValue("azAZ09"), "azAZ09");
    EXPECT_EQ(queryValue("a/b c-._~&=+"), "a%2Fb%20c%2D%2E%5F%7E%26%3D%2B");
    EXPECT_EQ(queryValue("ü€😀"), "%C3%BC%E2%82%AC%F0%9F%98%80");
}

TEST(AddressesTest, aSessionKeepsLettersMarksAndDigitsOfAnyScript)
{
    EXPECT_EQ(alphanumericSegment("a b/c"), "a%20b%2Fc");
    EXPECT_EQ(alphanumericSegment("x-1_2.~"), "x%2D1%5F2%2E%7E");
    EXPECT_EQ(alphanumericSegment("%20"), "%2520");
    EXPECT_EQ(alphanumericSegment("üは५e\u0301"), "üは५e\u0301");
    EXPECT_EQ(alphanumericSegment("€😀"), "%E2%82%AC%F0%9F%98%80");
    EXPECT_EQ(joinAddress({"", "", ""}, "s/" + alphanumericSegment("ü/")), "/s/%C3%BC%2F");
}

} // namespace
} // namespace palvera
