#include "cli/DisplayText.h"

#include "support/QtPrinting.h"

namespace palvera::cli {

using namespace Qt::StringLiterals;

namespace {

TEST(DisplayText, isMeasuredPaddedAndShortenedByCells)
{
    const std::pair<const char*, int> cases[] = {
        {"", 0}, {"reel", 4}, {"café", 4}, {"cafe\u0301", 4}, {"映画", 4}, {"한국", 4}, {"ﬁlm…", 4}, {"🎬", 2},
    };
    for (const auto& [text, cells] : cases)
        EXPECT_EQ(cellsOf(QString(text)), cells) << text;
    EXPECT_EQ(padded(u"映画"_s, 6), u"映画  "_s);
    EXPECT_EQ(paddedBefore(u"e\u0301"_s, 3), u"  e\u0301"_s);
    EXPECT_EQ(padded(u"long"_s, 2), u"long"_s);
    EXPECT_EQ(shortened(u"master"_s, 6), u"master"_s);
    EXPECT_EQ(shortened(u"master"_s, 5), u"mast…"_s);
    EXPECT_EQ(shortened(u"映画の祭"_s, 6), u"映画…"_s) << "a third would leave no room for the dots";
    EXPECT_EQ(shortened(u"cafe\u0301 noir"_s, 5), u"cafe\u0301…"_s);
    EXPECT_EQ(shortened(u"master"_s, 1), u"…"_s);
    EXPECT_EQ(shortened(u"master"_s, 0), QString());
}

TEST(DisplayText, ofACommandSurvivesTheShellAsOneWord)
{
    EXPECT_EQ(shellWords({u"long-tide-row-1"_s, u""_s}), u"long-tide-row-1 ''"_s);
    EXPECT_EQ(shellWords({u"it's; rm -rf $HOME"_s}), u"'it'\\''s; rm -rf $HOME'"_s);
    EXPECT_EQ(shellWords({u"a"_s, u"--all"_s, u"-b"_s}), u"-- a --all -b"_s);
}

} // namespace

} // namespace palvera::cli
