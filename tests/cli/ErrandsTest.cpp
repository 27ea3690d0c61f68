#include "cli/Errands.h"

#include "TestStream.h"
#include "cli/Commands.h"
#include "cli/DownloadErrand.h"
#include "cli/UploadErrand.h"
#include "transfers/TransfersHarness.h"

#include "async/TaskGroup.h"
#include "files/FileError.h"
#include "http/TransportError.h"

#include <QJsonDocument>

namespace palvera::cli {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

namespace {

Task<std::optional<QUuid>> beginUpload(Transfers& transfers, DeliverableUpload upload)
{
    co_return transfers.addUpload(std::move(upload));
}

/// A clock that is looked at a little after what happened.
struct LateClock final : Clock {
    Clock& real;

    explicit LateClock(Clock& clock) : real(clock) {}
    Moment now() const override { return real.now(); }
    WallTime wallNow() const override { return real.wallNow() + 1ms; }
    Task<void> sleepUntil(Moment moment) override { return real.sleepUntil(moment); }
};

/// Commands' errands on the model of transfers with scripted engines.
struct ErrandsTest : TransfersTest {
    TestStream out, error;
    Output output{Output::Style::json, out, error};
    LateClock clock{world.clock};
    std::shared_ptr<CancelFlag> stop = std::make_shared<CancelFlag>(), cutOff = std::make_shared<CancelFlag>();
    std::vector<std::unique_ptr<Errand>> errands;
    std::optional<Errands> all;

