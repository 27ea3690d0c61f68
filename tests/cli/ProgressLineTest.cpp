#include "cli/ProgressLine.h"

#include "cli/DisplayText.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace palvera::cli {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 total = 2'000'000'000;

struct Line {
    int cells;
    qint64 sent;
    std::optional<double> rate;
    const char* text;
};

TEST(ProgressLineTest, showsWhatThereIsRoomFor)
{
    for (const auto& [cells, sent, rate, text] : {
             Line{100, 580'000'000, 100e6,
                  "Reel 1.mov  [==========>                          ]   29%  580.0 MB of 2.00 GB  100.0 MB/s  14s "
                  "left"},
             Line{79, 500'000'000, 100e6,
                  "Reel 1.mov  [====>           ]   25%  500.0 MB of 2.00 GB  100.0 MB/s  15s left"},
             Line{69, 500'000'000, 100e6, "Reel 1.mov  [======>                    ]   25%  100.0 MB/s  15s left"},
             Line{50, 500'000'000, 100e6, "Reel 1.mov  [=====>              ]   25%  15s left"},
             Line{30, 500'000'000, 100e6, "[===>        ]   25%  15s left"},
             Line{10, 500'000'000, 100e6, "25%"},
             Line{2, 500'000'000, 100e6, ""},
             Line{70, 0, {}, "Reel 1.mov  [>                                ]    0%  0 KB of 2.00 GB"},
             Line{70, 500'000'000, 0.0, "Reel 1.mov  [=====>               ]   25%  500.0 MB of 2.00 GB  0 KB/s"},
             Line{70, total - 1, {}, "Reel 1.mov  [=============================>]   99%  2.00 GB of 2.00 GB"},
             Line{70, total, {}, "Reel 1.mov  [==============================]  100%  2.00 GB of 2.00 GB"},
         }) {
        ProgressView view{.name = u"Reel 1.mov"_s, .sent = sent, .total = total, .bytesPerSecond = rate};
        EXPECT_EQ(progressLine(view, cells).toStdString(), text);
    }
}

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
