#include "transfer/Uploader.h"

#include "localplatform/Server.h"
#include "platform/HttpSession.h"
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

/// The engine as it really runs: real threads, real sockets, the platform's server in the same process.
struct UploaderThreadsTest : testing::Test {
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
    Uploader uploader{
        {.engine = pool.get_executor(),
         .clock = clock,
         .api = api,
         .storage =
             [this] { return std::make_unique<HttpSession>(pool.get_executor(), HttpSessionOptions::storage()); },
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
    ~UploaderThreadsTest() override { pool.join(); }

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

TEST_F(UploaderThreadsTest, severalUploadsAtOnceAllArrive)
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

TEST_F(UploaderThreadsTest, aStopMeetsThePartsInFlightAndTheNextRunGoesOn)
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

} // namespace
} // namespace palvera
