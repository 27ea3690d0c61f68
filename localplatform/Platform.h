#pragma once

#include "localplatform/Catalogue.h"
#include "localplatform/Faults.h"
#include "localplatform/SignIn.h"
#include "localplatform/StateFile.h"
#include "localplatform/Updates.h"
#include "localplatform/Uploads.h"

#include <functional>
#include <mutex>

namespace palvera::local {

struct PlatformOptions {
    QByteArray storageAddress = "http://storage.test"; ///< scheme, host and port of storage
    qint64 partSize = 32LL << 20;
    std::chrono::seconds addressLife{15 * 60};
    QString folder = {};  ///< keeps state and objects there; in memory when empty
    bool discard = false; ///< throw the bytes of uploads away and keep sizes and tags
    Tags tags = Tags::opaque;
    PublishedUpdate update = {};
    bool signInNeeded = true; ///< false lets every call in, for tests about something else
};

/// The part of a file that a download brings.
struct Download {
    Reply reply; ///< its body is empty when `object` is set
    std::shared_ptr<const StoredObject> object = nullptr;
    qint64 offset = 0;
    qint64 length = 0;
};

class Platform;

/// One part on its way into storage. Dropped before `finish`, nothing was stored. One thread at a time; must not
/// outlive its platform.
class PartReceiver {
public:
    PartReceiver(Platform& platform, Uploads::Arrival arrival);
    PartReceiver(const PartReceiver&) = delete;
    PartReceiver& operator=(const PartReceiver&) = delete;
    ~PartReceiver();

    /// Whether `write` does anything; when not, the body may be skipped unread.
    bool wantsBytes() const { return m_arrival.writer || m_arrival.md5; }
    /// The next bytes of the body.
    void write(std::span<const char> bytes);
    /// The whole body has been written or skipped: stores the part.
    Reply finish(const Fault& fault);

private:
    Platform& m_platform;
    Uploads::Arrival m_arrival;
};

/// How a request to store a part begins.
struct PartOpening {
    std::unique_ptr<PartReceiver> receiver; ///< null when the part is refused
    Reply refusal = {};                     ///< the answer then
};

/// The delivery platform and its storage without sockets: requests in, answers out. Any thread.
///
/// A transport asks `meet` first, once for each request, what is to go wrong with it, carries out what concerns the
/// connection and hands the fault on. What no proper client sends is answered with an error and put on the list of
/// violations.
class Platform {
public:
    using WallClock = std::function<Clock::WallTime()>;

    explicit Platform(PlatformOptions options, WallClock wallNow);

    FaultScript& faults() { return m_faults; }
    /// Where signed addresses point from then on.
    void setStorageAddress(const QByteArray& address);

    Operation operationOf(const RequestHead& head) const;
    /// The part that a storage request is about, if any.
    std::optional<int> partOf(const RequestHead& head) const;
    Fault meet(const RequestHead& head);

    /// A request to the service, or to the sign-in pages.
    Reply serve(const RequestHead& head, const QByteArray& body, const Fault& fault);
    /// A PUT to storage with a body of `length` bytes.
    PartOpening openPart(const RequestHead& head, qint64 length, const Fault& fault);
    /// A GET to storage, signed but for what is published.
    Download download(const RequestHead& head, const Fault& fault);
    /// The answer to any other request to storage.
    Reply refuseStorage(const RequestHead& head);

    /// Signs a sample account in; gives the Cookie header of its requests.
    QByteArray signIn(const QString& email);
    /// Forgets who is signed in.
    void expireSignIns();

    /// What was sent and should not have been, oldest first.
    QStringList violations() const;
    /// Called with each violation as it happens, under the platform's lock.
    void onViolation(std::function<void(const QString&)> told);

    /// Uploads with how often each part was stored, filed rows with their path on disk, the last progress of each row,
    /// requests by operation and violations.
    QJsonObject state() const;

private:
    friend class PartReceiver;

    Reply answer(const RequestHead& head, const QByteArray& body, const Fault& fault);
    Reply answerCall(const Call& call, const QJsonObject& body, const QByteArray& cookies, const Fault& fault);
    Download downloadUpdate(const RequestHead& head, const Fault& fault) const;
    Reply answerPage(const RequestHead& head, const QByteArray& body);
    void checkStorage(const RequestHead& head);
    QJsonObject signedUrl(const QString& key);
    Reply storageReply(const RequestHead& head, const Refusal& refusal);
    void note(const RequestHead& head, const Refusal& refusal);
    void save();

    const PlatformOptions m_options;
    const WallClock m_wallNow;
    const StateFile m_stateFile;
    const Updates m_updates;
    FaultScript m_faults;

    mutable std::mutex m_lock;
    // Guarded by m_lock.
    QByteArray m_storageAddress;
    std::unique_ptr<ByteStore> m_store;
    PartsLog m_partsLog;
    Catalogue m_catalogue;
    SignIn m_signIn;
    Uploads m_uploads;
    QStringList m_violations;
    std::function<void(const QString&)> m_onViolation;
    std::map<Operation, int> m_requests;
};

} // namespace palvera::local
