#pragma once

#include "transfers/Transfers.h"

#include "desktop/SleepInhibitor.h"
#include "http/NetworkPath.h"
#include "service/APIError.h"
#include "service/ServiceTest.h"
#include "support/FakeNetworkPath.h"
#include "support/Files.h"

#include <QTemporaryDir>

namespace palvera {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

/// A machine that can be kept awake and woken.
struct FakeSleep final : SleepInhibitor {
    bool held = false;
    std::function<void()> woken;

    void hold(const QString&) override { held = true; }
    void release() override { held = false; }
    void onWake(std::function<void()> call) override { woken = std::move(call); }
};

inline const std::exception_ptr cancelled =
    std::make_exception_ptr(boost::system::system_error(boost::asio::error::operation_aborted));

/// An engine that ends each of its runs, after a second, as its script says: null is a success. Beyond the script it
/// runs until it is stopped.
template <class Request>
struct ScriptedEngine {
    Clock& clock;
    std::vector<Request> requests = {};
    std::deque<std::exception_ptr> ends = {};
    std::optional<std::chrono::seconds> deafFor = {}; ///< how long it goes on, whether or not it is stopped

    Task<void> run(Request request)
    {
        requests.push_back(request);
        const bool isScripted = !ends.empty();
        auto end = isScripted ? ends.front() : cancelled;
        if (isScripted)
            ends.pop_front();
        if (deafFor)
            co_await clock.sleep(*deafFor);
        else if (isScripted)
            co_await runUntilStopped(request.flag, clock.sleep(1s));
        else
            co_await untilStopped(request.flag);
        if (end)
            std::rethrow_exception(end);
    }
};

inline std::exception_ptr platformSays(int status, const QString& code = {})
{
    auto message = QStringLiteral("The platform says %1.").arg(status);
    return std::make_exception_ptr(APIError(status, message, code.isEmpty() ? std::nullopt : std::optional(code)));
}

/// The model on scripted engines.
struct TransfersTest : ServiceTest {
    Simulation& world = simulation;
    QTemporaryDir disk;
    JournalStore journals{disk.path()};
    DownloadIndex index{disk.path()};
    ScriptedEngine<UploadRequest> uploads{world.clock};
    ScriptedEngine<DownloadRequest> downloads{world.clock};
    FakeSleep sleep;
    FakeNetworkPath network{world.clock};
    std::optional<Account> account{{.service = "https://platform.test/api/", .userId = "user"}}; ///< that is signed in
    bool isKnown = false; ///< the platform knows it, whatever else it refuses
    QString downloadsFolder = disk.filePath("Downloads");
    QString address = "https://storage.test/object?signature=a%2Fb"; ///< of every object
    std::exception_ptr noAddress;                                    ///< why there is none
    std::optional<Transfers> model;

    TransfersTest()
    {
        client.handler = [](const HttpRequest&) { return HttpResponse{.status = 200, .body = "{}"}; };
        makeModel({});
    }

    ~TransfersTest() override
    {
        model.reset();
        uploads.requests.clear();
        api.reset(); // a strand must go before the executor that it was made of, and so must those that were pinned
        world.kill();
    }

    void makeModel(Transfers::Settings settings)
    {
        model.emplace(environment(), settings);
        world.settle();
    }
    Transfers::Environment environment()
    {
        auto runUpload = [this](UploadRequest request) { return upload(std::move(request)); };
        auto runDownload = [this](DownloadRequest request) { return downloads.run(std::move(request)); };
        SignIns signIns{.now = [this] { return account; },
                        .until = [this](const Account& wanted) { return untilSignedIn(wanted); }};
        return {world.executor(), world.executor(), world.clock, *api,    journals, index,
                runUpload,        runDownload,      sleep,       network, signIns};
    }
    Task<bool> untilSignedIn(Account wanted)
    {
        if (isKnown)
            co_return false;
        account.reset();
        while (account != wanted)
            co_await world.clock.sleep(1s);
        co_return true;
    }

    /// As the engine does, under the lock of the journal.
    Task<void> upload(UploadRequest request)
    {
        auto held = journals.lockOf(request.key);
        held.tryLock();
        co_await uploads.run(std::move(request));
    }

    /// Written once, since its time would tell a second writing by another.
    QString file(const QString& name)
    {
        if (!QFile::exists(disk.filePath(name)))
            writeFile(disk.filePath(name), "film");
        return disk.filePath(name);
    }
    QUuid addUpload(const QString& row = "row-1", const QString& label = "Picture")
    {
        return model->addUpload({.file = file("master.mov"),
                                 .orgId = "org",
                                 .projectId = "salt",
                                 .deliverable = {.id = row, .label = label}});
    }
    QList<QUuid> addBinUploads(BinUploads asked) { return world.run(model->addBinUploads(std::move(asked))).items; }
    /// Of an object of the same name, to the folder of downloads.
    Download download(const QString& name = "a.mov")
    {
        QDir().mkpath(downloadsFolder);
        return {.object = {.target = TransferTarget::Deliverable{"org", "salt", "row-1"},
                           .identity = name,
                           .address = [this] { return addressAfterASecond(); }},
                .name = name,
                .folder = downloadsFolder};
    }
    QUuid addDownload(const QString& name = "a.mov") { return model->addDownload(download(name)); }
    Task<QString> addressAfterASecond()
    {
        co_await world.clock.sleep(1s);
        if (noAddress)
            std::rethrow_exception(noAddress);
        co_return address;
    }
    Journal journal(const QString& key = "row-1")
    {
        Journal saved{.key = key,
                      .orgId = "org",
                      .projectId = "salt",
                      .object = "object-1",
                      .uploadId = "upload-1",
                      .partSize = 10,
                      .partCount = 2,
                      .byteSize = 20,
                      .filePath = file("master.mov"),
                      .filename = "master.mov",
                      .fileStamp = "20-1"};
        journals.saveJournal(saved);
        return saved;
    }

    /// "done", "failed: why" and so on; "absent" when there is no such item.
    std::string stateOf(const QUuid& id) const
    {
        const auto* item = model->find(id);
        if (!item)
            return "absent";
        auto why = messageOf(item->state);
        return (nameOf(item->state) + (why.isEmpty() ? "" : ": ") + why).toStdString();
    }
    /// What all of them do, without the reasons.
    std::string statesOf(const QList<QUuid>& ids) const
    {
        QStringList states;
        for (const auto& id : ids)
            states.append(nameOf(model->find(id)->state));
        return states.join(' ').toStdString();
    }
    void runUntilState(const QUuid& id, const std::string& state)
    {
        world.runUntil([&] { return stateOf(id) == state; });
    }
    double elapsed() const { return std::chrono::duration<double>(world.clock.elapsed()).count(); }
    QStringList interruptedKeys()
    {
        QStringList keys;
        for (const auto& one : model->interrupted().uploads())
            keys.append(one.journal.key);
        return keys;
    }
};

} // namespace palvera
