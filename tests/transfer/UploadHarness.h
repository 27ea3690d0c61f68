#pragma once

#include "TransferTest.h"
#include "transfer/Uploader.h"

#include "localplatform/Platform.h"

#include "support/SimulatedNetwork.h"

#include <QJsonArray>

namespace palvera {

using testing::StartsWith;
using Kind = local::Fault::Kind;
using Operation = local::Operation;

constexpr qint64 partSize = 100'000;

inline const TransferTarget::Deliverable pictureMaster{"org-northlight", "salt", "salt-row-1"};
inline const TransferTarget::Bin binFolder{"org-northlight", "Masters/Reel 1/"};
inline const std::vector<TransferTarget> bothTargets{pictureMaster, binFolder};

/// The platform, the user's disk and a master on it: what outlives any number of runs of the program.
class Delivery {
public:
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
    void write(qint64 byteSize, quint32 seed)
    {
        m_content = patterned(byteSize, seed);
        writeFile(path(), m_content);
        m_changed = m_changed.addMSecs(10);
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.setFileTime(m_changed, QFileDevice::FileModificationTime));
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
    QByteArray stored() const { return readFile(upload()["path"].toString()); }
    /// Of the picture master; an empty one where there is none.
    Journal journal() const { return journals.loadJournal(pictureMaster.deliverableId).value_or(Journal{}); }

    void fail(Operation operation, local::Fault fault, int times = 1, int after = 0, std::optional<int> part = {})
    {
        platform.faults().add(
            {.operation = operation, .part = part, .after = after, .times = times, .fault = std::move(fault)});
    }

private:
    QByteArray m_content;
    QDateTime m_changed = QDateTime::fromSecsSinceEpoch(1'767'000'000);
};

inline local::Fault status(int number)
{
    return {.kind = Kind::status, .status = number};
}
inline local::Fault answering(const QJsonObject& members)
{
    return {.kind = Kind::overwrite, .members = members};
}

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

/// One run of the program, from its start to its end or its death.
class Life {
public:
    Delivery& delivery;
    Simulation world;
    SimulatedNetwork network;
    std::unique_ptr<HttpClient> client = network.client();
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
                      .storage = [this] { return network.client(); },
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

    Task<void> sending(TransferTarget target = pictureMaster)
    {
        QString key = target.asBin() ? QStringLiteral("bin-1") : target.asDeliverable()->deliverableId;
        auto outcome = co_await outcomeOf(
            m_uploader.upload({.api = api->pinned(),
                               .target = target,
                               .file = delivery.path(),
                               .key = key,
                               .flag = flag,
                               .onProgress = [this](const UploadProgress& now) { progress.push_back(now); },
                               .onRemark = [this](const QString& text) { remarks.push_back(text); }}));
        ended = inWords(outcome.failure);
    }
    /// Sends the file and says how that ended.
    std::string send(TransferTarget target = pictureMaster)
    {
        world.start(sending(std::move(target)));
        return end();
    }
    /// Sends the file until that many parts have begun.
    void begin(std::size_t parts)
    {
        world.start(sending());
        world.runUntil([&] { return count(Operation::put) == parts; });
    }
    /// Says how what was begun ends: "" when the file is delivered.
    std::string end()
    {
        world.runUntil([this] { return ended.has_value(); });
        return *std::exchange(ended, std::nullopt);
    }
    /// Sends the file, which must arrive.
    void deliver(const TransferTarget& target = pictureMaster)
    {
        EXPECT_EQ(send(target), "");
        expectDelivered(delivery, !target.asBin());
    }

    /// The parts whose sending began, in that order.
    std::vector<int> partsSent() const
    {
        std::vector<int> parts;
        for (const auto& request : network.seen(Operation::put))
            parts.push_back(*request.part);
        return parts;
    }
    std::size_t count(Operation operation) const { return network.seen(operation).size(); }
    bool isAnythingInFlight() const { return std::ranges::any_of(network.seen(), &SeenRequest::inFlight); }

private:
    Uploader m_uploader;
};

/// Ends with every part confirmed, and no completion.
inline void cutOff(Delivery& delivery, const TransferTarget& target = pictureMaster)
{
    delivery.fail(Operation::complete, status(503));
    EXPECT_EQ(Life(delivery).send(target), "The platform is having trouble.");
}

} // namespace palvera
