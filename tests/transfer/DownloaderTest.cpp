#include "transfer/Downloader.h"
#include "TransferTest.h"

#include "files/DestinationFile.h"
#include "files/FileError.h"
#include "service/APIError.h"
#include "transfer/Partial.h"

#include "support/FakeHttpClient.h"
#include "support/FileCalls.h"

namespace palvera {
namespace {

constexpr qint64 chunk = 1000;
constexpr qint64 slice = 200;
const QByteArray probeRange = "bytes=0-0";

/// Storage with one object.
struct Storage {
    QByteArray content = patterned(4 * chunk);
    /// What a test makes of the proper answer to a request for `range`.
    std::function<void(const QByteArray& range, HttpResponse&)> spoil = [](const auto&, auto&) {};
    /// How long the answers take that come to a lane.
    std::function<std::chrono::milliseconds(std::size_t lane)> latency = [](auto) { return 100ms; };
    bool isHeld = false;                  ///< a limit holds them up meanwhile
    std::optional<qint64> mostBytes = {}; ///< of each, before the connection breaks

    HttpResponse answer(const QByteArray& range) const
    {
        auto bounds = range.mid(6).split('-');
        auto first = bounds[0].toLongLong(), last = bounds[1].toLongLong();
        HttpResponse answer{.status = 206, .body = content.mid(first, last - first + 1)};
        answer.headers = {{"Content-Range", "bytes " + range.mid(6) + '/' + QByteArray::number(content.size())},
                          {"Content-Length", QByteArray::number(answer.body.size())},
                          {"ETag", "\"one\""}};
        spoil(range, answer);
        return answer;
    }
};

/// One run of the program, from its start to its end or its death.
struct Life {
    Simulation world;
    const Storage& storage;
    std::size_t lanes = 0;
    QByteArrayList ranges; ///< that were answered, the probe left out
    int expiries = 0;      ///< of the addresses that come, after the probe
    std::exception_ptr noRenewal;
    int renewals = 0;
    std::vector<DownloadProgress> progress;
    std::shared_ptr<CancelFlag> flag = std::make_shared<CancelFlag>();
    Downloader downloader{{.engine = world.executor(), .clock = world.clock, .storage = [this] { return lane(); }},
                          {.chunkSize = chunk, .sliceSize = slice}};

    explicit Life(const Storage& asked) : storage(asked) {}
    ~Life() { world.kill(); }

    std::unique_ptr<HttpClient> lane()
    {
        auto client = std::make_unique<FakeHttpClient>(world.clock);
        client->latency = storage.latency(lanes++);
        client->isHeld = storage.isHeld;
        client->mostBytes = storage.mostBytes;
        client->handler = [this](const HttpRequest& request) {
            EXPECT_EQ(request.url.chopped(renewals), "http://storage.test/object?signature=a%2Fb");
            const auto& range = request.headers.front().second;
            if (range != probeRange && renewals < expiries)
                return HttpResponse{.status = 403};
            if (range != probeRange)
                ranges.append(range);
            return storage.answer(range);
        };
        return client;
    }
    Task<void> downloading(const QString& destination)
    {
        DownloadRequest request{.address = "http://storage.test/object?signature=a%2Fb",
                                .destination = destination,
                                .source = "the object",
                                .flag = flag,
                                .onProgress = [this](const auto& now) { progress.push_back(now); }};
        if (expiries > 0)
            request.renewAddress = [this] { return renewed(); };
        return downloader.download(std::move(request));
    }
    Task<QByteArray> renewed()
    {
        co_await world.clock.sleep(50ms);
        if (noRenewal)
            std::rethrow_exception(noRenewal);
        co_return "http://storage.test/object?signature=a%2Fb" + QByteArray(++renewals, '+');
    }
    /// Says how the download ended: "" when it is whole.
    std::string download(const QString& destination)
    {
        return inWords(world.run(outcomeOf(downloading(destination))).failure);
    }
};

struct DownloaderTest : testing::Test {
    QTemporaryDir disk;
    QString path = disk.filePath("Master.mov");
    Storage storage;
    std::optional<Life> life; ///< the latest

    std::string download() { return life.emplace(storage).download(path); }
    std::set<qint64> recorded() const { return loadPartial(path).value_or(Partial{.done = {-1}}).done; }

