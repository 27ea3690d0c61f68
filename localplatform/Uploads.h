#pragma once

#include "localplatform/Catalogue.h"
#include "localplatform/Faults.h"
#include "localplatform/PartsLog.h"
#include "localplatform/SignedAddresses.h"
#include "localplatform/Upload.h"

#include <QCryptographicHash>
#include <QJsonArray>

#include <list>

namespace palvera::local {

/// How storage tags the parts it keeps.
enum class Tags { opaque, md5 };

/// What an upload's calls need to know of the moment and the place.
struct UploadTerms {
    Clock::WallTime now;
    std::chrono::seconds addressLife;
    QByteArray storageAddress; ///< scheme, host and port
};

/// The uploads of the platform from their start to the filed row. One thread at a time.
class Uploads {
public:
    /// A part on its way in.
    struct Arrival {
        qint64 serial = 0;
        int part = 0;
        qint64 length = 0;
        std::unique_ptr<PartWriter> writer = nullptr; ///< null when the bytes are thrown away
        std::unique_ptr<QCryptographicHash> md5 = nullptr;
    };

    Uploads(Catalogue& catalogue, ByteStore& store, PartsLog& log, qint64 partSize, Tags tags);

    /// The answer to one of the upload calls.
    Reply answer(const Call& call, const QJsonObject& body, const UploadTerms& terms, const Fault& fault);

    /// Opens a part that is about to arrive; refuses one that no open upload waits for.
    Arrival openPart(const PartPlace& place, qint64 length);
    /// The whole part is there.
    Reply keepPart(Arrival& arrival);
    /// The arrival ended, kept or not.
    void closePart(const Arrival& arrival);

    /// The completed upload that storage keeps under `key`, or null.
    std::shared_ptr<const StoredObject> object(const QString& key) const;

    /// What survives a restart, but for the parts.
    QJsonObject toJson() const;
    void fromJson(const QJsonObject& json);
    /// For people and scripts: each upload with its parts, and the last progress of each row.
    QJsonObject report() const;

private:
    Reply start(const Call& call, const QJsonObject& body, const UploadTerms& terms);
    Reply begin(const UploadTarget& target, const QJsonObject& body, const QString& object);
    Reply signParts(const Call& call, const QJsonObject& body, const UploadTerms& terms, const Fault& fault);
    Reply complete(const Call& call, const QJsonObject& body, const UploadTerms& terms);
    Reply abort(const Call& call, const QJsonObject& body);
    Reply file(const Call& call, const QJsonObject& body, const UploadTerms& terms);
    Reply progress(const Call& call, const QJsonObject& body);
    Upload& find(const Call& call, const QJsonObject& body);
    Upload* withSerial(qint64 serial);
    UploadTarget rowOf(const Call& call) const;
    QString binKey(const UploadTarget& target, const QString& filename) const;
    QByteArray tagOf(const Arrival& arrival);
    void deliver(const Upload& upload);

    Catalogue& m_catalogue;
    ByteStore& m_store;
    PartsLog& m_log;
    qint64 m_partSize;
    Tags m_tags;
    std::list<Upload> m_uploads;                      // in the order of their start
    std::map<std::pair<qint64, int>, int> m_arriving; // how many copies of a part are on their way
    qint64 m_lastSerial = 0;
    quint64 m_tagCount = 0;
    std::map<QString, QJsonObject> m_progress; // the last report of each row
};

} // namespace palvera::local
