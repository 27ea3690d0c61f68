#include "files/FileTypes.h"
#include "support/QtPrinting.h"

namespace palvera {
namespace {

TEST(FileTypesTest, knowsATypeByItsExtensionAlone)
{
    const char* const none = "application/octet-stream";
    const std::pair<const char*, const char*> cases[] = {
        {"MASTER.MOV", "video/quicktime"},
        {"a master.of.masters.mp4", "video/mp4"},
        {"CMakeLists.txt", "text/plain"},
        {"master.unheardof", none},
        {"Makefile", none},
        {"", none},
    };
    for (const auto& [filename, type] : cases)
        EXPECT_EQ(mimeTypeForName(filename), type) << filename;
}

} // namespace
} // namespace palvera
