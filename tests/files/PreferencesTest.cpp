#include "FileFixture.h"

#include "files/Preferences.h"

namespace palvera {
namespace {

struct PreferencesTest : FileFixture {
    QString file = root.filePath("config/Palvera/palvera.conf");
    Preferences preferences{file};
};

TEST_F(PreferencesTest, keepsTextsAndBytesUnderTheirKeysAsTheyAre)
{
    for (const QString text : {"live", "", "a, b", "@text", "grün \"quoted\"\n"}) {
        preferences.setString("pv.site", text);
        EXPECT_EQ(Preferences(file).string("pv.site"), text);
    }
    const QByteArray bytes = QByteArray::fromHex("00ff0a0d22315c00");
    preferences.setBytes("pv.downloadsBookmark", bytes);
    EXPECT_EQ(Preferences(file).bytes("pv.downloadsBookmark"), bytes);
    preferences.setString("pv.site", "live");
    EXPECT_TRUE(readFile(file).contains("\npv.site=live\n"));
}

TEST_F(PreferencesTest, givesNothingForWhatIsAbsentOrOfTheOtherTypeOrRemoved)
{
    preferences.setString("text", "x");
    preferences.setBytes("bytes", "x");
    EXPECT_EQ(preferences.string("bytes"), std::nullopt);
    EXPECT_EQ(preferences.bytes("text"), std::nullopt);
    preferences.remove("text");
    for (const auto& each : {file, root.filePath("absent.conf")})
        EXPECT_EQ(Preferences(each).string("text"), std::nullopt);
}

} // namespace
} // namespace palvera
