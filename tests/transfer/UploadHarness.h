#pragma once

#include "TargetPrinting.h"
#include "transfer/Uploader.h"

#include "async/TaskGroup.h"
#include "localplatform/Platform.h"

#include "support/QtPrinting.h"
#include "support/SimulatedNetwork.h"
#include "support/Simulation.h"

#include <QDateTime>
#include <QFile>
#include <QJsonArray>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace palvera {

inline const TransferTarget::Deliverable pictureMaster{"org-northlight", "salt", "salt-row-1"};
inline const TransferTarget::Bin binFolder{"org-northlight", "Masters/Reel 1/"};
inline const std::vector<TransferTarget> bothTargets{pictureMaster, binFolder};

/// The platform, the user's disk and a master on it: what outlives any number of runs of the program.
class Delivery {
public:
    static constexpr qint64 partSize = 100'000;

    QTemporaryDir disk;
    Clock::WallTime wall = ManualClock::wallStart;
    local::Platform platform;
    JournalStore journals{disk.path()};

    explicit Delivery(qint64 byteSize = 4 * partSize + 1)
        : platform({.partSize = partSize, .folder = disk.filePath("platform"), .signInNeeded = false},
                   [this] { return wall; })
    {
        write(byteSize, 1);
    }

    QString path() const { return disk.filePath("Der Föhn 100% (v2).mov"); }

    /// Changes the master, each time later in the same second.
    void write(qint64 byteSize, char seed)
    {
        m_content.resize(byteSize);
        for (qsizetype i = 0; i < m_content.size(); ++i)
            m_content[i] = char(i * 31 + i / 251 + seed);
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(m_content);
        file.flush();
        m_changed = m_changed.addMSecs(10);
        ASSERT_TRUE(file.setFileTime(m_changed, QFileDevice::FileModificationTime));
    }
    const QByteArray& content() const { return m_content; }

    /// The platform's uploads, the latest last.
    QJsonArray uploads() const { return platform.state()["uploads"].toArray(); }
    QJsonObject upload() const { return uploads().last().toObject(); }
    /// How often `part` of the latest upload was stored.
    int timesStored(int part) const
    {
        return upload()["parts"].toObject()[QString::number(part)].toObject()["times"].toInt();
    }
    QByteArray stored() const
    {
        QFile file(upload()["path"].toString());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void fail(local::Operation operation, local::Fault fault, int times = 1, int after = 0,
              std::optional<int> part = {})
    {
        platform.faults().add(
            {.operation = operation, .part = part, .after = after, .times = times, .fault = std::move(fault)});
    }

private:
    QByteArray m_content;
    QDateTime m_changed = QDateTime::fromSecsSinceEpoch(1'767'000'000);
};

/// The file is on the platform whole, filed where it belongs, nothing of it is left on the disk, and nothing was said
/// that a proper client would not say.
inline void expectDelivered(const Delivery& delivery, bool filed = true)
{
    EXPECT_EQ(delivery.upload()["phase"], "complete");
    EXPECT_EQ(delivery.upload()["filed"].toBool(), filed);
    EXPECT_TRUE(delivery.stored() == delivery.content()) << "the stored bytes differ";
    EXPECT_TRUE(delivery.journals.loadJournals().empty());
    EXPECT_EQ(delivery.platform.violations(), QStringList());
}

/// Storage as it is, but for the status of its answers, where another is set.
class MeddlingStorage final : public HttpClient {
public:
    MeddlingStorage(std::unique_ptr<HttpClient> inner, const std::optional<int>& status)
        : m_inner(std::move(inner)), m_status(status)
    {}
    Task<HttpResponse> send(HttpRequest request) override
    {
        auto response = co_await m_inner->send(std::move(request));
        response.status = m_status.value_or(response.status);
        co_return response;
    }

private:
    std::unique_ptr<HttpClient> m_inner;
    const std::optional<int>& m_status;
};

/// One run of the program, from its start to its end or its death.
class Life {
public:
    Delivery& delivery;
    Simulation world;
    SimulatedNetwork network;
    std::unique_ptr<HttpClient> client = network.client();
    std::optional<int> storageStatus;
    std::optional<API> api{std::in_place, API::Surroundings{.client = *client, .executor = world.executor()}};
    std::vector<UploadProgress> progress;
    std::vector<QString> remarks;
    std::shared_ptr<CancelFlag> flag = std::make_shared<CancelFlag>();
    std::optional<std::string> ended; ///< how the file's sending ended: "" when it was delivered

    explicit Life(Delivery& owner)
        : delivery(owner),
          network(owner.platform, world.clock, {.latency = std::chrono::milliseconds(20), .bytesPerSecond = 1e6}),
          m_uploader({.engine = world.executor(),
                      .clock = world.clock,
                      .api = *api,
                      .storage = [this] { return std::make_unique<MeddlingStorage>(network.client(), storageStatus); },
                      .journals = owner.journals,
                      .libraryFolder = owner.disk.path(),
                      .spread = [] { return 1.0; }})
    {
        qputenv("PV_API", "http://platform.test/api");
    }
    ~Life()
    {
        delivery.wall += std::chrono::duration_cast<Clock::WallTime::duration>(world.clock.elapsed());
        api.reset(); // a strand must go before the executor that it was made of
        world.kill();
    }

    Task<void> sending(TransferTarget target = pictureMaster, bool confirmed = false)
    {
        QString key = target.asBin() ? QStringLiteral("bin-1") : target.asDeliverable()->deliverableId;
        auto outcome = co_await outcomeOf(
            m_uploader.upload({.target = target,
                               .file = delivery.path(),
                               .key = key,
                               .confirmed = confirmed,
                               .flag = flag,
                               .onProgress = [this](const UploadProgress& now) { progress.push_back(now); },
                               .onRemark = [this](const QString& text) { remarks.push_back(text); }}));
        const auto& failure = outcome.failure;
        ended = !failure ? "" : isCancellation(failure) ? "cancelled" : describe(failure).toStdString();
    }
    /// Sends the file and says how that ended.
    std::string send(TransferTarget target = pictureMaster, bool confirmed = false)
    {
        world.run(sending(std::move(target), confirmed));
        return *ended;
    }
    /// Sends the file, which must arrive.
    void deliver(const TransferTarget& target = pictureMaster, bool confirmed = false)
    {
        EXPECT_EQ(send(target, confirmed), "");
        expectDelivered(delivery, !target.asBin());
    }
    void stopAfter(std::chrono::milliseconds time)
    {
        world.start([](Life& life, std::chrono::milliseconds wait) -> Task<void> {
            co_await life.world.clock.sleep(wait);
            life.flag->stop();
        }(*this, time));
    }

    /// The parts whose sending began, in that order.
    std::vector<int> partsSent() const
    {
        std::vector<int> parts;
        for (const auto& request : network.seen(local::Operation::put))
            parts.push_back(*request.part);
        return parts;
    }
    std::size_t count(local::Operation operation) const { return network.seen(operation).size(); }
    bool isAnythingInFlight() const { return std::ranges::any_of(network.seen(), &SeenRequest::inFlight); }

private:
    Uploader m_uploader;
};

} // namespace palvera
