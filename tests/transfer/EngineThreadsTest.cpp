#include "transfer/Downloader.h"
#include "transfer/Uploader.h"

#include "http/HttpSession.h"
#include "localplatform/Server.h"
#include "service/BrowsingOperations.h"
#include "support/LoopbackServer.h"
#include "support/QtPrinting.h"

#include <boost/asio/use_future.hpp>

#include <QFile>
#include <QJsonArray>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <future>

namespace palvera {
namespace {

using namespace std::chrono_literals;
using Kind = local::Fault::Kind;
using Operation = local::Operation;

/// The engines as they really run: real threads, real sockets, the platform's server in the same process.
struct EngineThreadsTest : testing::Test {
    static constexpr qint64 partSize = 256 << 10;

    QTemporaryDir disk;
    local::Platform platform{{.partSize = partSize, .folder = disk.filePath("platform"), .signInNeeded = false},
                             [] { return std::chrono::system_clock::now(); }};
    local::Server server{platform, {}};
    boost::asio::thread_pool pool{12};
    HttpSession session{pool.get_executor()};
    SystemClock clock;
    API api{{.client = session, .executor = pool.get_executor()}};
    JournalStore journals{disk.path()};
    HttpClientFactory storage = [this] {
        return std::make_unique<HttpSession>(pool.get_executor(), HttpSessionOptions::storage());
    };
    Downloader downloader{{.engine = pool.get_executor(), .clock = clock, .storage = storage},
                          {.chunkSize = partSize, .sliceSize = partSize / 16}};
    Uploader uploader{{.engine = pool.get_executor(),
                       .clock = clock,
                       .api = api,
                       .storage = storage,
                       .journals = journals,
                       .libraryFolder = disk.path(),
                       .spread = [] { return 1.0; }}};
    QByteArray content = QByteArray(qsizetype(24 * partSize + 1), '\0');

