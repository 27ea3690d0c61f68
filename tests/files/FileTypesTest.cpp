#include "files/FileTypes.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

TEST(FileTypesTest, knowsATypeByItsExtensionAlone)
{
    const struct {
        const char* filename;
        const char* type;
    } cases[] = {
        {"master.mov", "video/quicktime"},
        {"MASTER.MOV", "video/quicktime"},
        {"a master.of.masters.mp4", "video/mp4"},
        {"stems.wav", "audio/x-wav"},
        {"subtitles.srt", "application/x-subrip"},
        {"poster.png", "image/png"},
        {"master.unheardof", "application/octet-stream"},
        {"master", "application/octet-stream"},
        {"master.", "application/octet-stream"},
        {"", "application/octet-stream"},
        {"Makefile", "application/octet-stream"},
        {"CMakeLists.txt", "text/plain"},
    };
    for (const auto& each : cases)
        EXPECT_EQ(mimeTypeForName(each.filename), each.type) << each.filename;
}

} // namespace
} // namespace palvera
