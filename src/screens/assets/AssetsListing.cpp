#include "screens/assets/AssetsListing.h"

#include "service/BrowsingOperations.h"

namespace palvera {

namespace {

Task<void> addBinPage(API& api, const QString& org, const AssetsQuery& query, AssetsListing& listing)
{
    auto page =
        co_await listBin(api, org, {.prefix = query.prefix, .search = query.search, .cursor = listing.nextCursor});
    for (const auto& name : page.folders.value_or(QList<QString>()))
        listing.folders.append(folderRow(name, query.prefix));
    for (const auto& object : page.objects)
        listing.rows.append(objectRow(object));
    // The same page again and again would never end.
    listing.nextCursor = page.nextCursor == listing.nextCursor ? std::nullopt : page.nextCursor;
}

/// Completes the rows whose deliverables only a later page tells.
void mend(AssetsListing& listing)
{
    for (auto& row : listing.rows) {
        if (row.line->row || !listing.rowsById.contains(row.line->file->rowId))
            continue;
        row = fileRow(*row.line->file, listing.rowsById);
        listing.isMended = true;
    }
}

Task<void> addFilesPage(API& api, const QString& org, const AssetsQuery& query, AssetsListing& listing)
{
    const auto known = listing.rowsById.size();
    auto page =
        co_await listAssetFiles(api, org, {.search = query.search, .family = query.family, .page = listing.page + 1});
    for (const auto& row : page.rows)
        listing.rowsById.insert(row.deliverable.id, std::make_shared<const OrgAssetRow>(row));
    if (listing.rowsById.size() > known)
        mend(listing);
    for (const auto& file : page.files)
        listing.rows.append(fileRow(file, listing.rowsById));
    ++listing.page;
    listing.total = page.files.isEmpty() ? listing.rows.size() : page.total;
}

} // namespace

bool AssetsListing::hasMore(AssetsPlace place) const
{
    return place == AssetsPlace::uploads ? nextCursor.has_value() : rows.size() < total;
}

Task<AssetsListing> nextPage(API& api, QString org, AssetsQuery query, AssetsListing before)
{
    auto listing = std::move(before);
    listing.isMended = false;
    if (query.place == AssetsPlace::uploads)
        co_await addBinPage(api, org, query, listing);
    else
        co_await addFilesPage(api, org, query, listing);
    co_return listing;
}

} // namespace palvera
