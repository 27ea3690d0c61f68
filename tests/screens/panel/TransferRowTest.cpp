#include "screens/panel/TransferRow.h"
#include "screens/TransferTexts.h"
#include "screens/panel/Footing.h"
#include "screens/panel/SpeedTraceShape.h"
#include "screens/panel/TransferActions.h"

#include "files/FileError.h"
#include "http/TransportError.h"
#include "service/APIError.h"
#include "tests/support/QtPrinting.h"
#include "tests/support/Simulation.h"

#include <QDateTime>
#include <QMetaEnum>

namespace palvera {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

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
        {item(running), "", "Size not known yet", ""},
        {item(running, 5'000'000), "", "5.0 MB, size not known yet", ""},
        {item(running, 290'000'000, 1'000'000'000), "29%", "290.0 MB of 1.0 GB", ""},
        {item(running, 290'000'000, 1'000'000'000, 0.0), "29%", "290.0 MB of 1.0 GB · —", ""},
        {item(running, 290'000'000, 1'000'000'000, 10e6), "29%", "290.0 MB of 1.0 GB · 10.0 MB/s · 1m 11s left", ""},
        {item(running, 1'000'000, 1'000'000, 10e6), "100%", "1.0 MB of 1.0 MB · 10.0 MB/s", ""},
        {item(Item::Waiting{}), "", "", "Waiting"},
        {item(Item::Waiting{}, 1, 4), "25%", "", "Waiting · 1 KB of 1 KB"},
        {item(Item::Paused{}, 1, 4, 5.0), "25%", "", "Paused · 1 KB of 1 KB"},
        {item(Item::Done{}, 4'000'000, 4'000'000, 5.0), "100%", "", "Done · 4.0 MB"},
        {item(Item::Stopped{}, 1, 4, 5.0), "25%", "", "Stopped"},
        {item(Item::Failed{.message = "That file is empty."}), "", "", "That file is empty."},
        {item(retrying(75s), 1, 4, 5.0), "25%", "", "No. Trying again in 1 min, 15 sec"},
    };
    for (const auto& [shown, percent, figures, status] : cases) {
        auto row = transferRow(shown, now);
        EXPECT_EQ(row.percent, percent);
        EXPECT_EQ(row.figures, figures);
        EXPECT_EQ(row.status, status);
        EXPECT_EQ(row.detail, "") << "it would say the same";
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
    moving.rate = 6.2e6;
    auto upload = transferRow(moving, now);
    EXPECT_EQ(upload.samples.size(), 2);
    EXPECT_EQ(upload.graphFraction, 0.5);
    EXPECT_EQ(stopTitle(moving), "Stop this upload?");
    EXPECT_EQ(stopMessage(moving), "12.4 MB has gone up already. Stopping throws it away, so nothing half delivered is "
                                   "left in storage.");
    EXPECT_EQ(upload.spoken, "Picture, reel.mov, upload, running, 50 percent, 12.4 MB of 24.8 MB, 6.2 MB/s, 2s left");
    moving.kind = Item::Kind::download;
    moving.state = Item::Stopped{};
    moving.label.clear();
    auto download = transferRow(moving, now);
    EXPECT_EQ(download.graphFraction, 1);
    EXPECT_EQ(stopTitle(moving), "Stop this download?");
    EXPECT_EQ(stopMessage(moving), "12.4 MB has come down already. It is kept on disk.");
    EXPECT_EQ(download.spoken, "reel.mov, reel.mov, download, Stopped") << "without a label";
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

TEST(FootingTest, saysHowFastAllIsHowMuchIsLeftAndUntilWhen)
{
    const auto noon = QDateTime(QDate(2026, 11, 26), QTime(12, 0));
    const auto wall = Clock::WallTime(std::chrono::milliseconds(noon.toMSecsSinceEpoch()));
    const auto gb = 1'000'000'000LL;
    const auto at = [&](qint64 left, double rate) { return item(running, 2 * gb, 2 * gb + left, rate); };
    const auto waiting = item(Item::Waiting{}, 0, 18 * gb), paused = item(Item::Paused{}, 0, 5 * gb);
    const auto over = item(Item::Done{}, 7, 7, 9e6);
    const std::tuple<std::vector<Item>, QString> cases[] = {
        {{}, ""},
        {{over}, ""},
        {{over, paused}, "Paused"},
        {{waiting}, "18.0 GB left"},
        {{at(20 * gb, 20e6), over, paused}, "20.0 MB/s · 20.0 GB left · about 12:16"},
        {{at(10 * gb, 5e6), waiting, at(10 * gb, 15e6)}, "20.0 MB/s · 38.0 GB left · about 12:31"},
        {{at(1000 * gb, 20e6)}, "20.0 MB/s · 1.0 TB left · about 01:53 tomorrow"},
        {{at(4000 * gb, 20e6)}, "20.0 MB/s · 4.0 TB left · about 19:33 on Saturday"},
        {{at(4000 * gb, 2e6)}, "2.0 MB/s · 4.0 TB left"},
        {{at(20 * gb, 20e6), item(running)}, "20.0 MB/s · more than 20.0 GB left"},
        {{item(running)}, ""},
        {{item(running, 4, 4, 5e6)}, "5.0 MB/s"},
    };
    for (const auto& [items, text] : cases)
        EXPECT_EQ(footingText(footingOf(items), wall), text);
}

TEST(FootingTest, theWholeIsWhatIsInFlightAndHasASize)
{
    const auto percentOf = [](const std::vector<Item>& items) { return overallPercent(footingOf(items)); };
    EXPECT_EQ(percentOf({item(running)}), std::nullopt);
    EXPECT_EQ(percentOf({item(running, 10, 100), item(running), item(Item::Done{}, 500, 500),
                         item(Item::Retrying{}, 40, 100)}),
              25);
    EXPECT_EQ(percentOf({item(running, 200, 100), item(running, 0, 100)}), 50) << "no more than its size";
}

TEST(TransferActionsTest, areThoseThatItsStateAndItsKindAllow)
{
    using enum TransferAction::Value;
    const auto of = [](Item::State state, QString file = {}, Item::Kind kind = Item::Kind::upload) {
        auto made = item(std::move(state));
        made.file = std::move(file);
        made.kind = kind;
        return made;
    };
    const auto down = Item::Kind::download;
    auto intoBin = item(running);
    intoBin.target = TransferTarget::Bin{};
    const std::tuple<Item, QList<TransferAction::Value>, TransferAction::Value> cases[] = {
        {of(Item::Waiting{}, "f"),
         {StartNow, Pause, Stop, ShowInFolder, Open, ShowDeliverable, CopyName},
         ShowDeliverable},
        {of(Item::Waiting{.why = "x"}), {Pause, Stop, ShowDeliverable, CopyError, CopyName}, ShowDeliverable},
        {intoBin, {Pause, Stop, CopyName}, None},
        {of(running, "f", down), {Pause, Stop, ShowInFolder, ShowDeliverable, CopyName}, ShowDeliverable},
        {of(Item::Retrying{.message = "x"}),
         {StartNow, Pause, Stop, ShowDeliverable, CopyError, CopyName},
         ShowDeliverable},
        {of(Item::Paused{}), {Resume, Stop, ShowDeliverable, CopyName}, Resume},
        {of(Item::Failed{.message = "x"}), {TryAgain, ShowDeliverable, CopyError, CopyName, Remove}, TryAgain},
        {of(Item::Stopped{}), {TryAgain, ShowDeliverable, CopyName, Remove}, TryAgain},
        {of(Item::Done{}, "f"), {ShowInFolder, Open, ShowDeliverable, CopyName, Remove}, ShowDeliverable},
        {of(Item::Done{}, "f", down), {ShowInFolder, Open, ShowDeliverable, CopyName, Remove}, ShowInFolder}};
    for (const auto& [shown, actions, main] : cases) {
        EXPECT_EQ(actionsFor(shown), actions) << nameOf(shown.state).toStdString();
        EXPECT_EQ(mainActionFor(shown), main) << nameOf(shown.state).toStdString();
    }
}

TEST(SpeedTraceShapeTest, thePeakIsNamedInThousandsOrMillions)
{
    const std::pair<QList<double>, QString> cases[] = {
        {{}, "0K"},          {{0, 0}, "0K"},           {{850'000, 3}, "850K"},
        {{1'000'000}, "1M"}, {{12'400'000, 1}, "12M"}, {{1'500'000}, "2M"}};
    for (const auto& [samples, text] : cases)
        EXPECT_EQ(peakText(samples), text);
}

TEST(SpeedTraceShapeTest, thePeakTouchesTheTopAndWhatIsUnderWayUsesItsShareOfTheWidth)
{
    EXPECT_THAT(tracePoints({0, 50, 100}, 1, {200, 34}),
                ElementsAre(QPointF(0, 33), QPointF(100, 17), QPointF(200, 1)));
    EXPECT_THAT(tracePoints({0, 0}, 1, {200, 34}), ElementsAre(QPointF(0, 33), QPointF(200, 33)));
    EXPECT_TRUE(tracePoints({7}, 1, {200, 34}).isEmpty());
    EXPECT_EQ(tracePoints({1, 1, 1}, 0.5, {200, 34}).last().x(), 100);
    EXPECT_EQ(tracePoints({1, 1}, 0, {200, 34}).last().x(), 4) << "never less than a fiftieth";
    EXPECT_EQ(tracePoints({1, 1}, 7, {200, 34}).last().x(), 200);
}

TEST(SpeedTraceShapeTest, fastIsGreenAndSlowIsRed)
{
    for (const auto& [sample, hue] : {std::pair(100.0, 0.33), std::pair(50.0, 0.165), std::pair(0.0, 0.0)})
        EXPECT_NEAR(traceColor(sample, 100).hsvHueF(), hue, 0.001);
}

} // namespace
} // namespace palvera
