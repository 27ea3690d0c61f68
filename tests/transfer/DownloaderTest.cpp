#include "transfer/Downloader.h"

#include "async/TaskGroup.h"
#include "service/APIError.h"
#include "transfer/Partial.h"

#include "http/TransportError.h"
#include "support/FakeHttpClient.h"
#include "support/QtPrinting.h"
#include "support/Simulation.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <csignal>

#include <sys/resource.h>

namespace palvera {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr qint64 chunk = 1000;

QByteArray contentOf(qint64 size, char seed = 1)
{
    QByteArray content(size, Qt::Uninitialized);
    for (qsizetype i = 0; i < size; ++i)
        content[i] = char(i * 31 + i / 251 + seed);
    return content;
}

QByteArray fileAt(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray rangeOf(const HttpRequest& request)
{
    for (const auto& [name, value] : request.headers)
        if (name == "Range")
            return value;
    return {};
}

/// Storage with one object, which answers ranges as it should unless a test says otherwise.
struct Storage {
    QByteArray content = contentOf(4 * chunk);
    QByteArray tag = "\"one\"";
    std::function<std::optional<HttpResponse>(const HttpRequest&)> trouble = {};

    HttpResponse answer(const HttpRequest& request) const
    {
        if (trouble)
            if (auto answer = trouble(request))
                return *answer;
        return properly(request);
    }

    HttpResponse properly(const HttpRequest& request) const
    {
        auto bounds = rangeOf(request).mid(6).split('-');
        auto first = bounds.value(0).toLongLong(), last = bounds.value(1).toLongLong();
        HttpResponse answer{.status = 206, .body = content.mid(first, last - first + 1)};
        answer.headers = {
            {"Content-Range", "bytes " + rangeOf(request).mid(6) + '/' + QByteArray::number(content.size())},
            {"Content-Length", QByteArray::number(answer.body.size())},
            {"ETag", tag}};
        return answer;
    }
};

class Forward final : public HttpClient {
public:
    Forward(HttpClient& to, const std::function<void()>& beforeSending) : m_to(to), m_beforeSending(beforeSending) {}
    Task<HttpResponse> send(HttpRequest request) override
    {
        if (m_beforeSending)
            m_beforeSending();
        return m_to.send(std::move(request));
    }

private:
    HttpClient& m_to;
    const std::function<void()>& m_beforeSending;
};

/// One run of the program, from its start to its end or its death.
struct Life {
    Simulation world;
    FakeHttpClient client{world.clock};
    std::function<void()> beforeSending = {};
    std::vector<DownloadProgress> progress;
    std::shared_ptr<CancelFlag> flag = std::make_shared<CancelFlag>();
    Downloader downloader{{.engine = world.executor(),
                           .clock = world.clock,
                           .storage = [this] { return std::make_unique<Forward>(client, beforeSending); }},
                          {.chunkSize = chunk, .sliceSize = 400}};

    explicit Life(const Storage& storage)
    {
        client.latency = 100ms;
        client.handler = [&storage](const HttpRequest& request) { return storage.answer(request); };
    }
    ~Life() { world.kill(); }
    Life(const Life&) = delete;
    Life& operator=(const Life&) = delete;

    Task<void> downloading(const QString& destination)
    {
        return downloader.download({.address = "http://storage.test/object?signature=a%2Fb",
                                    .destination = destination,
                                    .source = "the object",
                                    .flag = flag,
                                    .onProgress = [this](const auto& now) { progress.push_back(now); }});
    }
    /// Says how the download ended: "" when it is whole.
    std::string download(const QString& destination)
    {
        auto failure = world.run(outcomeOf(downloading(destination))).failure;
        return !failure ? "" : isCancellation(failure) ? "cancelled" : describe(failure).toStdString();
    }

    /// The ranges of the chunks asked for, the probe left out.
    QList<QByteArray> ranges() const
    {
        QList<QByteArray> asked;
        for (const auto& request : client.requests())
            asked.append(rangeOf(request));
        if (!asked.isEmpty())
            asked.removeFirst();
        return asked;
    }
};

struct DownloaderTest : testing::Test {
    QTemporaryDir disk;
    Storage storage;
    QString path = disk.filePath("Master.mov");

    void expectWhole()
    {
        EXPECT_TRUE(fileAt(path) == storage.content) << "the bytes differ";
        EXPECT_THAT(QDir(disk.path()).entryList(QDir::Files | QDir::Hidden), ElementsAre("Master.mov"));
    }
    /// As an earlier run left it.
    void leave(const Partial& partial)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        QByteArray there(partial.total, '\0');
        for (auto index : partial.done)
            there.replace(index * chunk, chunk, storage.content.mid(index * chunk, chunk));
        file.write(there);
        savePartial(path, partial);
    }
};

TEST_F(DownloaderTest, cutsTheFileIntoChunksOfTheRightBytes)
{
    struct Case {
        qint64 size;
        QList<QByteArray> ranges;
    } cases[] = {{1, {"bytes=0-0"}},
                 {chunk, {"bytes=0-999"}},
                 {2 * chunk, {"bytes=0-999", "bytes=1000-1999"}},
                 {3 * chunk + 125, {"bytes=0-999", "bytes=1000-1999", "bytes=2000-2999", "bytes=3000-3124"}}};
    for (const auto& [size, ranges] : cases) {
        storage.content = contentOf(size);
        Life life(storage);
        EXPECT_EQ(life.download(path), "");
        EXPECT_EQ(life.ranges(), ranges) << size;
        EXPECT_EQ(rangeOf(life.client.requests().front()), "bytes=0-0");
        EXPECT_EQ(life.client.requests().back().url, "http://storage.test/object?signature=a%2Fb");
        expectWhole();
        QFile::remove(path);
    }
}

TEST_F(DownloaderTest, fetchesInWavesOfEight)
{
    storage.content = contentOf(20 * chunk);
    Life life(storage);
    EXPECT_EQ(life.download(path), "");
    EXPECT_EQ(life.client.mostInFlight(), 8);
    EXPECT_EQ(life.world.clock.elapsed(), 400ms); // the probe and three waves
    EXPECT_EQ(life.ranges().size(), 20);
    expectWhole();
}

TEST_F(DownloaderTest, startsNoWaveBeforeTheSlowestChunkOfTheLastIsThere)
{
    storage.content = contentOf(10 * chunk);
    int refused = 0;
    storage.trouble = [&](const HttpRequest& request) -> std::optional<HttpResponse> {
        if (rangeOf(request) == "bytes=3000-3999" && ++refused <= 2)
            return HttpResponse{.status = 503};
        return std::nullopt;
    };
    Life life(storage);
    EXPECT_EQ(life.download(path), "");
    EXPECT_EQ(life.ranges().mid(8),
              QList<QByteArray>({"bytes=3000-3999", "bytes=3000-3999", "bytes=8000-8999", "bytes=9000-9999"}));
    EXPECT_EQ(life.world.clock.elapsed(), 100ms + (100ms + 1s + 100ms + 2s + 100ms) + 100ms);
    expectWhole();
}

TEST_F(DownloaderTest, reportsWhatIsOnTheDiskAboutOnceASecond)
{
    storage.content = contentOf(24 * chunk - 400);
    Life life(storage);
    life.client.latency = 600ms;
    EXPECT_EQ(life.download(path), "");
    const auto total = storage.content.size();
    ASSERT_GE(life.progress.size(), 4U);
    EXPECT_EQ(life.progress.front(), (DownloadProgress{.received = 0, .total = total}));
    EXPECT_EQ(life.progress.back(), (DownloadProgress{.received = total, .total = total}));
    // The first wave is reported at once, the second is too close to it, the third comes 1.2 s after.
    EXPECT_EQ(life.progress.size(), 4U);
    EXPECT_EQ(life.progress[1].received, 8 * chunk);
    EXPECT_NEAR(*life.progress[1].bytesPerSecond, 8 * chunk / 0.6, 1);
    EXPECT_EQ(life.progress[2].received, total);
    EXPECT_NEAR(*life.progress[2].bytesPerSecond, double(total - 8 * chunk) / 1.2, 1);
}

TEST_F(DownloaderTest, goesOnFromARecordThatFits)
{
    leave({.done = {0, 2}, .total = 4 * chunk});
    Life life(storage);
    EXPECT_EQ(life.download(path), "");
    EXPECT_EQ(life.ranges(), QList<QByteArray>({"bytes=1000-1999", "bytes=3000-3999"}));
    EXPECT_EQ(life.progress.front().received, 2 * chunk);
    expectWhole();
}

TEST_F(DownloaderTest, fetchesNothingWhenTheRecordListsAll)
{
    leave({.done = {0, 1, 2, 3}, .total = 4 * chunk, .tag = "\"one\"", .source = "the object"});
    Life life(storage);
    EXPECT_EQ(life.download(path), "");
    EXPECT_THAT(life.ranges(), IsEmpty());
    EXPECT_EQ(life.progress.back().received, 4 * chunk);
    expectWhole();
}

TEST_F(DownloaderTest, startsOverWhenTheRecordDoesNotFit)
{
    const Partial good{.done = {0, 2}, .total = 4 * chunk, .tag = "\"one\""};
    std::pair<const char*, std::function<void()>> cases[] = {
        {"another object of that size", [&] { leave({.done = {0, 2}, .total = 4 * chunk, .tag = "\"two\""}); }},
        {"no file", [&] { leave(good), QFile::remove(path); }},
        {"a cut file", [&] { leave(good), QFile::resize(path, 2500); }},
        {"no record", [&] { leave(good), removePartial(path); }},
        {"a broken record",
         [&] {
             leave(good);
             QFile record(recordPath(path));
             ASSERT_TRUE(record.open(QIODevice::WriteOnly));
             record.write(R"({"done":[0,2.5],"total":4000})");
         }},
    };
    for (const auto& [name, prepare] : cases) {
        prepare();
        Life life(storage);
        EXPECT_EQ(life.download(path), "") << name;
        EXPECT_EQ(life.ranges().size(), 4) << name;
        expectWhole();
    }
}

TEST_F(DownloaderTest, endsInTheExactMessage)
{
    auto always = [](HttpResponse answer) { return [answer](const HttpRequest&) { return std::optional(answer); }; };
    auto chunksOnly = [this](std::function<HttpResponse(HttpResponse)> spoil) {
        int met = 0;
        return [this, spoil, met](const HttpRequest& request) mutable -> std::optional<HttpResponse> {
            if (met++ == 0)
                return std::nullopt; // the probe
            return spoil(storage.properly(request));
        };
    };
    auto header = [](HttpResponse answer, const QByteArray& name, const QByteArray& value) {
        for (auto& each : answer.headers)
            if (each.first == name)
                each.second = value;
        return answer;
    };
    struct Case {
        const char* name;
        decltype(storage.trouble) trouble;
        std::string message;
        qsizetype requests; ///< beside the probe
    } cases[] = {
        {"gone", always({.status = 404, .body = "<Error/>"}), "That file could not be reached (storage answered 404).",
         0},
        {"moved", always({.status = 302}), "That file could not be reached (storage answered 302).", 0},
        {"empty", always({.status = 416, .headers = {{"Content-Range", "bytes */0"}}}), "That file is empty.", 0},
        {"refused", chunksOnly([](auto) { return HttpResponse{.status = 403, .body = "<Error/>"}; }),
         "Storage answered 403 on a chunk.", 16},
        {"other bytes", chunksOnly([&](auto a) { return header(a, "Content-Range", "bytes 7-1006/4000"); }),
         "Storage sent other bytes than those asked for.", 16},
        {"cut short", chunksOnly([](auto a) { return HttpResponse{.status = 206, .body = a.body.first(999)}; }),
         "Storage sent 999 bytes of a chunk of 1000.", 16},
        {"the whole file", chunksOnly([this](auto) {
             return HttpResponse{.status = 200, .headers = {{"Content-Length", "4000"}}, .body = storage.content};
         }),
         "Storage sent 4000 bytes of a chunk of 1000.", 16},
        {"a page", chunksOnly([](auto) { return HttpResponse{.status = 200, .body = "<html>"}; }),
         "Storage sent 6 bytes of a chunk of 1000.", 16},
        {"longer than it says",
         chunksOnly([this](auto) { return HttpResponse{.status = 200, .body = storage.content}; }),
         "The server's answer is too large.", 16},
        {"grown", chunksOnly([&](auto a) { return header(a, "Content-Range", "bytes 0-999/4001"); }),
         "The file changed in storage while it was being downloaded. Download it again.", 4},
        {"replaced", chunksOnly([&](auto a) { return header(a, "ETag", "\"two\""); }),
         "The file changed in storage while it was being downloaded. Download it again.", 4},
        {"network down", chunksOnly([](auto) -> HttpResponse {
             throw TransportError(TransportError::Kind::broken, "The connection was cut.");
         }),
         "The connection was cut.", 16},
    };
    for (auto& each : cases) {
        storage.trouble = each.trouble;
        Life life(storage);
        EXPECT_EQ(life.download(path), each.message) << each.name;
        EXPECT_EQ(life.ranges().size(), each.requests) << each.name;
        if (each.requests == 16) {
            EXPECT_EQ(life.world.clock.elapsed(), 100ms + 4 * 100ms + 7s) << each.name; // waits of 1, 2 and 4 s
        }
        auto partial = loadPartial(path);
        EXPECT_TRUE(!partial || partial->done.empty()) << each.name;
        EXPECT_EQ(life.client.inFlight(), 0) << each.name;
        QFile::remove(path);
        removePartial(path);
    }
}

TEST_F(DownloaderTest, takesTheLengthForTheSizeWhenStorageIgnoresTheRange)
{
    storage.content = contentOf(chunk);
    storage.trouble = [&](const HttpRequest&) {
        return std::optional(
            HttpResponse{.status = 200, .headers = {{"Content-Length", "1000"}}, .body = storage.content});
    };
    Life life(storage);
    EXPECT_EQ(life.download(path), "");
    expectWhole();
}

TEST_F(DownloaderTest, finishesTheWaveThatRunsWhenItIsStopped)
{
    storage.content = contentOf(20 * chunk);
    Life life(storage);
    life.world.start([](Life& lived) -> Task<void> {
        co_await lived.world.clock.sleep(250ms); // in the second wave
        lived.flag->stop();
    }(life));
    EXPECT_EQ(life.download(path), "cancelled");
    EXPECT_EQ(loadPartial(path)->done.size(), 16U);
    Life next(storage);
    EXPECT_EQ(next.download(path), "");
    EXPECT_EQ(next.ranges().size(), 4);
    expectWhole();
}

TEST_F(DownloaderTest, recordsWhatArrivedBeforeAnotherChunkFailed)
{
    storage.trouble = [](const HttpRequest& request) -> std::optional<HttpResponse> {
        if (rangeOf(request) == "bytes=2000-2999")
            return HttpResponse{.status = 500};
        return std::nullopt;
    };
    Life life(storage);
    EXPECT_EQ(life.download(path), "Storage answered 500 on a chunk.");
    EXPECT_EQ(loadPartial(path)->done, (std::set<qint64>{0, 1, 3}));
    EXPECT_EQ(fileAt(path).size(), storage.content.size());
}

TEST_F(DownloaderTest, writesOverWhatAnAnswerLeftThatWasCutOff)
{
    storage.trouble = [this, cutOff = 0](const HttpRequest& request) mutable -> std::optional<HttpResponse> {
        if (rangeOf(request) != "bytes=1000-1999" || ++cutOff > 2)
            return std::nullopt;
        auto answer = storage.properly(request);
        answer.body = QByteArray(cutOff == 1 ? 999 : 600, 'x');
        return answer;
    };
    Life life(storage);
    EXPECT_EQ(life.download(path), "");
    expectWhole();
}

TEST_F(DownloaderTest, takesNoChunkForWrittenThatTheDiskRefused)
{
    struct FileSizeLimit {
        rlimit before{};
        FileSizeLimit()
        {
            std::signal(SIGXFSZ, SIG_IGN);
            ::getrlimit(RLIMIT_FSIZE, &before);
        }
        ~FileSizeLimit() { ::setrlimit(RLIMIT_FSIZE, &before); }
        void set(rlim_t bytes)
        {
            auto limit = before;
            limit.rlim_cur = bytes;
            ::setrlimit(RLIMIT_FSIZE, &limit);
        }
    };
    for (rlim_t refusedFrom : {1300, 1700, 1900}) { // in the first slice of the second chunk, the second, the rest
        {
            Life life(storage);
            FileSizeLimit limit;
            life.beforeSending = [&, sent = 0]() mutable {
                if (++sent == 2) // the probe is over, the room is reserved
                    limit.set(refusedFrom);
            };
            EXPECT_THAT(life.download(path), HasSubstr("cannot be written"));
            auto partial = loadPartial(path);
            ASSERT_TRUE(partial);
            EXPECT_THAT(partial->done, testing::IsSubsetOf({0}));
        }
        Life next(storage);
        EXPECT_EQ(next.download(path), "");
        expectWhole();
        QFile::remove(path);
    }
}

TEST_F(DownloaderTest, losesNothingWhenItDiesAtAnyRecord)
{
    storage.content = contentOf(20 * chunk + 7);
    std::set<std::size_t> met;
    for (std::size_t kills = 1; kills <= 21; ++kills) {
        std::set<qint64> safe;
        {
            Life life(storage);
            int uneven = 0;
            life.beforeSending = [&] { life.client.latency = std::chrono::milliseconds(20 + 17 * (++uneven * 5 % 9)); };
            life.world.start(life.downloading(path));
            life.world.runUntil([&] {
                auto partial = loadPartial(path);
                safe = partial ? partial->done : std::set<qint64>();
                return safe.size() >= kills;
            });
            met.insert(safe.size());
        }
        for (qint64 index : safe)
            EXPECT_TRUE(fileAt(path).mid(index * chunk, chunk) == storage.content.mid(index * chunk, chunk)) << index;
        Life next(storage);
        EXPECT_EQ(next.download(path), "");
        EXPECT_EQ(next.ranges().size(), qsizetype(21 - safe.size())) << kills;
        expectWhole();
        QFile::remove(path);
    }
    EXPECT_GE(met.size(), 18U) << "the deaths were to come at different records";
}

TEST_F(DownloaderTest, saysWhatTheDiskRefuses)
{
    {
        QTemporaryDir folder(disk.filePath("inner-XXXXXX"));
        Life life(storage);
        EXPECT_THAT(life.download(folder.filePath("nowhere/Master.mov")), HasSubstr("cannot be opened"));
        EXPECT_THAT(life.download(folder.path()), HasSubstr("cannot be opened"));
    }
    Life life(storage);
    storage.trouble = [](const HttpRequest& request) -> std::optional<HttpResponse> {
        HttpResponse huge{.status = 206, .body = "x"};
        huge.headers = {{"Content-Range", "bytes 0-0/" + QByteArray::number(1LL << 60)}};
        return rangeOf(request) == "bytes=0-0" ? std::optional(huge) : std::nullopt;
    };
    EXPECT_THAT(life.download(path),
                HasSubstr("There is not enough room for “Master.mov”: it needs 1152921.50 TB, and "));
    EXPECT_THAT(life.ranges(), IsEmpty());
    EXPECT_TRUE(loadPartial(path)) << "or the empty file would be taken for one of the user's";
}

TEST_F(DownloaderTest, isNotDoneWhenTheFileIsTakenAway)
{
    storage.content = contentOf(20 * chunk);
    Life life(storage);
    life.world.start([](Life& lived, QString file) -> Task<void> {
        co_await lived.world.clock.sleep(250ms);
        QFile::rename(file, file + ".elsewhere");
    }(life, path));
    EXPECT_EQ(life.download(path), "“Master.mov” was moved or removed while it was being downloaded.");
}

TEST_F(DownloaderTest, keepsTwoDownloadsOutOfOneFile)
{
    Life life(storage);
    life.world.start(life.downloading(path));
    life.world.runUntil([&] { return life.progress.size() == 1; });
    EXPECT_EQ(life.download(path), "“Master.mov” is being downloaded already.");
    life.world.runUntil([&] { return life.progress.back().received == 4 * chunk; });
    life.world.settle();
    expectWhole();
}

} // namespace
} // namespace palvera
