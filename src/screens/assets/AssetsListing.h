#pragma once

#include "async/Task.h"
#include "screens/assets/AssetRules.h"

namespace palvera {

class API;

/// What has been loaded of one place, in the platform's order. A value.
struct AssetsListing {
    QList<AssetRow> folders;
    QList<AssetRow> rows;
    RowsById rowsById;
    qint64 total = 0;                       ///< of delivered files, as the last page said
    int page = 0;                           ///< of delivered files, the last one loaded, from 1
    std::optional<QString> nextCursor = {}; ///< of the bin; nothing where all is loaded
    bool isMended = false;                  ///< what the latest page said completes earlier rows

    bool hasMore(AssetsPlace place) const;
};

/// `before` with the next page of what `query` names, or with the first where it is empty. Throws what API::fetch
/// throws. Any thread; `api` must outlive it.
Task<AssetsListing> nextPage(API& api, QString org, AssetsQuery query, AssetsListing before);

} // namespace palvera
