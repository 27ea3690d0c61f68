#include "files/SourcePath.h"

#include "support/QtPrinting.h"

#include <gtest/gtest.h>

namespace palvera {
namespace {

TEST(SourcePathTest, everyNameComesBackAsTheBytesThatItWas)
{
    const std::pair<QByteArray, const char16_t*> cases[] = {
        {"/films/Mäster 映画🎬.mov", u"Mäster 映画🎬.mov"},
        {"/films/\xff", u"\uFFFD"},
        {"/f\xe4/a\xe4\xf6.mov", u"a\uFFFD\uFFFD.mov"},
        {"/a\xc3", u"a\uFFFD"},
        {"/\xf0\x9f\x8e", u"\uFFFD\uFFFD\uFFFD"},
        {"/\xed\xb3\xbf", u"\uFFFD\uFFFD\uFFFD"}, // what would stand for a byte, as bytes
        {"/💀\xbf", u"💀\uFFFD"},                 // the second half of its pair would stand for a byte by itself
    };
    for (const auto& [bytes, name] : cases) {
        const auto path = pathFromBytes(bytes);
        EXPECT_EQ(pathToBytes(path), bytes) << bytes.toHex().constData();
        EXPECT_EQ(readableName(path), QString::fromUtf16(name));
    }
    EXPECT_NE(pathFromBytes("/\xff"), pathFromBytes("/\xfe"));
}

} // namespace
} // namespace palvera
