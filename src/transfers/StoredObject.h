#pragma once

#include "async/Task.h"
#include "transfer/TransferTarget.h"

#include <functional>

namespace palvera {

class API;

/// One file that the platform stores, and how to get at it.
struct StoredObject {
    /// Asks for the signed address of a download; throws what API::fetch throws.
    using AddressSource = std::function<Task<QString>()>;

    /// Asks how many bytes the platform lists for it; nothing where it lists none. Throws as AddressSource does.
    using SizeSource = std::function<Task<std::optional<qint64>>()>;

    TransferTarget target; ///< where it belongs
    QString identity;      ///< the same text for the same object only
    QString key;           ///< in storage
    AddressSource address;
    SizeSource listedSize = {}; ///< nothing where nobody can say
};

/// The file `object` that was filed on a deliverable of the service that `api` calls at this moment.
StoredObject deliveredFile(API& api, const TransferTarget::Deliverable& deliverable, const QString& object);
/// The object of an organisation's bin there whose storage key is `key`.
StoredObject binObject(API& api, const QString& orgId, const QString& key);

} // namespace palvera
