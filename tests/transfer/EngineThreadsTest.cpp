#include "UploadHarness.h"

#include "http/HttpSession.h"
#include "localplatform/Server.h"
#include "service/BrowsingOperations.h"
#include "transfer/Downloader.h"

#include <boost/asio/use_future.hpp>

namespace palvera {
namespace {

/// The engines as they really run: real threads, real sockets, the platform's server in the same process.
struct EngineThreadsTest : testing::Test {
    Delivery delivery{24 * partSize + 1};
    local::Server server{delivery.platform, {}};
    boost::asio::thread_pool pool{12};
    HttpSession session{pool.get_executor()};
    SystemClock clock;
    API api{{.client = session, .executor = pool.get_executor()}};
    HttpClientFactory storage = [this] {
        return std::make_unique<HttpSession>(pool.get_executor(), HttpSessionOptions::storage());
    };
    Downloader downloader{{.engine = pool.get_executor(), .clock = clock, .storage = storage},
                          {.chunkSize = partSize, .sliceSize = partSize / 16}};
    Uploader uploader{{.engine = pool.get_executor(),
                       .clock = clock,
                       .storage = storage,
                       .journals = delivery.journals,
                       .libraryFolder = delivery.disk.path(),
                       .spread = [] { return 1.0; }}};

    void SetUp() override { qputenv("PV_API", server.serviceAddress() + "/api"); }
    ~EngineThreadsTest() override { pool.join(); }

    template <class T>
    std::future<T> start(Task<T> operation)
    {
        return boost::asio::co_spawn(pool, std::move(operation), boost::asio::use_future);
    }
    std::future<void> send(
        const QString& row, ProgressReporter::OnProgress onProgress = [](const auto&) {},
        std::shared_ptr<CancelFlag> flag = std::make_shared<CancelFlag>())
    {
        return start(uploader.upload({.api = api.pinned(),
                                      .target = TransferTarget::Deliverable{"org-northlight", "salt", row},
                                      .file = delivery.path(),
                                      .key = row,
                                      .flag = std::move(flag),
                                      .onProgress = std::move(onProgress)}));
    }
    /// Of the film that was sent last, to the picture master's row.
    std::future<void> fetch(const QString& path, std::function<void(const DownloadProgress&)> onProgress = {},
                            std::shared_ptr<CancelFlag> flag = std::make_shared<CancelFlag>())
    {
        const auto& [org, project, row] = pictureMaster;
        const auto signing = start(assetURL(api, org, project, row, delivery.upload()["object"].toString())).get();
        return start(downloader.download({.address = signing.toUtf8(),
                                          .destination = path,
                                          .flag = std::move(flag),
                                          .onProgress = std::move(onProgress)}));
    }
    void fail(Operation operation, int times, int every, const local::Fault& fault)
    {
        delivery.platform.faults().add({.operation = operation, .times = times, .every = every, .fault = fault});
    }
};

TEST_F(EngineThreadsTest, severalTransfersAtOnceAllArrive)
{
    fail(Operation::put, 3, 9, {.kind = Kind::loseAnswer});
    fail(Operation::put, 2, 11, {.kind = Kind::resetMidBody, .bytes = 9999});
    std::vector<std::future<void>> running;
    for (const char* row : {"salt-row-4", "salt-row-5", "salt-row-1"})
        running.push_back(send(row));
    for (auto& each : running)
        EXPECT_NO_THROW(each.get());
    expectDelivered(delivery);
    for (const auto& upload : delivery.uploads())
        EXPECT_TRUE(readFile(upload.toObject()["path"].toString()) == delivery.content());

    running.clear();
    send("salt-row-1").get();
    std::atomic<int> unsized = 3;
    auto troubleOnceAllAreSized = [&](const DownloadProgress& now) { // nobody asks twice for the size
        if (now.received > 0 || --unsized > 0)
            return;
        fail(Operation::get, 3, 9, {.kind = Kind::status});
        fail(Operation::get, 2, 11, {.kind = Kind::resetMidBody, .bytes = 9999});
        fail(Operation::get, 2, 5, {.kind = Kind::wrongRange});
    };
    const QStringList paths{delivery.disk.filePath("1"), delivery.disk.filePath("2"), delivery.disk.filePath("3")};
    for (const auto& path : paths)
        running.push_back(fetch(path, troubleOnceAllAreSized));
    for (auto& each : running)
        EXPECT_NO_THROW(each.get());
    for (const auto& path : paths)
        EXPECT_TRUE(readFile(path) == delivery.content());
}

TEST_F(EngineThreadsTest, aStopMeetsWhatIsInFlightAndTheNextRunGoesOn)
{
    for (int round = 0; round < 8; ++round) {
        auto flag = std::make_shared<CancelFlag>();
        qint64 enough = round * 3 * partSize;
        auto stopThere = [flag, enough](const UploadProgress& now) {
            if (now.sent >= enough)
                flag->stop();
        };
        delivery.platform.faults().clear();
        fail(Operation::put, 1, 1, {.kind = Kind::stallMidBody, .bytes = 1000});
        auto running = send("salt-row-1", stopThere, flag);
        EXPECT_EQ(running.wait_for(10s), std::future_status::ready) << "a stalled part holds the stop up";
        EXPECT_THROW(running.get(), boost::system::system_error) << "not cancelled";
    }
    delivery.platform.faults().clear();
    send("salt-row-1").get();
    expectDelivered(delivery);

    const auto path = delivery.disk.filePath("down.mov");
    fail(Operation::get, 0, 1, {.latency = 20ms});
    auto flag = std::make_shared<CancelFlag>();
    auto running = fetch(path, {}, flag);
    flag->stop();
    EXPECT_THROW(running.get(), boost::system::system_error);
    fetch(path).get();
    EXPECT_TRUE(readFile(path) == delivery.content());
}

} // namespace
} // namespace palvera