    void SetUp() override
    {
        qputenv("PV_API", server.serviceAddress() + "/api");
        for (qsizetype i = 0; i < content.size(); ++i)
            content[i] = char(i * 31 + i / 251);
        QFile file(disk.filePath("film.mov"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    ~EngineThreadsTest() override { pool.join(); }

    std::future<void> send(
        const QString& row, std::shared_ptr<CancelFlag> flag = std::make_shared<CancelFlag>(),
        ProgressReporter::OnProgress onProgress = [](const UploadProgress&) {})
    {
        TransferTarget::Deliverable target{.orgId = "org-northlight", .projectId = "salt", .deliverableId = row};
        return boost::asio::co_spawn(pool,
                                     uploader.upload({.target = target,
                                                      .file = disk.filePath("film.mov"),
                                                      .key = row,
                                                      .flag = std::move(flag),
                                                      .onProgress = std::move(onProgress)}),
                                     boost::asio::use_future);
    }
    void expectDelivered(const QString& row)
    {
        for (const auto& each : platform.state()["uploads"].toArray()) {
            QJsonObject upload = each.toObject();
            if (upload["deliverable"] != row || upload["phase"] != "complete")
                continue;
            QFile stored(upload["path"].toString());
            ASSERT_TRUE(stored.open(QIODevice::ReadOnly));
            EXPECT_TRUE(stored.readAll() == content) << "the stored bytes differ";
            EXPECT_TRUE(upload["filed"].toBool());
            EXPECT_EQ(platform.violations(), QStringList());
            return;
        }
        FAIL() << row.toStdString() << " is not delivered";
    }
};

TEST_F(EngineThreadsTest, severalUploadsAtOnceAllArrive)
{
    platform.faults().add({.operation = Operation::put, .times = 3, .every = 9, .fault = {.kind = Kind::loseAnswer}});
    platform.faults().add(
        {.operation = Operation::put, .times = 2, .every = 11, .fault = {.kind = Kind::resetMidBody, .bytes = 9999}});
    std::vector<std::future<void>> running;
    for (const char* row : {"salt-row-1", "salt-row-4", "salt-row-5"})
        running.push_back(send(row));
    for (auto& each : running)
        EXPECT_NO_THROW(each.get());
    for (const char* row : {"salt-row-1", "salt-row-4", "salt-row-5"})
        expectDelivered(row);
    EXPECT_TRUE(journals.loadJournals().empty());
}

TEST_F(EngineThreadsTest, aStopMeetsThePartsInFlightAndTheNextRunGoesOn)
{
    for (int round = 0; round < 8; ++round) {
        auto flag = std::make_shared<CancelFlag>();
        qint64 enough = round * 3 * partSize;
        auto stopThere = [flag, enough](const UploadProgress& now) {
            if (now.sent >= enough)
                flag->stop();
        };
        platform.faults().replace(
            {{.operation = Operation::put, .times = 1, .fault = {.kind = Kind::stallMidBody, .bytes = 1000}}});
        auto running = send("salt-row-1", flag, stopThere);
        EXPECT_EQ(running.wait_for(10s), std::future_status::ready) << "a stalled part holds the stop up";
        try {
            running.get();
            ADD_FAILURE() << "not stopped";
        } catch (...) {
            EXPECT_TRUE(isCancellation(std::current_exception()));
        }
    }
    platform.faults().clear();
    send("salt-row-1").get();
    expectDelivered("salt-row-1");
}

/// The address of an object of the bin with the content that was sent.
struct DownloadThreadsTest : EngineThreadsTest {
    QByteArray address;

    void SetUp() override
    {
        EngineThreadsTest::SetUp();
        UploadRequest request{.target = TransferTarget::Bin{.orgId = "org-northlight", .folder = {}},
                              .file = disk.filePath("film.mov"),
                              .key = "bin",
                              .onProgress = [](const UploadProgress&) {}};
        boost::asio::co_spawn(pool, uploader.upload(std::move(request)), boost::asio::use_future).get();
        auto signedOne =
            boost::asio::co_spawn(pool, binDownloadURL(api, "org-northlight", "film.mov"), boost::asio::use_future);
        address = signedOne.get().url.toUtf8();
    }
    std::future<void> fetch(
        const QString& path, std::shared_ptr<CancelFlag> flag = std::make_shared<CancelFlag>(),
        std::function<void(const DownloadProgress&)> onProgress = [](const DownloadProgress&) {})
    {
        return boost::asio::co_spawn(pool,
                                     downloader.download({.address = address,
                                                          .destination = path,
                                                          .flag = std::move(flag),
                                                          .onProgress = std::move(onProgress)}),
                                     boost::asio::use_future);
    }
    bool isWhole(const QString& path) const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) && file.readAll() == content;
    }
};

TEST_F(DownloadThreadsTest, severalDownloadsAtOnceAllArrive)
{
    constexpr int count = 3;
    std::atomic<int> sized = 0;
    Gate troubled; // once the size of all is known, for which nobody asks twice
    auto begin = [&](const DownloadProgress& now) {
        if (now.received > 0)
            return;
        if (++sized == count) {
            const auto fails = [&](int times, int every, local::Fault fault) {
                platform.faults().add({.operation = Operation::get, .times = times, .every = every, .fault = fault});
            };
            fails(3, 9, {.kind = Kind::status});
            fails(2, 11, {.kind = Kind::resetMidBody, .bytes = 9999});
            fails(2, 5, {.kind = Kind::wrongRange});
            troubled.open();
        }
        EXPECT_TRUE(troubled.wait());
    };
    std::map<QString, std::future<void>> running;
    for (int i = 0; i < count; ++i) {
        auto path = disk.filePath(QStringLiteral("%1.mov").arg(i));
        running[path] = fetch(path, std::make_shared<CancelFlag>(), begin);
    }
    for (auto& [path, each] : running) {
        EXPECT_NO_THROW(each.get());
        EXPECT_TRUE(isWhole(path)) << path.toStdString();
    }
}

TEST_F(DownloadThreadsTest, aStopLeavesChunksFromWhichTheNextRunGoesOn)
{
    auto path = disk.filePath("down.mov");
    platform.faults().add({.operation = Operation::get, .times = 0, .fault = {.latency = 20ms}});
    auto flag = std::make_shared<CancelFlag>();
    auto running = fetch(path, flag);
    flag->stop();
    EXPECT_THROW(running.get(), std::exception);
    std::vector<qint64> received;
    fetch(path, std::make_shared<CancelFlag>(), [&](const DownloadProgress& now) {
        received.push_back(now.received);
    }).get();
    EXPECT_TRUE(isWhole(path));
    EXPECT_TRUE(std::ranges::is_sorted(received));
}

} // namespace
} // namespace palvera
