#include "http/HttpAddress.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

TEST(HttpAddressTest, onlyWhatCanBeAskedForIsAnAddress)
{
    for (const char* usable : {"https://storage.example/a%2fb?sig=x+y~z", "http://127.0.0.1:8080/p"})
        EXPECT_TRUE(parseHttpAddress(usable)) << usable;
    for (const char* unusable : {"", "storage", "/only/a/path", "ftp://host/x", "file:///etc/passwd", "https://",
                                 "https://host/a b", "https://host/a\r\nX-Evil: 1", "javascript:alert(1)"})
        EXPECT_FALSE(parseHttpAddress(unusable)) << unusable;
    EXPECT_FALSE(parseHttpAddress(QByteArray("https://host/a\0b", 16))) << "the rest would be cut off";
}

TEST(HttpAddressTest, onlyThisMachineIsLoopback)
{
    for (const char* here : {"http://localhost/", "http://LOCALHOST:80/", "http://api.localhost/", "http://127.0.0.1/",
                             "http://127.1.2.3:8080/x", "http://[::1]/"})
        EXPECT_TRUE(parseHttpAddress(here)->loopback) << here;
    for (const char* elsewhere :
         {"http://127.evil.example/", "http://127.0.0.1.evil.example/", "http://localhost.example/",
          "http://notlocalhost/", "http://128.0.0.1/", "http://[::2]/", "http://10.127.0.1/"})
        EXPECT_FALSE(parseHttpAddress(elsewhere)->loopback) << elsewhere;
}

} // namespace
} // namespace palvera
