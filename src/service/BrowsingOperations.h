#pragma once

#include "async/Task.h"
#include "service/AssetRecords.h"
#include "service/BinRecords.h"
#include "service/Organisations.h"

#include <optional>

namespace palvera {

class API;

// Browsing. Each operation is one call to the service and throws what API::fetch throws. `api` must live until the
// operation ends; the other arguments are used up at once. Organisations, projects and deliverables are named by id.

Task<QList<Org>> listOrgs(API& api);
Task<QList<Project>> listProjects(API& api, QString org);
Task<QList<Deliverable>> listDeliverables(API& api, QString org, QString project);

/// Which delivered files to list, newest first.
struct AssetQuery {
    std::optional<QString> search = {}; ///< an empty text asks for nothing in particular
    std::optional<QString> family = {}; ///< as `search`
    int page = 1;                       ///< from 1
    int pageSize = 60;
};
Task<OrgAssetsPage> listAssetFiles(API& api, const QString& org, const AssetQuery& query);

/// Which part of the bin to list.
struct BinQuery {
    std::optional<QString> prefix = {}; ///< the folder; empty is the top level
    std::optional<QString> search = {}; ///< an empty text asks for nothing in particular
    std::optional<QString> cursor = {}; ///< the previous page's `nextCursor`; nothing for the first page
    int limit = 100;                    ///< most objects of a page
};
Task<BinPage> listBin(API& api, const QString& org, const BinQuery& query);

// Signed addresses. Both throw as API::fetch and as API::requireEncryption do.

/// A signed download of the bin's object `key`.
Task<BinDownload> binDownloadURL(API& api, QString org, QString key);
/// A signed address of the storage object `object` that was filed on a deliverable.
Task<QString> assetURL(API& api, QString org, QString project, QString deliverable, QString object);

} // namespace palvera
