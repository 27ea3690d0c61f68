#include "files/Folders.h"
#include "support/QtPrinting.h"
#include "support/ScopedVariable.h"

#include <QFileInfo>
#include <QTemporaryDir>

namespace palvera {
namespace {

TEST(FoldersTest, followTheEnvironmentWhereItSaysSomethingUsable)
{
    const ScopedVariable home("HOME", "/home/someone");
    {
        const ScopedVariable data("XDG_DATA_HOME", "/x/data"), state("XDG_STATE_HOME", "/x/state/"),
            cache("XDG_CACHE_HOME", "/x/cache"), config("XDG_CONFIG_HOME", "/x/config");
        const auto folders = Folders::ofUser();
        EXPECT_EQ(folders.applicationSupport, "/x/data");
        EXPECT_EQ(folders.library, "/x/state");
        EXPECT_EQ(folders.caches, "/x/cache/Palvera");
        EXPECT_EQ(folders.cookies(), "/x/data/Palvera/cookies");
        EXPECT_EQ(folders.preferences(), "/x/config/Palvera/palvera.conf");
    }
    const ScopedVariable data("XDG_DATA_HOME", {}), state("XDG_STATE_HOME", ""),
        cache("XDG_CACHE_HOME", "relative/cache"), config("XDG_CONFIG_HOME", "~/config");
    const auto folders = Folders::ofUser();
    EXPECT_EQ(folders.applicationSupport, "/home/someone/.local/share");
    EXPECT_EQ(folders.library, "/home/someone/.local/state");
    EXPECT_EQ(folders.caches, "/home/someone/.cache/Palvera");
    EXPECT_EQ(folders.config, "/home/someone/.config");
}

TEST(FoldersTest, areMadeForTheirOwnerAloneAndClosedToOthersWhereTheyAreThere)
{
    const QTemporaryDir place;
    const auto deep = place.filePath("share/Palvera/Uploads");
    const auto modeOf = [](const QString& path) { return int(QFileInfo(path).permissions() & 0xFFF); };
    makePrivateFolder(deep);
    for (const auto& each : {place.filePath("share"), place.filePath("share/Palvera"), deep})
        EXPECT_EQ(modeOf(each), 0x700) << each.toStdString();
    QFile::setPermissions(deep, QFile::Permissions(0x777));
    makePrivateFolder(deep);
    EXPECT_EQ(modeOf(deep), 0x700);
}

} // namespace
} // namespace palvera
