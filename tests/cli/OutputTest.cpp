#include "cli/Output.h"

#include "TestStream.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>

#include <QJsonDocument>

namespace palvera::cli {

using namespace Qt::StringLiterals;

namespace {

const Listing orgs = listingOf(QList<Org>{{.id = u"o1"_s, .name = u"Northlight\nPictures"_s}});

class OutputTest : public testing::Test {
protected:
    QJsonObject lastRecord() const
    {
        return QJsonDocument::fromJson(m_out.written.split('\n').at(m_out.written.count('\n') - 1)).object();
    }

    TestStream m_out;
    TestStream m_error;
    Output m_text{Output::Style::text, m_out, m_error};
    Output m_json{Output::Style::json, m_out, m_error};
};

TEST_F(OutputTest, showsAListingAsATableOrAsRecords)
{
    m_text.show(orgs);
    EXPECT_EQ(std::exchange(m_out.written, {}), "ORG  NAME\no1   Northlight Pictures\n");
    m_json.show(orgs);
    EXPECT_EQ(m_out.written, "{\"id\":\"o1\",\"name\":\"Northlight\\nPictures\"}\n");
}

TEST_F(OutputTest, saysThatAListingIsEmptyToPeopleOnly)
{
    m_text.show(listingOf(QList<Org>{}));
    EXPECT_EQ(std::exchange(m_out.written, {}), "No organisation shares work with you.\n");
    m_json.show(listingOf(QList<Org>{}));
    EXPECT_EQ(m_out.written, "");
}

TEST_F(OutputTest, tellsFailuresOnTheErrorStreamAndToProgramsAsAnEvent)
{
    m_text.fail(u"No."_s);
    EXPECT_EQ(m_out.written, "");
    EXPECT_EQ(std::exchange(m_error.written, {}), "palvera-cli: No.\n");
    m_json.fail(u"No."_s, {{u"key"_s, u"k"_s}});
    EXPECT_EQ(m_error.written, "palvera-cli: No.\n");
    EXPECT_EQ(lastRecord(), (QJsonObject{{u"event"_s, u"failed"_s}, {u"key"_s, u"k"_s}, {u"message"_s, u"No."_s}}));
}

TEST_F(OutputTest, redrawsProgressOnATerminalAndClearsItBeforeAnythingElse)
{
    m_error.cells = 41;
    m_text.progress(u"k"_s, {.name = u"a"_s, .sent = 1000, .total = 2000});
    EXPECT_EQ(std::exchange(m_error.written, {}), "\r\x1b[Ka  [=======>       ]   50%  1 KB of 2 KB");
    m_text.say(u"Done"_s, {});
    EXPECT_EQ(std::exchange(m_error.written, {}), "\r\x1b[K");
    m_text.say(u"More"_s, {});
    EXPECT_EQ(m_error.written, "");
    EXPECT_EQ(m_out.written, "Done\nMore\n");
}

TEST_F(OutputTest, redrawsNothingElsewhere)
{
    m_out.cells = 80; // the error stream is a file
    m_text.progress(u"k"_s, {.name = u"a"_s, .sent = 1000, .total = 2000});
    EXPECT_EQ(m_error.written + m_out.written, "");
}

TEST_F(OutputTest, keepsShowingTheRateOfTheSameUploadWhileItIsMeasuredAfresh)
{
    m_error.cells = 100;
    m_text.progress(u"k"_s, {.name = u"a"_s, .sent = 1000, .total = 2000, .bytesPerSecond = 5e6});
    m_text.progress(u"k"_s, {.name = u"a"_s, .sent = 1500, .total = 2000});
    EXPECT_EQ(m_error.written.count("5.0 MB/s"), 2);
    m_error.written.clear();
    m_text.progress(u"other"_s, {.name = u"b"_s, .sent = 1500, .total = 2000});
    EXPECT_EQ(m_error.written.count("5.0 MB/s"), 1) << "of the first";
}

TEST_F(OutputTest, showsOneLineForEachTransferUntilItEnds)
{
    m_error.cells = 60;
    ProgressView half{.name = u"a"_s, .sent = 1000, .total = 2000};
    m_text.progress(u"a"_s, half);
    auto line = std::exchange(m_error.written, {}).mid(1);
    m_text.progress(u"b"_s, half);
    EXPECT_EQ(std::exchange(m_error.written, {}), '\r' + line + "\n\r" + line);
    m_text.progress(u"a"_s, half);
    EXPECT_EQ(std::exchange(m_error.written, {}), "\x1b[1A\r" + line + "\n\r" + line);
    m_text.endProgress(u"a"_s);
    EXPECT_EQ(std::exchange(m_error.written, {}), "\x1b[1A\r\x1b[J");
    m_text.progress(u"b"_s, half);
    EXPECT_EQ(m_error.written, '\r' + line);
}

TEST_F(OutputTest, reportsProgressToProgramsWithARateOnlyWhenItIsKnown)
{
    m_json.progress(u"k"_s, {.name = u"a"_s, .sent = 10, .total = 20});
    EXPECT_EQ(lastRecord(),
              (QJsonObject{{u"event"_s, u"progress"_s}, {u"key"_s, u"k"_s}, {u"sent"_s, 10}, {u"total"_s, 20}}));
    m_json.progress(u"k"_s, {.name = u"a"_s, .sent = 10, .total = 20, .bytesPerSecond = 2.5});
    EXPECT_EQ(lastRecord()[u"rate"_s], 2.5);
}

TEST(JsonLine, holdsNothingThatATerminalWouldObeyAndReadsBackTheSame)
{
    const auto text = u"é映🎬 \x1b[1m \x7f \u009b31m \u202e \u2028 \"\\"_s;
    auto line = jsonLine({{u"name"_s, text}});
    EXPECT_EQ(line.count('\n'), 1);
    for (auto forbidden : {"\x1b", "\x7f", "\xc2\x9b", "\xe2\x80\xae", "\xe2\x80\xa8"})
        EXPECT_FALSE(line.contains(forbidden)) << QByteArray(forbidden).toHex().constData();
    EXPECT_TRUE(line.contains("é映🎬"));
    EXPECT_EQ(QJsonDocument::fromJson(line).object()[u"name"_s].toString(), text);
}

} // namespace

} // namespace palvera::cli
