#include "cli/Output.h"

#include "TestStream.h"
#include "cli/DisplayText.h"
#include "support/Json.h"
#include "support/QtPrinting.h"

namespace palvera::cli {

using namespace Qt::StringLiterals;

namespace {

struct OutputTest : testing::Test {
    TestStream out, error;
    Output text{Output::Style::text, out, error}, json{Output::Style::json, out, error};
    const ProgressView half{.name = "a", .sent = 1000, .total = 2000};

    /// What was written since the last look.
    QByteArray shown() { return std::exchange(out.written, {}); }
    QByteArray shownAsError() { return std::exchange(error.written, {}); }
};

TEST_F(OutputTest, showsAListingAsATableOrAsRecords)
{
    const QList<Org> orgs{{.id = "o1", .name = "Northlight\nPictures"}};
    text.show(listingOf(orgs));
    EXPECT_EQ(shown(), "ORG  NAME\no1   Northlight Pictures\n");
    text.show(listingOf(QList<Org>{}));
    EXPECT_EQ(shown(), "No organisation shares work with you.\n");
    json.show(listingOf(QList<Org>{}));
    EXPECT_EQ(shown(), "");
    json.show(listingOf(orgs));
    EXPECT_EQ(shown(), "{\"id\":\"o1\",\"name\":\"Northlight\\nPictures\"}\n");
}

TEST_F(OutputTest, tellsFailuresOnTheErrorStreamAndProgramsOfEachEvent)
{
    text.fail("No.");
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(shownAsError(), "palvera-cli: No.\n");
    json.fail("No.", {{"key", "k"}});
    EXPECT_EQ(shownAsError(), "palvera-cli: No.\n");
    EXPECT_EQ(jsonObject(shown()), jsonObject(R"({"event":"failed","key":"k","message":"No."})"));
    json.progress("k", half);
    EXPECT_EQ(jsonObject(shown()), jsonObject(R"({"event":"progress","key":"k","sent":1000,"total":2000})"));
    json.progress("k", {.name = "a", .sent = 10, .total = 20, .bytesPerSecond = 2.5});
    EXPECT_EQ(jsonObject(shown())["rate"], 2.5);
}

TEST_F(OutputTest, redrawsProgressOnATerminalOnlyAndClearsItBeforeAnythingElse)
{
    out.cells = 80; // the error stream is a file
    text.progress("k", half);
    EXPECT_EQ(shownAsError() + shown(), "");
    error.cells = 41;
    text.progress("k", half);
    EXPECT_EQ(shownAsError(), "\r\x1b[Ka  [=======>       ]   50%  1 KB of 2 KB");
    text.say("Done", {});
    EXPECT_EQ(shownAsError(), "\r\x1b[K");
    text.say("More", {});
    EXPECT_EQ(shownAsError(), "");
    EXPECT_EQ(shown(), "Done\nMore\n");
}

TEST_F(OutputTest, showsOneLineForEachTransferUntilItEnds)
{
    error.cells = 60;
    text.progress("a", half);
    auto line = shownAsError().mid(1);
    text.progress("b", half);
    EXPECT_EQ(shownAsError(), '\r' + line + "\n\r" + line);
    text.progress("a", half);
    EXPECT_EQ(shownAsError(), "\x1b[1A\r" + line + "\n\r" + line);
    text.endProgress("a");
    EXPECT_EQ(shownAsError(), "\x1b[1A\r\x1b[J");
    text.progress("b", half);
    EXPECT_EQ(shownAsError(), '\r' + line);
}

TEST(ProgressLine, showsWhatThereIsRoomFor)
{
    constexpr qint64 total = 2'000'000'000, quarter = total / 4;
    const std::tuple<int, qint64, std::optional<double>, const char*> cases[] = {
        {100, 580'000'000, 100e6,
         "Reel 1.mov  [===========>                          ]   29%  580.0 MB of 2.0 GB  100.0 MB/s  14s left"},
        {79, quarter, 100e6, "Reel 1.mov  [====>            ]   25%  500.0 MB of 2.0 GB  100.0 MB/s  15s left"},
        {69, quarter, 100e6, "Reel 1.mov  [======>                    ]   25%  100.0 MB/s  15s left"},
        {50, quarter, 100e6, "Reel 1.mov  [=====>              ]   25%  15s left"},
        {30, quarter, 100e6, "[===>        ]   25%  15s left"},
        {10, quarter, 100e6, "25%"},
        {2, quarter, 100e6, ""},
        {70, 0, {}, "Reel 1.mov  [>                                 ]    0%  0 KB of 2.0 GB"},
        {70, quarter, 0.0, "Reel 1.mov  [=====>                ]   25%  500.0 MB of 2.0 GB  0 KB/s"},
        {70, total - 1, {}, "Reel 1.mov  [===============================>]   99%  2.0 GB of 2.0 GB"},
        {70, total, {}, "Reel 1.mov  [================================]  100%  2.0 GB of 2.0 GB"},
    };
    for (const auto& [cells, sent, rate, text] : cases)
        EXPECT_EQ(progressLine({.name = "Reel 1.mov", .sent = sent, .total = total, .bytesPerSecond = rate}, cells),
                  text);
    EXPECT_TRUE(progressLine({.name = {}, .sent = 0, .total = 0}, 80).contains("  0%"));
    EXPECT_TRUE(progressLine({.name = {}, .sent = 0, .total = total, .bytesPerSecond = 1, .pace = 100e6}, 80)
                    .endsWith("20s left"));
}

TEST(ProgressLine, isNeverTooWideForItsTerminal)
{
    ProgressView view{.name = QString(80, QChar(0x6620)), .sent = 1, .total = 3, .bytesPerSecond = 1e6};
    for (int cells = 0; cells < 200; ++cells)
        EXPECT_LE(cellsOf(progressLine(view, cells)), cells) << cells;
    EXPECT_TRUE(progressLine(view, 199).contains("映…"));
}

TEST_F(OutputTest, aRecordHoldsNothingThatATerminalWouldObeyAndReadsBackTheSame)
{
    const auto name = u"é映🎬 \x1b[1m \x7f \u009b31m \u202e \u2028 \"\\"_s;
    const auto line = jsonLine({{"name", name}});
    EXPECT_EQ(line.count('\n'), 1);
    for (auto forbidden : {"\x1b", "\x7f", "\xc2\x9b", "\xe2\x80\xae", "\xe2\x80\xa8"})
        EXPECT_FALSE(line.contains(forbidden)) << QByteArray(forbidden).toHex().constData();
    EXPECT_TRUE(line.contains("é映🎬"));
    EXPECT_EQ(jsonObject(line)["name"], name);
}

} // namespace

} // namespace palvera::cli
