#include "service/Site.h"
#include "files/Preferences.h"
#include "service/Addresses.h"
#include "support/QtPrinting.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace palvera {
namespace {

struct SiteTest : testing::Test {
    QTemporaryDir root;
    Preferences preferences{root.filePath("palvera.conf")};
};

TEST_F(SiteTest, isStagingUnlessLiveWasChosen)
{
    EXPECT_EQ(currentSite(preferences), Site::qa);
    const struct {
        const char* stored;
        Site expected;
    } cases[] = {{"live", Site::live}, {"qa", Site::qa}, {"Live", Site::qa}, {"", Site::qa}, {"live ", Site::qa}};
    for (const auto& each : cases) {
        preferences.setString("pv.site", each.stored);
        EXPECT_EQ(currentSite(preferences), each.expected) << each.stored;
    }
}

TEST_F(SiteTest, isKept)
{
    for (const Site site : allSites) {
        storeSite(preferences, site);
        EXPECT_EQ(currentSite(preferences), site);
        EXPECT_EQ(preferences.string("pv.site"), rawValue(site));
    }
}

TEST_F(SiteTest, servicesAreEncryptedAndApart)
{
    for (const Site site : allSites) {
        const auto address = parseAddress(baseURL(site));
        ASSERT_TRUE(address);
        EXPECT_TRUE(address->origin.startsWith("https://"));
        EXPECT_EQ(address->path, "/api");
        EXPECT_EQ(*address, baseAddress(site));
    }
    EXPECT_NE(baseURL(Site::live), baseURL(Site::qa));
}

TEST_F(SiteTest, isNamedForPeople)
{
    EXPECT_EQ(signInLabel(Site::live), (SignInLabel{"Live", "Sign in to Live", false}));
    EXPECT_EQ(signInLabel(Site::qa), (SignInLabel{"QA", "Sign in to Staging", true}));
}

TEST_F(SiteTest, anEnvironmentIsNamedAsThePlatformCallsIt)
{
    const struct {
        std::optional<QString> environment;
        SignInLabel expected;
    } cases[] = {
        {"local", {"Local", "Sign in", false}}, {"qa", {"QA", "Sign in to Staging", true}},
        {"prod", {"Prod", "Sign in", false}},   {{}, {{}, "Sign in", false}},
        {"QA", {{}, "Sign in", false}},         {"", {{}, "Sign in", false}},
    };
    for (const auto& each : cases)
        EXPECT_EQ(signInLabel(each.environment), each.expected) << each.environment.value_or("none").toStdString();
}

} // namespace
} // namespace palvera
