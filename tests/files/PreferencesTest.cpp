#include "files/Preferences.h"
#include "support/QtPrinting.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace palvera {
namespace {

using testing::HasSubstr;

struct PreferencesTest : testing::Test {
    QTemporaryDir root;
    QString path = root.filePath("config/Palvera/palvera.conf");

    std::string file() const
    {
        QFile opened(path);
        return opened.open(QIODevice::ReadOnly) ? opened.readAll().toStdString() : "cannot be opened";
    }
};

TEST_F(PreferencesTest, keepsTextsUnderTheirKeysAsTheyAre)
{
    Preferences preferences(path);
    for (const QString text : {"live", "", "a, b", "@text", "grün \"quoted\"\n"}) {
        preferences.setString("pv.site", text);
        EXPECT_EQ(Preferences(path).string("pv.site"), text);
    }
    preferences.setString("pv.site", "live");
    EXPECT_THAT(file(), HasSubstr("\npv.site=live\n"));
}

TEST_F(PreferencesTest, keepsBytes)
{
    const QByteArray bytes = QByteArray::fromHex("00ff0a0d22315c00");
    Preferences(path).setBytes("pv.downloadsBookmark", bytes);
    EXPECT_EQ(Preferences(path).bytes("pv.downloadsBookmark"), bytes);
}

TEST_F(PreferencesTest, givesNothingForWhatIsAbsentOrOfTheOtherType)
{
    Preferences preferences(path);
    preferences.setString("text", "x");
    preferences.setBytes("bytes", "x");
    EXPECT_EQ(preferences.string("absent"), std::nullopt);
    EXPECT_EQ(preferences.bytes("absent"), std::nullopt);
    EXPECT_EQ(preferences.string("bytes"), std::nullopt);
    EXPECT_EQ(preferences.bytes("text"), std::nullopt);
}

TEST_F(PreferencesTest, removesAKeyForGood)
{
    Preferences preferences(path);
    preferences.setString("pv.lastOrgId", "o1");
    preferences.remove("pv.lastOrgId");
    EXPECT_EQ(preferences.string("pv.lastOrgId"), std::nullopt);
    EXPECT_EQ(Preferences(path).string("pv.lastOrgId"), std::nullopt);
}

} // namespace
} // namespace palvera
