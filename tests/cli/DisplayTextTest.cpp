#include "cli/DisplayText.h"

#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace palvera::cli {

using namespace Qt::StringLiterals;

namespace {

struct Shown {
    QString text;
    QString shown;
};

void PrintTo(const Shown& shown, std::ostream* out)
{
    *out << "shown as " << shown.shown.toStdString();
}

class PrintableText : public testing::TestWithParam<Shown> {};

TEST_P(PrintableText, isHarmlessOnATerminal)
{
    EXPECT_EQ(printable(GetParam().text), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(All, PrintableText,
                         testing::Values(Shown{u"Ævintýri #1?.mov"_s, u"Ævintýri #1?.mov"_s},
                                         Shown{u"a\nb\tc\r"_s, u"a b c "_s}, Shown{u"\x1b[2J"_s, u"�[2J"_s},
                                         Shown{QString(QChar(0x9b)) + u"31m"_s, u"�31m"_s}, Shown{u"\x7f"_s, u"�"_s},
                                         Shown{QString(QChar(0)), u"�"_s}, Shown{u"a\u2028b\u2029"_s, u"a b "_s},
                                         Shown{u"gpj.\u202ecod"_s, u"gpj.�cod"_s},
                                         Shown{QString(QChar(0xD83D)) + u'x', u"�x"_s},
                                         Shown{u"👩\u200d🚀"_s, u"👩\u200d🚀"_s}));

struct Measured {
    QString text;
    int cells;
};

void PrintTo(const Measured& measured, std::ostream* out)
{
    *out << measured.text.toStdString();
}

class MeasuredText : public testing::TestWithParam<Measured> {};

TEST_P(MeasuredText, takesItsCells)
{
    EXPECT_EQ(cellsOf(GetParam().text), GetParam().cells);
}

INSTANTIATE_TEST_SUITE_P(All, MeasuredText,
                         testing::Values(Measured{u""_s, 0}, Measured{u"reel"_s, 4}, Measured{u"café"_s, 4},
                                         Measured{u"cafe\u0301"_s, 4}, Measured{u"映画"_s, 4}, Measured{u"한국"_s, 4},
                                         Measured{u"ﬁlm…"_s, 4}, Measured{u"🎬"_s, 2}));

TEST(ShortenedText, keepsWholeCharactersAndFits)
{
    EXPECT_EQ(shortened(u"master"_s, 6), u"master"_s);
    EXPECT_EQ(shortened(u"master"_s, 5), u"mast…"_s);
    EXPECT_EQ(shortened(u"映画の祭"_s, 6), u"映画…"_s); // a third would leave no room for the dots
    EXPECT_EQ(shortened(u"cafe\u0301 noir"_s, 5), u"cafe\u0301…"_s);
    EXPECT_EQ(shortened(u"master"_s, 1), u"…"_s);
    EXPECT_EQ(shortened(u"master"_s, 0), QString());
}

TEST(PaddedText, countsCellsNotCharacters)
{
    EXPECT_EQ(padded(u"映画"_s, 6), u"映画  "_s);
    EXPECT_EQ(paddedBefore(u"e\u0301"_s, 3), u"  e\u0301"_s);
    EXPECT_EQ(padded(u"long"_s, 2), u"long"_s);
}

TEST(ShellWord, survivesTheShellAsOneWord)
{
    EXPECT_EQ(shellWord(u"long-tide-row-1"_s), u"long-tide-row-1"_s);
    EXPECT_EQ(shellWord(u"a b"_s), u"'a b'"_s);
    EXPECT_EQ(shellWord(u"it's; rm -rf $HOME"_s), u"'it'\\''s; rm -rf $HOME'"_s);
    EXPECT_EQ(shellWord(u""_s), u"''"_s);
}

} // namespace

} // namespace palvera::cli
