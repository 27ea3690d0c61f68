#include "desktop/Autostart.h"
#include "tests/support/Files.h"

#include <QProcess>
#include <QTemporaryDir>

namespace palvera {
namespace {

TEST(AutostartTest, isAnEntryThatDesktopsUnderstandWhateverTheProgramIsCalled)
{
    const std::pair<const char*, const char*> words[] = {{"/opt/palvera/bin/palvera", R"("/opt/palvera/bin/palvera")"},
                                                         {"/a b/100%", R"("/a b/100%%")"},
                                                         {R"(/a"b`c$d\e)", R"("/a\\"b\\`c\\$d\\\\e")"}};
    for (const auto& [word, quoted] : words)
        EXPECT_EQ(quotedForEntry(word), quoted);
    QTemporaryDir config;
    const auto path = config.filePath("autostart/example.palvera.desktop");
    setAutostart(true, "example.palvera", "/a b/100%", config.path());
    EXPECT_TRUE(readFile(path).contains("\nExec=\"/a b/100%%\" --background\n")) << readFile(path).constData();
    EXPECT_EQ(QProcess::execute("desktop-file-validate", {path}), 0);
    setAutostart(false, "example.palvera", {}, config.path());
    EXPECT_FALSE(QFile::exists(path));
}

} // namespace
} // namespace palvera