    /// All else goes on for two seconds.
    void goOn() { life->world.run(life->world.clock.sleep(2s)); }
    /// The file is there and nothing else; takes it away.
    void expectWhole()
    {
        EXPECT_TRUE(readFile(path) == storage.content) << "the bytes differ";
        EXPECT_THAT(entriesOf(disk.path()), ElementsAre("Master.mov"));
        QFile::remove(path);
    }
    void expectWholeAfter(std::size_t requests)
    {
        EXPECT_EQ(download(), "");
        EXPECT_EQ(life->ranges.size(), requests);
        expectWhole();
    }
    /// As an earlier run left it.
    void leave(const Partial& partial)
    {
        QByteArray there(partial.total, '\0');
        for (auto index : partial.done)
            there.replace(index * chunk, chunk, storage.content.mid(index * chunk, chunk));
        writeFile(path, there);
        savePartial(path, partial);
    }
};

TEST_F(DownloaderTest, bringsAFileOfAnyLengthDownWholeAndKeepsOthersOutMeanwhile)
{
    storage.spoil = [this](const auto& range, auto&) {
        if (range != probeRange)
            EXPECT_THROW(DestinationFile::open(path), FileError);
    };
    for (qint64 size : {chunk - 1, chunk, 3 * chunk + 125}) {
        storage.content = patterned(size);
        expectWholeAfter(std::size_t((size + chunk - 1) / chunk));
    }
    storage.content = patterned(chunk);
    storage.spoil = [this](const auto&, auto& answer) { // ignores the range
        answer = {.status = 200, .headers = {{"Content-Length", "1000"}}, .body = storage.content};
    };
    expectWholeAfter(1);
}

TEST_F(DownloaderTest, startsNoWaveOfEightBeforeTheSlowestChunkOfTheLastIsThereAndSaysOnceASecondWhatIs)
{
    storage.content = patterned(10 * chunk);
    storage.spoil = [refused = 0](const auto& range, auto& answer) mutable {
        if (range == "bytes=3000-3999" && ++refused <= 2)
            answer.status = 503;
    };
    EXPECT_EQ(download(), "");
    EXPECT_THAT(life->ranges.mid(8),
                ElementsAre("bytes=3000-3999", "bytes=3000-3999", "bytes=8000-8999", "bytes=9000-9999"));
    EXPECT_EQ(life->world.clock.elapsed(), 100ms + (100ms + 1s + 100ms + 2s + 100ms) + 100ms);
    const DownloadProgress none{.total = 10 * chunk}, all{.received = 10 * chunk, .total = 10 * chunk};
    auto some = none;
    some.received = 7 * chunk;
    some.bytesPerSecond = 7 * chunk; // in the first second
    some.trouble = Trouble{"Storage answered 503 on a chunk.", 2};
    auto stuck = some;
    stuck.bytesPerSecond = 0;
    stuck.trouble->attempt = 3;
    EXPECT_EQ(life->progress, (std::vector{none, some, stuck, stuck, all}));
    expectWhole();
}

TEST_F(DownloaderTest, anAddressThatExpiresIsAskedForAgainOnceForAllLanesUnlessTheUserMustSignIn)
{
    for (int expiries : {1, 2}) {
        life.emplace(storage).expiries = expiries;
        EXPECT_EQ(life->download(path), "");
        EXPECT_EQ(life->renewals, expiries);
        expectWhole();
    }
    life.emplace(storage).expiries = 1;
    life->noRenewal = std::make_exception_ptr(APIError(401, "Sign in first."));
    EXPECT_EQ(life->download(path), "Sign in first.");
    EXPECT_LT(life->world.clock.elapsed(), 1s);
}

TEST_F(DownloaderTest, aChunkThatCrawlsIsFetchedByALaneThatIsDone)
{
    storage.content = patterned(10 * chunk);
    storage.latency = [](auto lane) { return lane == 3 ? 60s : 2s; };
    EXPECT_EQ(download(), "");
    EXPECT_LT(life->world.clock.elapsed(), 2s + (2s + 300ms + 2s) + 2s);
    EXPECT_EQ(life->ranges.count("bytes=3000-3999"), 1);
    expectWhole();
    storage.isHeld = true;
    EXPECT_EQ(download(), "");
    EXPECT_GT(life->world.clock.elapsed(), 60s) << "what a limit holds up does not crawl";
    EXPECT_FALSE(std::ranges::any_of(life->progress, [](const auto& now) { return now.trouble.has_value(); }));
    expectWhole();
}

TEST_F(DownloaderTest, goesOnFromARecordThatFitsAndStartsOverFromAnyOther)
{
    const Partial good{.done = {0, 2}, .total = 4 * chunk, .tag = "\"one\""};
    const std::tuple<const char*, std::function<void()>, qint64> cases[] = {
        {"half of it", [&] { leave(good); }, 2},
        {"all of it", [&] { leave({.done = {0, 1, 2, 3}, .total = 4 * chunk, .tag = "\"one\""}); }, 0},
        {"another object", [&] { leave({.done = {0, 2}, .total = 4 * chunk, .tag = "\"two\""}); }, 4},
        {"a cut file", [&] { leave(good), QFile::resize(path, 2500); }, 4},
        {"no record", [&] { leave(good), removePartial(path); }, 4},
    };
    for (const auto& [name, prepare, missing] : cases) {
        SCOPED_TRACE(name);
        prepare();
        expectWholeAfter(std::size_t(missing));
        EXPECT_EQ(life->progress.front().received, (4 - missing) * chunk);
    }
}

TEST_F(DownloaderTest, listsNoChunkBeforeItIsOnTheDiskAndKeepsTheRecordUntilAllAre)
{
    storage.content = patterned(2 * chunk);
    storage.latency = [](auto lane) { return std::chrono::milliseconds(100 * (lane + 1)); };
    FileCalls calls;
    calls.whileSyncing = [this] { goOn(); }; // the second chunk, the last, comes while the disk is busy with the first
    EXPECT_EQ(download(), "");
    std::string order;
    for (const auto& call : calls.all()) {
        if (call.ends_with("/Master.mov"))
            order += call.starts_with("write") ? " write" : " sync";
        if (call.ends_with("/Master.mov.pvpart"))
            order += " record";
    }
    EXPECT_EQ(order, " record write sync write record sync record");
    expectWhole();
}

TEST_F(DownloaderTest, takesNoChunkForDoneThatTheDiskRefused)
{
    storage.latency = [](auto lane) { return std::chrono::milliseconds(100 * (lane + 1)); };
    for (qint64 size : {slice - 1, 4 * chunk})
        for (std::string call : {"write ", "fdatasync "}) {
            SCOPED_TRACE(call);
            storage.content = patterned(size);
            {
                FileCalls calls;
                calls.fail(call + path.toStdString(), ENOSPC);
                calls.whileSyncing = [this] { goOn(); }; // all has come when the disk says so
                EXPECT_THAT(download(), HasSubstr("cannot be written"));
                EXPECT_LT(life->world.clock.elapsed(), 5s) << "no other attempt mends that";
            }
            EXPECT_THAT(recorded(), IsEmpty());
            expectWholeAfter(std::size_t((size + chunk - 1) / chunk));
        }
}

TEST_F(DownloaderTest, endsBeforeItWritesAnythingWhenThereIsNoFile)
{
    const std::pair<HttpResponse, std::string> cases[] = {
        {{.status = 404, .body = "<Error/>"}, "That file could not be reached (storage answered 404)."},
        {{.status = 302}, "That file could not be reached (storage answered 302)."},
        {{.status = 416, .headers = {{"Content-Range", "bytes */0"}}}, "That file is empty."},
    };
    for (const auto& [refusal, message] : cases) {
        storage.spoil = [given = refusal](const auto&, auto& answer) { answer = given; };
        EXPECT_EQ(download(), message);
        EXPECT_FALSE(QFile::exists(path) || loadPartial(path));
    }
}

TEST_F(DownloaderTest, triesAChunkFourTimesUnlessOnlyTheUserCanMendItSaysWhyAndRecordsTheOthers)
{
    const std::pair<void (*)(HttpResponse&), std::string> cases[] = {
        {[](auto& answer) { answer.status = 403; }, "Storage answered 403 on a chunk."},
        {[](auto& answer) { answer.headers.first().second = "bytes 7-1006/4000"; },
         "Storage sent other bytes than those asked for."},
        {[](auto& answer) { answer = {.status = 206, .body = answer.body.first(999)}; },
         "Storage sent 999 bytes of a chunk of 1000."},
        {[](auto& answer) { answer = {.status = 200, .body = answer.body + "x"}; },
         "The server's answer is too large."},
        {[](auto&) { throw TransportError(TransportError::Kind::broken, "The connection was cut."); },
         "The connection was cut."},
    };
    for (const auto& [spoil, message] : cases) {
        storage.spoil = [apply = spoil](const auto& range, auto& answer) {
            if (range == "bytes=2000-2999")
                apply(answer);
        };
        EXPECT_EQ(download(), message);
        EXPECT_EQ(life->ranges.size(), 3 + 4);
        EXPECT_EQ(life->world.clock.elapsed(), 100ms + 4 * 100ms + 7s) << message; // waits of 1, 2 and 4 s
        EXPECT_THAT(recorded(), ElementsAre(0, 1, 3));
        EXPECT_EQ(readFile(path).size(), storage.content.size());
        QFile::remove(path);
    }
    storage.spoil = [](const auto& range, auto&) {
        if (range != probeRange)
            throw TransportError(TransportError::Kind::untrusted, "The certificate has expired.");
    };
    EXPECT_EQ(download(), "The certificate has expired.");
    EXPECT_LT(life->world.clock.elapsed(), 1s);
}

TEST_F(DownloaderTest, goesOnInAChunkWhoseConnectionBreaksAsLongAsMoreOfItComes)
{
    storage.content = patterned(chunk);
    storage.mostBytes = slice;
    EXPECT_EQ(download(), "");
    EXPECT_THAT(life->ranges,
                ElementsAre("bytes=0-999", "bytes=200-999", "bytes=400-999", "bytes=600-999", "bytes=800-999"));
    EXPECT_EQ(life->world.clock.elapsed(), 100ms + 5 * 100ms + 4s);
    expectWhole();
    storage.mostBytes = slice - 1;
    EXPECT_EQ(download(), "The connection was cut.");
    EXPECT_EQ(life->ranges.back(), "bytes=597-999") << "of a line that brings too little, four attempts";
    storage.mostBytes = slice;
    storage.spoil = [](const auto& range, auto& answer) {
        if (range != probeRange)
            answer.headers.clear(); // it may be any part of the file
    };
    EXPECT_EQ(download(), "The connection was cut.");
    EXPECT_THAT(life->ranges, ElementsAre("bytes=0-999", "bytes=0-999", "bytes=0-999", "bytes=0-999"));
}

TEST_F(DownloaderTest, noLaneGoesOnWithAFileThatChanged)
{
    storage.spoil = [](const auto& range, auto& answer) {
        if (range == "bytes=3000-3999")
            answer.headers.last().second = "\"two\"";
        else if (range != probeRange)
            answer.status = 503; // would be tried again in a second
    };
    EXPECT_EQ(download(), "The file changed in storage while it was being downloaded. Download it again.");
    EXPECT_EQ(life->ranges.size(), 4);
    EXPECT_EQ(life->world.clock.elapsed(), 200ms);
    EXPECT_THAT(recorded(), IsEmpty());
}

TEST_F(DownloaderTest, finishesTheWaveThatRunsWhenItIsStopped)
{
    storage.content = patterned(20 * chunk);
    storage.spoil = [this](const auto&, auto&) {
        if (life->ranges.size() == 12) // in the second wave
            life->flag->stop();
    };
    EXPECT_EQ(download(), "cancelled");
    EXPECT_EQ(recorded().size(), 16U);
    expectWholeAfter(4);
}

TEST_F(DownloaderTest, losesNothingWhenItDiesAtAnyRecord)
{
    storage.content = patterned(20 * chunk + 7);
    storage.latency = [](auto lane) { return std::chrono::milliseconds(20 + 17 * (lane * 5 % 9)); };
    std::set<std::size_t> met;
    for (std::size_t kills = 1; kills <= 21; ++kills) {
        std::set<qint64> safe;
        life.emplace(storage);
        life->world.start(life->downloading(path));
        life->world.runUntil([&] {
            auto partial = loadPartial(path);
            safe = partial ? partial->done : std::set<qint64>();
            return safe.size() >= kills;
        });
        met.insert(safe.size());
        for (qint64 index : safe)
            EXPECT_TRUE(readFile(path).mid(index * chunk, chunk) == storage.content.mid(index * chunk, chunk)) << index;
        expectWholeAfter(21 - safe.size());
    }
    EXPECT_GE(met.size(), 18U) << "the deaths were to come at different records";
}

} // namespace
} // namespace palvera
