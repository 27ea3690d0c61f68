#include "cli/Errands.h"

#include "TestStream.h"
#include "cli/DownloadErrand.h"
#include "cli/UploadErrand.h"
#include "transfers/TransfersHarness.h"

#include <QJsonDocument>

namespace palvera::cli {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

/// Commands' errands on the model of transfers with scripted engines.
Task<std::optional<QUuid>> beginUpload(Transfers& transfers, DeliverableUpload upload)
{
    co_return transfers.addUpload(std::move(upload));
}

struct ErrandsTest : TransfersTest {
    TestStream out, error;
    Output output{Output::Style::json, out, error};
    std::shared_ptr<CancelFlag> stop = std::make_shared<CancelFlag>();
    std::shared_ptr<CancelFlag> cutOff = std::make_shared<CancelFlag>();
    bool stopOnInterrupt = false;
    std::vector<std::unique_ptr<Errand>> errands;
    std::optional<Errands> all;

    /// An upload of one file to the row `row`.
    void upload(const QString& row, const QByteArray& content = "film")
    {
        DeliverableUpload asked{
            .file = file(row + u".mov"_s), .orgId = u"org"_s, .projectId = u"salt"_s, .deliverable = {.id = row}};
        QFile written(asked.file);
        EXPECT_TRUE(written.open(QIODevice::WriteOnly));
        written.write(content);
        errands.push_back(std::make_unique<UploadErrand>(
            UploadErrand::Upload{.journalKey = row,
                                 .file = asked.file,
                                 .target = TransferTarget::Deliverable{u"org"_s, u"salt"_s, row},
                                 .begin = [asked](Transfers& transfers) { return beginUpload(transfers, asked); }},
            journals));
    }
    Task<ExitCode> carriedOut()
    {
        all.emplace(Errands::Environment{.transfers = *model,
                                         .output = output,
                                         .clock = world.clock,
                                         .mainThread = world.executor(),
                                         .stop = stop,
                                         .cutOff = cutOff,
                                         .stopOnInterrupt = stopOnInterrupt},
                    std::move(errands));
        return all->carryOut();
    }
    /// As the program runs a command: an interruption cancels it.
    ExitCode runInterruptedAfter(std::chrono::seconds time)
    {
        std::optional<ExitCode> ended;
        auto keep = [](Task<ExitCode> command, std::optional<ExitCode>& code) -> Task<void> {
            code = co_await std::move(command);
        };
        auto interrupt = [](Clock& clock, std::chrono::seconds after, std::shared_ptr<CancelFlag> flag) -> Task<void> {
            co_await clock.sleep(after);
            flag->stop();
        };
        world.start(interrupt(world.clock, time, stop));
        EXPECT_TRUE(world.run(outcomeOf(runUntilStopped(stop, keep(carriedOut(), ended)))).failure);
        return ended.value_or(ExitCode::usage);
    }
    /// "done row-1", "failed row-2: why" and so on, without progress.
    std::vector<std::string> events() const
    {
        std::vector<std::string> said;
        for (const auto& line : out.written.split('\n')) {
            const auto event = QJsonDocument::fromJson(line).object();
            auto kind = event[u"event"_s].toString();
            auto message = event[u"message"_s].toString();
            if (!event.isEmpty() && kind != u"progress"_s)
                said.push_back(
                    (kind + u' ' + event[u"key"_s].toString() + (message.isEmpty() ? QString() : u": "_s + message))
                        .toStdString());
        }
        return said;
    }
};

TEST_F(ErrandsTest, tellHowEachEndsAndEndWithTheWorst)
{
    uploads.ends = {nullptr, platformSays(403), nullptr};
    upload(u"row-1"_s);
    upload(u"row-2"_s);
    upload(u"empty"_s, "");
    upload(u"row-3"_s);
    EXPECT_EQ(world.run(carriedOut()), ExitCode::failed);
    EXPECT_THAT(events(), testing::UnorderedElementsAre("failed empty: That file is empty.", "done row-1",
                                                        "failed row-2: The platform says 403.", "done row-3"));
    EXPECT_EQ(uploads.requests.size(), 3u);
}

TEST_F(ErrandsTest, beginAFewAtOnceAndTheNextWhenOneEnds)
{
    for (int row = 1; row <= 8; ++row) {
        uploads.ends.push_back(nullptr);
        upload(u"row-%1"_s.arg(row));
    }
    qsizetype most = 0;
    QObject::connect(&*model, &Transfers::inFlightChanged,
                     [&] { most = std::max<qsizetype>(most, model->inFlightCount()); });
    EXPECT_EQ(world.run(carriedOut()), ExitCode::done);
    EXPECT_EQ(most, Errands::mostAtOnce);
    EXPECT_EQ(events().size(), 8u);
    EXPECT_EQ(elapsed(), 3) << "each takes a second";
}

TEST_F(ErrandsTest, sayWhyAndWhenAnUploadIsTriedAgain)
{
    uploads.ends = {platformSays(503), nullptr};
    upload(u"row-1"_s);
    EXPECT_EQ(world.run(carriedOut()), ExitCode::done);
    EXPECT_THAT(events(), ElementsAre("retrying row-1: The platform says 503.", "done row-1"));
    EXPECT_THAT(error.written.toStdString(), HasSubstr("“row-1.mov”: The platform says 503. Trying again in 10 s."));
}

TEST_F(ErrandsTest, ofSeveralQuestionsEachIsAskedAndNoneBlocksTheOthers)
{
    uploads.ends = {platformSays(409, u"delivery_doubt"_s), platformSays(409, u"delivery_doubt"_s), nullptr};
    for (const auto* row : {"row-1", "row-2", "row-3"})
        upload(QString::fromLatin1(row));
    EXPECT_EQ(world.run(carriedOut()), ExitCode::confirmationNeeded);
    EXPECT_THAT(events(), ElementsAre("failed row-1: The platform says 409.", "failed row-2: The platform says 409.",
                                      "done row-3"));
    EXPECT_THAT(error.written.toStdString(), HasSubstr("row-2.mov --confirmed"));
    EXPECT_EQ(model->doubt(), std::nullopt);
}

TEST_F(ErrandsTest, anInterruptionKeepsWhatIsInFlightAndBeginsNoMore)
{
    for (const auto* row : {"row-1", "row-2", "row-3", "row-4"}) {
        upload(QString::fromLatin1(row));
        journal(QString::fromLatin1(row));
    }
    EXPECT_EQ(runInterruptedAfter(3s), ExitCode::interrupted);
    EXPECT_EQ(elapsed(), 3);
    EXPECT_THAT(events(), testing::UnorderedElementsAre("interrupted row-1", "interrupted row-2", "interrupted row-3",
                                                        "interrupted row-4"));
    EXPECT_EQ(uploads.requests.size(), 3u);
    EXPECT_TRUE(journals.loadJournal(u"row-1"_s));
    EXPECT_THAT(error.written.toStdString(), HasSubstr("palvera-cli: Interrupted.\n"));
    EXPECT_THAT(error.written.toStdString(), HasSubstr("Go on with: palvera-cli resume row-1"));
    EXPECT_THAT(error.written.toStdString(), Not(HasSubstr("row-4"))) << "it has not begun";
    EXPECT_TRUE(client.requests().empty()) << "the platform is told nothing";
}

TEST_F(ErrandsTest, anInterruptionGivesUpWhatIsInFlightWhenThatIsWanted)
{
    stopOnInterrupt = true;
    upload(u"row-1"_s);
    journal(u"row-1"_s);
    EXPECT_EQ(runInterruptedAfter(3s), ExitCode::interrupted);
    EXPECT_THAT(events(), ElementsAre("stopped row-1"));
    EXPECT_EQ(journals.loadJournal(u"row-1"_s), std::nullopt);
    EXPECT_THAT(asked(), testing::Contains("POST orgs/org/projects/salt/deliverables/row-1/transfer/abort"));
}

/// Ends its chunks in its own time, whatever the flag says.
Task<void> finishChunks(Clock& clock)
{
    co_await clock.sleep(60s);
    throwCancelled();
}

TEST_F(ErrandsTest, chunksThatTakeTooLongAreCutOffAfterAnInterruption)
{
    auto surroundings = environment();
    surroundings.download = [this](DownloadRequest) { return runUntilStopped(cutOff, finishChunks(world.clock)); };
    model.emplace(surroundings);
    client.handler = [](const HttpRequest&) {
        return HttpResponse{.status = 200, .body = R"({"url":"https://storage.test/1"})"};
    };
    Download asked{.object = binObject(*api, u"org"_s, u"a.mov"_s), .name = u"a.mov"_s, .folder = disk.path()};
    errands.push_back(std::make_unique<DownloadErrand>(u"a.mov"_s, QJsonObject(), asked));
    EXPECT_EQ(runInterruptedAfter(3s), ExitCode::interrupted);
    EXPECT_EQ(elapsed(), 8);
    EXPECT_THAT(events(), ElementsAre("interrupted a.mov"));
}

} // namespace

} // namespace palvera::cli
