#include "FileFixture.h"

#include "files/Folders.h"
#include "files/Preferences.h"
#include "support/ScopedVariable.h"

#include <QFileInfo>

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

using PreferencesTest = FileFixture;

TEST_F(PreferencesTest, keepsTextsAndBytesUnderTheirKeysAsTheyAreUntilTheyAreRemoved)
{
    const QString file = root.filePath("config/Palvera/palvera.conf");
    Preferences preferences(file);
    const QByteArray bytes = QByteArray::fromHex("00ff0a0d22315c00");
    preferences.setBytes("pv.downloadsBookmark", bytes);
    for (const QString text : {"", "a, b", "@text", "grün \"quoted\"\n", "live"}) {
        preferences.setString("pv.site", text);
        EXPECT_EQ(Preferences(file).string("pv.site"), text);
    }
    EXPECT_EQ(Preferences(file).bytes("pv.downloadsBookmark"), bytes);
    EXPECT_TRUE(readFile(file).contains("\npv.site=live\n"));
    EXPECT_EQ(preferences.string("pv.downloadsBookmark"), std::nullopt) << "of the other type";
    EXPECT_EQ(preferences.bytes("pv.site"), std::nullopt);
    preferences.remove("pv.site");
    for (const auto& each : {file, root.filePath("absent.conf")})
        EXPECT_EQ(Preferences(each).string("pv.site"), std::nullopt);
}

TEST_F(PreferencesTest, aFileThatMakesNoSenseIsSetAsideAndNeverLost)
{
    const QString file = root.filePath("palvera.conf");
    const std::pair<QByteArray, QString> cases[] = {
        {QByteArray(100, '\0'), file + ".broken"}, // as a power cut may leave it
        {"[General\npv.site=live\n", file + ".broken2"}};
    for (const auto& [left, aside] : cases) {
        writeFile(file, left);
        Preferences preferences(file);
        EXPECT_EQ(preferences.setAside(),
                  "The preferences could not be read. They begin anew; the file is now " + aside + '.');
        EXPECT_EQ(readFile(aside), left);
        preferences.setString("pv.site", "live");
        EXPECT_EQ(Preferences(file).setAside(), QString());
        EXPECT_EQ(Preferences(file).string("pv.site"), "live");
    }
}

} // namespace
} // namespace palvera
