#pragma once

#include "async/Clock.h"
#include "screens/assets/AssetLine.h"
#include "transfers/TransferRequests.h"

#include <QSet>

namespace palvera {

// What the screen of assets decides, as plain functions of values.

enum class AssetsPlace {
    files,   ///< "Assets", what was delivered
    uploads, ///< "Uploads", the bin
};

/// Which part of which place is asked for.
struct AssetsQuery {
    AssetsPlace place = AssetsPlace::files;
    QString prefix = {}; ///< the folder of the bin; empty is its root
    QString search = {};
    QString family = {}; ///< of delivered files; empty is all

    bool operator==(const AssetsQuery&) const = default;
};

/// What is said where there is nothing to show.
struct AssetsMessage {
    QString icon;
    QString title;
    QString detail;

    bool operator==(const AssetsMessage&) const = default;
};

AssetsMessage emptyMessage(const AssetsQuery& query);
/// Whether the row that leads into the bin is shown.
bool showsUploads(const AssetsQuery& query);
/// Where "back" leads; nothing where it leads out of the screen.
std::optional<AssetsQuery> placeBefore(const AssetsQuery& query);
/// "Download", or "Download 3 files".
QString downloadText(int count);
/// "Drop to add to Uploads", or to a folder's name.
QString dropText(const QString& prefix);
/// What of the files for the bin was left out; empty where nothing was.
QString leftOutText(const BinUploadsBegun& begun);

/// Whether the item is an upload to what `query` shows: into that folder of the bin, or to some deliverable.
bool isUploadTo(const AssetsQuery& query, const Item& item);
/// The bin's uploads of this run that a folder shows on top of what it lists, in their order: what is on its way there;
/// what failed and was not begun again; and of what is done, what is in `awaited`.
QList<AssetRow> pendingRows(const std::vector<Item>& items, const QString& orgId, const AssetsQuery& query,
                            const QSet<QUuid>& awaited);

/// When to list again after files have come in: half a second after one has, and 20 seconds after the last, when the
/// platform may have caught up; never within two seconds of the time before.
class RenewalPlan {
public:
    void noteArrival(Clock::Moment now);
    /// Nothing when there is no more to come.
    std::optional<Clock::Moment> next() const;
    /// It is being listed again.
    void noteRenewal(Clock::Moment now);

private:
    std::optional<Clock::Moment> m_soon, m_late, m_last;
};

} // namespace palvera
