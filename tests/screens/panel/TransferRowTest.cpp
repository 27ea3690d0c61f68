#include "screens/panel/TransferRow.h"
#include "screens/TransferTexts.h"
#include "screens/panel/TransfersView.h"

#include "files/FileError.h"
#include "http/TransportError.h"
#include "service/APIError.h"
#include "tests/support/QtPrinting.h"
#include "tests/support/Simulation.h"

#include <QMetaEnum>

#include <gmock/gmock.h>

namespace palvera {
namespace {

using namespace std::chrono_literals;

const auto now = ManualClock::wallStart;
const Item::State running = Item::Running{};

Item item(Item::State state, qint64 sent = 0, qint64 total = 0, std::optional<double> rate = {})
{
    return {.id = QUuid::createUuid(),
            .target = TransferTarget::Deliverable{"o", "p", "d"},
            .name = "reel.mov",
            .label = "Picture",
            .state = std::move(state),
            .sent = sent,
            .total = total,
            .rate = rate};
}

TEST(TransferRowTest, saysHowFarARunningTransferIsOrWhyItDoesNotRun)
{
    auto retrying = [](std::chrono::seconds wait) { return Item::Retrying{.message = "No.", .until = now + wait}; };
    const std::tuple<Item, QString, QString, QString> cases[] = {
        {item(running), "0%", "0 KB of 0 KB", ""},
        {item(running, 290'000'000, 1'000'000'000), "29%", "290.0 MB of 1.0 GB", ""},
        {item(running, 290'000'000, 1'000'000'000, 0.0), "29%", "290.0 MB of 1.0 GB · —", ""},
        {item(running, 290'000'000, 1'000'000'000, 10e6), "29%", "290.0 MB of 1.0 GB · 10.0 MB/s · 1m 11s left", ""},
        {item(running, 1'000'000, 1'000'000, 10e6), "100%", "1.0 MB of 1.0 MB · 10.0 MB/s", ""},
        {item(Item::Waiting{}), "0%", "", "Waiting"},
        {item(Item::Done{}, 4'000'000, 4'000'000, 5.0), "100%", "", "Done · 4.0 MB"},
        {item(Item::Stopped{}, 1, 4, 5.0), "25%", "", "Stopped"},
        {item(Item::Failed{.message = "That file is empty."}), "0%", "", "That file is empty."},
        {item(retrying(75s), 1, 4, 5.0), "25%", "", "No. Trying again in 1 min, 15 sec"},
    };
    for (const auto& [shown, percent, figures, status] : cases) {
        auto row = transferRow(shown, now);
        EXPECT_EQ(row.percent, percent);
        EXPECT_EQ(row.figures, figures);
        EXPECT_EQ(row.status, status);
        auto state = QString(QMetaEnum::fromType<TransferState::Value>().valueToKey(int(row.state)));
        EXPECT_EQ(state.toLower(), nameOf(shown.state));
    }
    auto even = item(running, 0, 1'000'000'000, 10e6);
    even.pace = 20e6;
    EXPECT_TRUE(transferRow(even, now).figures.endsWith("10.0 MB/s · 50s left"));
}

TEST(TransferRowTest, theGraphGrowsWithTheProgressAndTheRestSaysWhatAStopMeans)
{
    auto moving = item(running, 12'400'000, 24'800'000);
    moving.trace.samples = {1};
    EXPECT_TRUE(transferRow(moving, now).samples.isEmpty()) << "one sample makes no line";
    moving.trace.samples = {1, 2};
    auto upload = transferRow(moving, now);
    EXPECT_EQ(upload.samples.size(), 2);
    EXPECT_EQ(upload.graphFraction, 0.5);
    EXPECT_EQ(upload.stopTitle, "Stop this upload?");
    EXPECT_EQ(upload.stopMessage, "12.4 MB has gone up already. Stopping throws it away, so nothing half delivered is "
                                  "left in storage.");
    EXPECT_EQ(upload.spoken, "Picture, reel.mov, upload, running, 50 percent");
    moving.kind = Item::Kind::download;
    moving.state = Item::Stopped{};
    moving.label.clear();
    auto download = transferRow(moving, now);
    EXPECT_EQ(download.graphFraction, 1);
    EXPECT_EQ(download.stopTitle, "Stop this download?");
    EXPECT_EQ(download.stopMessage, "12.4 MB has come down already. It is kept on disk.");
    EXPECT_EQ(download.spoken, "reel.mov, reel.mov, download, stopped, Stopped") << "without a label";
}

TEST(TransferTextsTest, aCountdownIsRoundedUpAndEndsAtNothing)
{
    const std::pair<std::chrono::milliseconds, QString> cases[] = {{9001ms, "10 sec"},     {1ms, "1 sec"},
                                                                   {0ms, "0 sec"},         {-5500ms, "0 sec"},
                                                                   {59s, "59 sec"},        {59500ms, "1 min, 0 sec"},
                                                                   {75s, "1 min, 15 sec"}, {899100ms, "15 min, 0 sec"}};
    for (const auto& [left, text] : cases)
        EXPECT_EQ(countdownText(now + left, now), text);
}

TEST(TransferTextsTest, aRetryGivesItsReasonInPlainWordsAndKeepsTheTechnicalOne)
{
    using Kind = TransportError::Kind;
    auto retrying = [](auto error) {
        return Item::State(Item::Retrying{.message = error.text(), .failure = std::make_exception_ptr(error)});
    };
    const std::tuple<Item::State, QString, QString> cases[] = {
        {retrying(TransportError(Kind::noNetwork, "x.")), "This computer is not connected to a network.", "x."},
        {retrying(TransportError(Kind::connect, "x.")), "The platform cannot be reached.", "x."},
        {retrying(TransportError(Kind::idle, "x.")), "The connection has come to a standstill.", "x."},
        {retrying(TransportError(Kind::broken, "x.")), "The connection was lost.", "x."},
        {retrying(TransportError(Kind::tls, "x.")), "x.", "x."},
        {retrying(APIError::fromAnswer(503, {})), "The platform is busy.", "The platform answered 503. (HTTP 503)"},
        {retrying(APIError(503, "x.")), "x.", "x. (HTTP 503)"},
        {retrying(APIError(403, "x.")), "x.", "x. (HTTP 403)"},
        {retrying(FileError("x.")), "x.", "x."},
        {running, "", ""}};
    for (const auto& [state, plain, technical] : cases) {
        EXPECT_EQ(plainReason(state), plain);
        EXPECT_EQ(technicalReason(state), technical);
    }
}

TEST(OverallPercentTest, theWholeIsWhatIsInFlightAndHasASize)
{
    EXPECT_EQ(overallPercent({item(running)}), std::nullopt);
    EXPECT_EQ(overallPercent({item(running, 10, 100), item(running), item(Item::Done{}, 500, 500),
                              item(Item::Retrying{}, 40, 100)}),
              25);
    EXPECT_EQ(overallPercent({item(running, 200, 100), item(running, 0, 100)}), 50) << "no more than its size";
}

} // namespace
} // namespace palvera