    /// An upload of a file of `content` to the row `row`.
    void upload(const QString& row, const QByteArray& content = "film")
    {
        DeliverableUpload asked{
            .file = file(row + ".mov"), .orgId = "org", .projectId = "salt", .deliverable = {.id = row}};
        writeFile(asked.file, content);
        const UploadErrand::Upload upload{
            .journalKey = row,
            .file = asked.file,
            .target = TransferTarget::Deliverable{"org", "salt", row},
            .begin = [asked](Transfers& transfers) { return beginUpload(transfers, asked); }};
        errands.push_back(std::make_unique<UploadErrand>(upload, journals));
    }
    Task<ExitCode> carriedOut()
    {
        const Errands::Environment environment{*model, output, clock, world.executor(), stop, cutOff};
        return all.emplace(environment, std::move(errands)).carryOut();
    }
    /// As the program runs a command: an interruption cancels it.
    ExitCode runInterruptedAfter(std::chrono::seconds time)
    {
        Outcome<ExitCode> ended;
        Outcome<void> whole;
        world.start(detail::keepOutcome(runUntilStopped(stop, detail::keepOutcome(carriedOut(), ended)), whole));
        world.run(world.clock.sleep(time));
        stop->stop();
        world.runUntil([&] { return isCancellation(whole.failure); });
        EXPECT_EQ(exitCodeFor(whole.failure), ExitCode::interrupted);
        return ended.value.value();
    }
    /// "done row-1", "failed row-2 why" and so on, without progress.
    std::vector<std::string> events() const
    {
        std::vector<std::string> said;
        for (const auto& line : out.written.split('\n')) {
            const auto event = QJsonDocument::fromJson(line).object();
            const QStringList words{event["event"].toString(), event["key"].toString(), event["message"].toString()};
            if (!event.isEmpty() && words.first() != "progress")
                said.push_back(words.join(' ').trimmed().toStdString());
        }
        return said;
    }
};

TEST_F(ErrandsTest, beginAFewAtOnceTellHowEachEndsAndEndWithTheWorst)
{
    upload("empty", "");
    for (int row = 1; row <= 7; ++row) {
        uploads.ends.push_back(row == 2 ? platformSays(403) : nullptr);
        upload(QString("row-%1").arg(row));
    }
    EXPECT_EQ(world.run(carriedOut()), ExitCode::failed);
    EXPECT_THAT(events(), UnorderedElementsAre("failed empty That file is empty.", "done row-1",
                                               "failed row-2 The platform says 403.", "done row-3", "done row-4",
                                               "done row-5", "done row-6", "done row-7"));
    EXPECT_EQ(uploads.requests.size(), 7u);
    EXPECT_EQ(elapsed(), 3) << "each takes a second, and there are three at once";
}

TEST_F(ErrandsTest, sayWhyAndWhenAnUploadIsTriedAgain)
{
    uploads.ends = {platformSays(503), nullptr};
    upload("row-1");
    EXPECT_EQ(world.run(carriedOut()), ExitCode::done);
    EXPECT_THAT(events(), ElementsAre("retrying row-1 The platform says 503.", "done row-1"));
    EXPECT_THAT(error.written.toStdString(), HasSubstr("“row-1.mov”: The platform says 503. Trying again in 10 s."));
}

TEST_F(ErrandsTest, ofSeveralQuestionsEachIsAskedAndNoneBlocksTheOthers)
{
    uploads.ends = {platformSays(409, "delivery_doubt"), platformSays(409, "delivery_doubt"), nullptr};
    for (const auto* row : {"row-1", "row-2", "row-3"})
        upload(row);
    EXPECT_EQ(world.run(carriedOut()), ExitCode::confirmationNeeded);
    EXPECT_THAT(events(), ElementsAre("failed row-1 The platform says 409.", "failed row-2 The platform says 409.",
                                      "done row-3"));
    EXPECT_THAT(error.written.toStdString(), HasSubstr("palvera-cli upload --confirmed org "));
    EXPECT_EQ(model->doubt(), std::nullopt);
}

TEST_F(ErrandsTest, anInterruptionKeepsWhatIsInFlightAndBeginsNoMore)
{
    for (const auto* row : {"row-1", "row-2", "row-3", "row-4"}) {
        upload(row);
        auto kept = journal(row);
        kept.filePath = disk.filePath(QString("%1.mov").arg(row));
        journals.saveJournal(kept);
    }
    EXPECT_EQ(runInterruptedAfter(3s), ExitCode::interrupted);
    EXPECT_EQ(elapsed(), 3);
    EXPECT_THAT(events(), UnorderedElementsAre("interrupted row-1", "interrupted row-2", "interrupted row-3",
                                               "interrupted row-4"));
    EXPECT_EQ(uploads.requests.size(), 3u);
    EXPECT_TRUE(journals.loadJournal("row-1"));
    EXPECT_THAT(error.written.toStdString(),
                AllOf(HasSubstr("palvera-cli: Interrupted.\n"), HasSubstr("Go on with: palvera-cli resume row-1")));
    EXPECT_THAT(error.written.toStdString(), Not(HasSubstr("row-4"))) << "it has not begun";
    EXPECT_TRUE(client.requests().empty()) << "the platform is told nothing";
}

TEST_F(ErrandsTest, chunksInFlightAreCutOffByAnInterruption)
{
    downloads.deafFor = 60s; // with its chunks
    client.handler = [](const HttpRequest&) {
        return HttpResponse{.status = 200, .body = R"({"url":"https://storage.test/1"})"};
    };
    Download download{.object = binObject(*api, "org", "a.mov"), .name = "a.mov", .folder = disk.path()};
    errands.push_back(std::make_unique<DownloadErrand>("a.mov", QJsonObject(), download));
    EXPECT_EQ(runInterruptedAfter(3s), ExitCode::interrupted);
    EXPECT_EQ(elapsed(), 3);
    EXPECT_THAT(events(), ElementsAre("interrupted a.mov"));
}

TEST(ExitCode, tellsFailuresApart)
{
    const std::pair<std::exception_ptr, ExitCode> cases[] = {
        {nullptr, ExitCode::done},
        {platformSays(401), ExitCode::notSignedIn},
        {platformSays(403), ExitCode::failed},
        {platformSays(0), ExitCode::failed},
        {platformSays(409, "delivery_doubt"), ExitCode::confirmationNeeded},
        {std::make_exception_ptr(TransportError(TransportError::Kind::connect, "no")), ExitCode::unreachable},
        {std::make_exception_ptr(std::runtime_error("no")), ExitCode::failed},
        {std::make_exception_ptr(FileError("no", EACCES)), ExitCode::failed},
        {std::make_exception_ptr(FileError("no", ENOSPC)), ExitCode::diskFull},
        {std::make_exception_ptr(FileError("no", EDQUOT)), ExitCode::diskFull},
    };
    for (const auto& [failure, code] : cases)
        EXPECT_EQ(exitCodeFor(failure), code) << describe(failure).toStdString();
}

TEST(ExitCode, ofSeveralFilesIsTheWorst)
{
    const ExitCode byGravity[] = {ExitCode::done,       ExitCode::confirmationNeeded, ExitCode::failed,
                                  ExitCode::diskFull,   ExitCode::notSignedIn,        ExitCode::unreachable,
                                  ExitCode::interrupted};
    for (std::size_t one = 1; one < std::size(byGravity); ++one) {
        EXPECT_EQ(worse(byGravity[one - 1], byGravity[one]), byGravity[one]);
        EXPECT_EQ(worse(byGravity[one], byGravity[one - 1]), byGravity[one]);
    }
}

} // namespace

} // namespace palvera::cli
