#include "cli/ProgressLine.h"

#include "cli/DisplayText.h"
#include "cli/Quantities.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>

#include <limits>

namespace palvera::cli {

using namespace Qt::StringLiterals;

namespace {

struct Bytes {
    qint64 bytes;
    const char* text;
};

void PrintTo(const Bytes& bytes, std::ostream* out)
{
    *out << bytes.bytes;
}

class BytesText : public testing::TestWithParam<Bytes> {};

TEST_P(BytesText, isDecimalWithThreeDigits)
{
    EXPECT_EQ(bytesText(GetParam().bytes).toStdString(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(All, BytesText,
                         testing::Values(Bytes{0, "0 KB"}, Bytes{-5, "0 KB"}, Bytes{1, "<1 KB"}, Bytes{999, "<1 KB"},
                                         Bytes{1000, "1.00 KB"}, Bytes{9'994, "9.99 KB"}, Bytes{9'996, "10.0 KB"},
                                         Bytes{99'960, "100 KB"}, Bytes{999'499, "999 KB"}, Bytes{999'500, "1.00 MB"},
                                         Bytes{104'857'600, "105 MB"}, Bytes{1'073'741'824, "1.07 GB"},
                                         Bytes{53'690'000'000, "53.7 GB"}, Bytes{1'000'000'000'000, "1.00 TB"},
                                         Bytes{5'000'000'000'000'000, "5000 TB"}));

struct Duration {
    double seconds;
    const char* text;
};

void PrintTo(const Duration& duration, std::ostream* out)
{
    *out << duration.seconds << " s";
}

class DurationText : public testing::TestWithParam<Duration> {};

TEST_P(DurationText, growsWithTheDuration)
{
    EXPECT_EQ(durationText(GetParam().seconds).toStdString(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(All, DurationText,
                         testing::Values(Duration{0, "0:00"}, Duration{-3, "0:00"}, Duration{0.2, "0:01"},
                                         Duration{59.5, "1:00"}, Duration{754, "12:34"}, Duration{3600, "1:00:00"},
                                         Duration{3723, "1:02:03"}, Duration{99 * 3600, "99:00:00"},
                                         Duration{99 * 3600 + 1, "over 99 h"},
                                         Duration{std::numeric_limits<double>::infinity(), "over 99 h"},
                                         Duration{std::numeric_limits<double>::quiet_NaN(), "over 99 h"}));

constexpr qint64 total = 2'000'000'000;

struct Line {
    int cells;
    qint64 sent;
    std::optional<double> rate;
    const char* text;
};

void PrintTo(const Line& line, std::ostream* out)
{
    *out << line.sent << " bytes in " << line.cells << " cells";
}

class ProgressLine : public testing::TestWithParam<Line> {};

TEST_P(ProgressLine, showsWhatThereIsRoomFor)
{
    const auto& [cells, sent, rate, text] = GetParam();
    ProgressView view{.name = u"Reel 1.mov"_s, .sent = sent, .total = total, .bytesPerSecond = rate};
    EXPECT_EQ(progressLine(view, cells).toStdString(), text);
}

INSTANTIATE_TEST_SUITE_P(
    All, ProgressLine,
    testing::Values(
        Line{100, 500'000'000, 100e6,
             "Reel 1.mov  [=========>                            ]   25%  500 MB of 2.00 GB  100 MB/s  0:15 left"},
        Line{79, 500'000'000, 100e6, "Reel 1.mov  [====>              ]   25%  500 MB of 2.00 GB  100 MB/s  0:15 left"},
        Line{70, 500'000'000, 100e6, "Reel 1.mov  [==>       ]   25%  500 MB of 2.00 GB  100 MB/s  0:15 left"},
        Line{69, 500'000'000, 100e6, "Reel 1.mov  [=======>                    ]   25%  100 MB/s  0:15 left"},
        Line{50, 500'000'000, 100e6, "Reel 1.mov  [====>              ]   25%  0:15 left"},
        Line{30, 500'000'000, 100e6, "[==>        ]   25%  0:15 left"}, Line{10, 500'000'000, 100e6, "25%"},
        Line{2, 500'000'000, 100e6, ""},
        Line{70, 0, {}, "Reel 1.mov  [>                                ]    0%  0 KB of 2.00 GB"},
        Line{70, 500'000'000, 0.0, "Reel 1.mov  [=====>                 ]   25%  500 MB of 2.00 GB  0 KB/s"},
        Line{70, total - 1, {}, "Reel 1.mov  [=============================>]   99%  2.00 GB of 2.00 GB"},
        Line{70, total, {}, "Reel 1.mov  [==============================]  100%  2.00 GB of 2.00 GB"}));

TEST(ProgressLineWidth, isNeverExceededByWideOrLongNames)
{
    ProgressView view{.name = QString(80, QChar(0x6620)), .sent = 1, .total = 3, .bytesPerSecond = 1e6};
    for (int cells = 0; cells < 200; ++cells)
        EXPECT_LE(cellsOf(progressLine(view, cells)), cells) << cells;
    EXPECT_TRUE(progressLine(view, 199).contains(u"映…"));
}

TEST(ProgressLineWidth, countsAnEmptyTotalAsNothingSent)
{
    EXPECT_TRUE(progressLine({.name = {}, .sent = 0, .total = 0}, 80).contains(u"  0%"));
}

} // namespace

} // namespace palvera::cli
