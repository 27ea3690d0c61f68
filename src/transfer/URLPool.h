#pragma once

#include "async/Clock.h"
#include "service/API.h"
#include "transfer/TransferTarget.h"

#include <map>
#include <optional>

namespace palvera {

/// Which multipart upload a run belongs to, as the platform named it.
struct UploadIdentity {
    TransferTarget target;
    std::optional<QString> sessionId; ///< of an upload into the bin
    QString object;
    QString uploadId;
};

/// Hands out the signed storage address of each part of one upload.
///
/// Addresses are signed sixteen at a time, from the missing part on, and trusted for eight minutes, short of the
/// platform's own limit. Two lanes that miss at once each ask for themselves. One pool serves one run. Operations run
/// on the pool's strand and interleave while they wait; they may be called from any executor.
class URLPool {
public:
    /// `lastPart` is the number of the upload's last part.
    URLPool(Executor engine, Clock& clock, API& api, UploadIdentity upload, int lastPart);

    /// The address of `part` (from 1), byte for byte as the platform gave it. Throws APIError when the platform signs
    /// other parts but not this one, and UploadForgotten when it knows no such upload; service and transport failures
    /// pass through. Cancelling leaves what was cached.
    Task<QByteArray> urlFor(int part);
    /// Drops the address of `part`, so that its next use is signed afresh.
    Task<void> forget(int part);

private:
    struct Signed {
        QByteArray url;
        Clock::Moment at;
    };

    Task<QByteArray> find(int part);

    const Executor m_strand;
    Clock& m_clock;
    API& m_api;
    const UploadIdentity m_upload;
    const int m_lastPart;
    std::map<int, Signed> m_cache; // strand only
};

} // namespace palvera
