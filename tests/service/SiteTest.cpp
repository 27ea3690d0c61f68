#include "service/Site.h"
#include "files/Preferences.h"
#include "support/QtPrinting.h"

#include <QTemporaryDir>

namespace palvera {
namespace {

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

TEST(SiteTest, isNamedForPeople)
{
    EXPECT_EQ(signInLabel(Site::live), (SignInLabel{"Live", "Sign in to Live", false}));
    EXPECT_EQ(signInLabel(Site::qa), (SignInLabel{"QA", "Sign in to Staging", true}));
    EXPECT_EQ(signInLabel(QString("qa")), signInLabel(Site::qa));
    EXPECT_EQ(signInLabel(QString("local")), (SignInLabel{"Local", "Sign in", false}));
    EXPECT_EQ(signInLabel(QString("prod")), (SignInLabel{"Prod", "Sign in", false}));
    for (const auto& unknown : {std::optional<QString>(), std::optional<QString>("QA")})
        EXPECT_EQ(signInLabel(unknown), (SignInLabel{{}, "Sign in", false}));
}

} // namespace
} // namespace palvera
