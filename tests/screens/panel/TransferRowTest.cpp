#include "screens/panel/TransferRow.h"
#include "screens/TransferTexts.h"
#include "screens/panel/TransfersView.h"
#include "service/APIError.h"

#include "files/FileError.h"
#include "http/TransportError.h"
#include "tests/support/QtPrinting.h"
#include "tests/support/Simulation.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

const auto now = ManualClock::wallStart;

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

TEST(TransferRowTest, theFiguresOfARunningTransfer)
{
    struct Case {
        Item item;
        QString percent;
        QString figures;
    };
    const Item::State running = Item::Running{};
    const std::vector<Case> cases = {
        {item(running), "0%", "0 KB of 0 KB"},
        {item(running, 290'000'000, 1'000'000'000), "29%", "290.0 MB of 1.00 GB"},
        {item(running, 290'000'000, 1'000'000'000, 0.0), "29%", "290.0 MB of 1.00 GB · —"},
        {item(running, 290'000'000, 1'000'000'000, 10e6), "29%", "290.0 MB of 1.00 GB · 10.0 MB/s · 1m 11s left"},
        {item(running, 1'000'000, 1'000'000, 10e6), "100%", "1.0 MB of 1.0 MB · 10.0 MB/s"},
    };
    for (const auto& each : cases) {
        auto row = transferRow(each.item, now);
        EXPECT_EQ(row.percent, each.percent);
        EXPECT_EQ(row.figures, each.figures);
        EXPECT_EQ(row.status, "");
    }
}

TEST(TransferRowTest, theStatusOfOneThatDoesNotRun)
{
    const std::vector<std::pair<Item::State, QString>> cases = {
        {Item::Waiting{}, "Waiting"},
        {Item::Done{}, "Done · 4.0 MB"},
        {Item::Stopped{}, "Stopped"},
        {Item::Failed{.message = "That file is empty."}, "That file is empty."},
        {Item::Retrying{.message = "It broke.", .until = now + 75s}, "It broke. Trying again in 1 min, 15 sec"},
        {Item::Retrying{.message = "It broke.", .until = now - 5s}, "It broke. Trying again in 0 sec"}};
    for (const auto& [state, status] : cases) {
        auto row = transferRow(item(state, 1'000'000, 4'000'000, 5.0), now);
        EXPECT_EQ(row.status, status);
        EXPECT_EQ(row.figures, "");
    }
}

TEST(TransferRowTest, namesTheFileTwiceWithoutALabel)
{
    auto nameless = item(Item::Running{});
    nameless.label.clear();
    nameless.titleName = "Salt";
    auto row = transferRow(nameless, now);
    EXPECT_EQ(row.title, "reel.mov");
    EXPECT_EQ(row.titleName, "Salt");
    EXPECT_EQ(row.name, "reel.mov");
}

TEST(TransferRowTest, theGraphGrowsWithTheProgressAndSpansTheWholeWidthInTheEnd)
{
    auto moving = item(Item::Running{}, 25, 100);
    moving.trace.samples = {1};
    EXPECT_TRUE(transferRow(moving, now).samples.isEmpty()) << "one sample makes no line";
    moving.trace.samples = {1, 2};
    EXPECT_EQ(transferRow(moving, now).samples.size(), 2);
    EXPECT_EQ(transferRow(moving, now).graphFraction, 0.25);
    moving.state = Item::Stopped{};
    EXPECT_EQ(transferRow(moving, now).graphFraction, 1);
}

TEST(TransferRowTest, asksBeforeItStopsAndSaysWhatThatMeans)
{
    auto upload = item(Item::Running{}, 12'400'000, 20'000'000);
    EXPECT_EQ(transferRow(upload, now).stopTitle, "Stop this upload?");
    EXPECT_EQ(transferRow(upload, now).stopMessage, "12.4 MB has gone up already. Stopping throws it away, so nothing "
                                                    "half delivered is left in storage.");
    upload.kind = Item::Kind::download;
    EXPECT_EQ(transferRow(upload, now).stopTitle, "Stop this download?");
    EXPECT_EQ(transferRow(upload, now).stopMessage, "12.4 MB has come down already. It is kept on disk.");
}

TEST(TransferRowTest, readsOutStateAndPercentage)
{
    auto spoken = transferRow(item(Item::Running{}, 1, 4), now).spoken.toStdString();
    for (const auto* part : {"Picture", "reel.mov", "upload", "running", "25 percent"})
        EXPECT_THAT(spoken, HasSubstr(part));
    EXPECT_THAT(transferRow(item(Item::Done{}, 4, 4), now).spoken.toStdString(), HasSubstr("done"));
}

TEST(TransferTextsTest, aRetryGivesItsReasonInPlainWordsAndKeepsTheTechnicalOne)
{
    using Kind = TransportError::Kind;
    auto retrying = [](auto error) {
        return Item::State(Item::Retrying{.message = error.text(), .failure = std::make_exception_ptr(error)});
    };
    struct Case {
        Item::State state;
        QString plain;
        QString technical;
    };
    const std::vector<Case> cases = {
        {retrying(TransportError(Kind::noNetwork, "x.")), "This computer is not connected to a network.", "x."},
        {retrying(TransportError(Kind::connect, "x.")), "The platform cannot be reached.", "x."},
        {retrying(TransportError(Kind::idle, "x.")), "The connection has come to a standstill.", "x."},
        {retrying(TransportError(Kind::broken, "x.")), "The connection was lost.", "x."},
        {retrying(TransportError(Kind::tls, "No trust.")), "No trust.", "No trust."},
        {retrying(APIError::fromAnswer(503, {})), "The platform is busy.", "The platform answered 503. (HTTP 503)"},
        {retrying(APIError(503, "Closed until noon.")), "Closed until noon.", "Closed until noon. (HTTP 503)"},
        {retrying(APIError::fromAnswer(403, {})), "The platform answered 403.",
         "The platform answered 403. (HTTP 403)"},
        {retrying(FileError("The disk is gone.")), "The disk is gone.", "The disk is gone."},
        {Item::Running{}, "", ""}};
    for (const auto& each : cases) {
        EXPECT_EQ(plainReason(each.state), each.plain);
        EXPECT_EQ(technicalReason(each.state), each.technical);
    }
}

TEST(OverallPercentTest, theWholeIsWhatIsInFlightAndHasASize)
{
    const Item::State running = Item::Running{};
    EXPECT_EQ(overallPercent({}), std::nullopt);
    EXPECT_EQ(overallPercent({item(running)}), std::nullopt);
    EXPECT_EQ(overallPercent({item(running, 10, 100), item(running), item(Item::Done{}, 500, 500),
                              item(Item::Retrying{}, 40, 100)}),
              25);
    EXPECT_EQ(overallPercent({item(running, 200, 100)}), 100);
}

} // namespace
} // namespace palvera
