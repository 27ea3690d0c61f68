#pragma once

#include "transfer/Uploader.h"

#include "async/TaskGroup.h"
#include "localplatform/Platform.h"

#include "support/QtPrinting.h"
#include "support/SimulatedNetwork.h"
#include "support/Simulation.h"

#include <QFile>
#include <QJsonArray>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <numeric>

namespace palvera {

inline const TransferTarget::Deliverable pictureMaster{"org-northlight", "salt", "salt-row-1"};
inline const TransferTarget::Bin binFolder{"org-northlight", "Masters/Reel 1/"};

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

    void write(qint64 byteSize, char seed)
    {
        m_content.resize(byteSize);
        for (qsizetype i = 0; i < m_content.size(); ++i)
            m_content[i] = char(i * 31 + i / 251 + seed);
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(m_content);
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
};

/// Sends requests on. When told so, it sends a completion twice and gives the second answer: as a session does when a
/// kept-alive connection dies under the first.
class RepeatingClient final : public HttpClient {
public:
    explicit RepeatingClient(std::unique_ptr<HttpClient> inner) : m_inner(std::move(inner)) {}

    bool repeatsCompletions = false;

    Task<HttpResponse> send(HttpRequest request) override
    {
        if (repeatsCompletions && request.url.endsWith("/complete"))
            co_await m_inner->send(request);
        co_return co_await m_inner->send(std::move(request));
    }

private:
    std::unique_ptr<HttpClient> m_inner;
};

/// One run of the program, from its start to its end or its death.
class Life {
public:
    Delivery& delivery;
    Simulation world;
    SimulatedNetwork network;
    RepeatingClient client{network.client()};
    std::optional<API> api{std::in_place, API::Surroundings{.client = client, .executor = world.executor()}};
    std::vector<UploadProgress> progress;
    std::shared_ptr<CancelFlag> flag = std::make_shared<CancelFlag>();

    explicit Life(Delivery& owner)
        : delivery(owner),
          network(owner.platform, world.clock, {.latency = std::chrono::milliseconds(20), .bytesPerSecond = 1e6}),
          m_uploader({.engine = world.executor(),
                      .clock = world.clock,
                      .api = *api,
                      .storage = network.factory(),
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
    Life(const Life&) = delete;
    Life& operator=(const Life&) = delete;

    Task<void> sending(TransferTarget target = pictureMaster, bool confirmed = false)
    {
        QString key = target.asBin() ? QStringLiteral("bin-1") : target.asDeliverable()->deliverableId;
        return m_uploader.upload({.target = target,
                                  .file = delivery.path(),
                                  .key = key,
                                  .confirmed = confirmed,
                                  .flag = flag,
                                  .onProgress = [this](const UploadProgress& now) { progress.push_back(now); }});
    }
    /// Sends the file and says how that ended: "" when it was delivered.
    std::string send(TransferTarget target = pictureMaster, bool confirmed = false)
    {
        auto failure = world.run(outcomeOf(sending(target, confirmed))).failure;
        return !failure ? "" : isCancellation(failure) ? "cancelled" : describe(failure).toStdString();
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

private:
    Uploader m_uploader;
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

} // namespace palvera
