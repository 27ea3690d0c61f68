#include "screens/assets/AssetsView.h"

#include "async/RunOn.h"
#include "async/TaskGroup.h"
#include "files/Folders.h"
#include "files/Quantities.h"
#include "screens/LocalPath.h"
#include "screens/Wording.h"
#include "session/Session.h"
#include "transfers/Transfers.h"

#include <boost/asio/post.hpp>
#include <boost/asio/strand.hpp>

#include <QPointer>

namespace palvera {

using namespace std::chrono_literals;

namespace {

constexpr auto typingPause = 300ms;

/// Kinds of delivered files, in the menu's order, as the platform has them; the first stands for all.
const QStringList fileKinds{QString(),
                            QStringLiteral("video"),
                            QStringLiteral("audio"),
                            QStringLiteral("subtitles"),
                            QStringLiteral("artwork"),
                            QStringLiteral("documents")};

QString sizeText(const AssetLine& line)
{
    return line.bytes > 0 ? byteCountText(line.bytes) : QString();
}

QString dateText(const AssetLine& line, Clock& clock)
{
    if (!line.date)
        return {};
    auto now = std::chrono::duration_cast<std::chrono::milliseconds>(clock.wallNow().time_since_epoch());
    return momentText(*line.date, QDateTime::fromMSecsSinceEpoch(now.count()), QLocale());
}

QString wholeDateText(const AssetLine& line)
{
    return line.date ? QLocale().toString(line.date->toLocalTime(), QLocale::LongFormat) : QString();
}

double fractionSent(const AssetLine& line)
{
    return line.item ? fractionOf(line.item->sent, line.item->total) : 0;
}

bool isMoving(const AssetLine& line)
{
    return line.item && line.item->isInFlight();
}

bool hasFailed(const AssetLine& line)
{
    return line.item && std::holds_alternative<Item::Failed>(line.item->state);
}

} // namespace

AssetsView::AssetsView(const Environment& environment, QObject* parent)
    : RowsModel({{"name", [](const auto& row) { return row.line->name; }},
                 {"note", [](const auto& row) { return row.line->note; }},
                 {"deal", [](const auto& row) { return row.line->deal; }},
                 {"reference", [](const auto& row) { return row.line->reference; }},
                 {"type", [](const auto& row) { return row.line->type; }},
                 {"symbol", [](const auto& row) { return row.line->symbol; }},
                 {"tint", [](const auto& row) { return row.line->tint; }},
                 {"size", [](const auto& row) { return sizeText(*row.line); }},
                 {"date", [this](const auto& row) { return dateText(*row.line, m_environment.clock); }},
                 {"wholeDate", [](const auto& row) { return wholeDateText(*row.line); }},
                 {"opens", [](const auto& row) { return row.line->isPlace(); }},
                 {"moving", [](const auto& row) { return isMoving(*row.line); }},
                 {"failed", [](const auto& row) { return hasFailed(*row.line); }},
                 {"fraction", [](const auto& row) { return fractionSent(*row.line); }},
                 {"selected", [this](const auto& row) { return m_selection.contains(row.key); }}},
                parent),
      m_environment(environment),
      m_decoding(boost::asio::make_strand(environment.background)),
      m_loading(environment.main),
      m_searches(environment.main),
      m_upkeep(environment.main),
      m_tasks(environment.main),
      m_columns(environment.preferences),
      m_arrived(environment.main)
{
    auto& transfers = m_environment.transfers;
    connect(&transfers, &Transfers::itemAdded, this, &AssetsView::updatePendingSoon);
    connect(&transfers, &Transfers::itemRemoved, this, &AssetsView::updatePendingSoon);
    connect(&transfers, &Transfers::itemChanged, this, &AssetsView::noteItem);
}

void AssetsView::open(const Org& org)
{
    leave();
    m_open = true;
    m_org = org;
    m_noted.clear();
    m_awaited.clear();
    m_toDownload.clear();
    ask(Asking::nothing);
    goTo({});
    m_upkeep.start(keepUpToDate());
    m_tasks.start(readFolder());
}

void AssetsView::leave()
{
    m_open = false;
    m_loading.stop();
    m_searches.stop();
    m_upkeep.stop();
    m_renewals = {};
}

Task<void> AssetsView::close()
{
    leave();
    co_await m_loading.close();
    co_await m_searches.close();
    co_await m_upkeep.close();
    co_await m_tasks.close();
}

// Where it is.

QString AssetsView::title() const
{
    return isInUploads() && !m_query.prefix.isEmpty() ? folderName(m_query.prefix)
           : isInUploads()                            ? tr("Uploads")
                                                      : tr("Assets");
}

QString AssetsView::backText() const
{
    return !isInUploads() ? tr("Projects") : m_query.prefix.isEmpty() ? tr("Assets") : tr("Uploads");
}

bool AssetsView::isBare() const
{
    return rowCount() == 1 && rows().first().line->kind == AssetLine::Kind::uploads;
}

QStringList AssetsView::kinds() const
{
    QStringList labels;
    for (const auto& family : fileKinds)
        labels.append(family.isEmpty() ? tr("All types") : familyName(family, family));
    return labels;
}

int AssetsView::kind() const
{
    return int(fileKinds.indexOf(m_query.family));
}

void AssetsView::setKind(int kind)
{
    if (kind < 0 || kind >= fileKinds.size())
        return;
    auto query = m_query;
    query.family = fileKinds[kind];
    change(std::move(query));
}

void AssetsView::setSearch(const QString& search)
{
    if (search == m_search)
        return;
    m_search = search;
    Q_EMIT searchChanged();
    m_searches.stop();
    m_searches.start(searchLater());
}

Task<void> AssetsView::searchLater()
{
    co_await m_environment.clock.sleep(typingPause);
    searchNow();
}

void AssetsView::searchNow()
{
    m_searches.stop();
    auto query = m_query;
    query.search = m_search.trimmed();
    change(std::move(query));
}

void AssetsView::showAll()
{
    m_searches.stop();
    m_search.clear();
    Q_EMIT searchChanged();
    change({.place = m_query.place, .prefix = m_query.prefix});
}

bool AssetsView::enter(int row)
{
    if (row < 0 || row >= rowCount())
        return false;
    const auto line = rows()[row].line;
    if (line->kind == AssetLine::Kind::uploads)
        goTo({.place = Place::uploads});
    else if (line->kind == AssetLine::Kind::folder)
        goTo({.place = Place::uploads, .prefix = line->path});
    else
        return false;
    return true;
}

bool AssetsView::back()
{
    auto before = placeBefore(m_query);
    if (before)
        goTo(*before);
    return before.has_value();
}

/// Another place or folder: nothing of this one stays.
void AssetsView::goTo(AssetsQuery query)
{
    m_searches.stop();
    m_search.clear();
    m_query = std::move(query);
    m_listing = {};
    m_anchor.clear();
    m_renewals = {};
    setNotice({});
    updateSelection({});
    m_pending = pendingRows(m_environment.transfers.items(), m_org.id, m_query, m_awaited);
    if (!m_pending.isEmpty())
        m_renewals.noteArrival(m_environment.clock.now()); // some may be there already
    Q_EMIT placeChanged();
    Q_EMIT searchChanged();
    Q_EMIT kindChanged();
    load();
    showRows();
}

/// Other files of the same place.
void AssetsView::change(AssetsQuery query)
{
    if (query == m_query)
        return;
    m_query = std::move(query);
    m_pending = pendingRows(m_environment.transfers.items(), m_org.id, m_query, m_awaited);
    Q_EMIT kindChanged();
    load();
}

// Pages.

void AssetsView::load()
{
    m_loading.stop();
    ++m_asked;
    m_isLoading = true;
    m_loadingMore = false;
    m_failure = nullptr;
    m_moreFailure = nullptr;
    Q_EMIT faceChanged();
    Q_EMIT moreChanged();
    m_loading.start(loadFirst());
}

Task<void> AssetsView::loadFirst()
{
    AssetsListing nothing{.rowsById = m_listing.rowsById};
    auto outcome =
        co_await answerOf(runOn(m_decoding, nextPage(m_environment.api, m_org.id, m_query, std::move(nothing))));
    m_isLoading = false;
    m_failure = outcome.failure;
    take(outcome.value ? *std::move(outcome.value) : AssetsListing());
    ++m_loads;
    Q_EMIT loadsChanged();
}

void AssetsView::loadMore()
{
    if (m_isLoading || m_loadingMore || !hasMore())
        return;
    m_loadingMore = true;
    m_moreFailure = nullptr;
    Q_EMIT moreChanged();
    m_loading.start(loadNext());
}

void AssetsView::reachEnd()
{
    if (!m_moreFailure)
        loadMore();
}

Task<void> AssetsView::loadNext()
{
    auto outcome = co_await answerOf(runOn(m_decoding, nextPage(m_environment.api, m_org.id, m_query, m_listing)));
    m_loadingMore = false;
    m_moreFailure = outcome.failure;
    if (outcome.value) {
        const auto before = std::exchange(m_listing, *std::move(outcome.value));
        if (m_listing.folders.size() > before.folders.size() || m_listing.isMended)
            showRows();
        else if (m_listing.rows.size() > before.rows.size())
            insertRun(rowCount(), m_listing.rows.mid(before.rows.size()));
        countSelected();
    }
    Q_EMIT moreChanged();
}

bool AssetsView::hasMore() const
{
    return m_listing.hasMore(m_query.place);
}

QString AssetsView::moreText() const
{
    const auto loaded = m_listing.rows.size() + m_listing.folders.size();
    return isInUploads() ? tr("%1 loaded").arg(loaded) : tr("%1 of %2").arg(loaded).arg(m_listing.total);
}

AssetsView::Face AssetsView::face() const
{
    if (m_isLoading)
        return Loading;
    if (m_failure)
        return Failed;
    return rowCount() == 0 ? Empty : Table;
}

void AssetsView::take(AssetsListing listing)
{
    m_listing = std::move(listing);
    if (!m_awaited.isEmpty()) {
        QSet<QString> names;
        for (const auto& row : m_listing.rows)
            names.insert(row.line->name);
        for (const auto& row : m_pending)
            if (names.contains(row.line->name))
                m_awaited.remove(row.line->item->id);
        m_pending = pendingRows(m_environment.transfers.items(), m_org.id, m_query, m_awaited);
    }
    showRows();
    Q_EMIT moreChanged();
}

void AssetsView::showRows()
{
    QList<AssetRow> shown;
    if (showsUploads(m_query) && !m_failure)
        shown.append(uploadsRow());
    shown += m_pending;
    shown += m_listing.folders;
    shown += m_listing.rows;
    setRows(shown);
    countSelected();
    Q_EMIT faceChanged();
}

// Files that come in meanwhile.

void AssetsView::noteItem(const QUuid& id)
{
    updatePendingSoon();
    const auto* item = m_open ? m_environment.transfers.find(id) : nullptr;
    if (!item || item->target.orgId() != m_org.id || !std::holds_alternative<Item::Done>(item->state) ||
        m_noted.contains(id))
        return;
    m_noted.insert(id);
    if (item->target.asBin())
        m_awaited.insert(id);
    if (!isUploadTo(m_query, *item))
        return;
    m_renewals.noteArrival(m_environment.clock.now());
    m_arrived.set();
}

/// Once for all that has changed by then.
void AssetsView::updatePendingSoon()
{
    if (!m_open || std::exchange(m_isPendingStale, true))
        return;
    boost::asio::post(m_environment.main, [self = QPointer(this)] {
        if (self)
            self->updatePending();
    });
}

void AssetsView::updatePending()
{
    m_isPendingStale = false;
    auto pending = pendingRows(m_environment.transfers.items(), m_org.id, m_query, m_awaited);
    if (pending == m_pending)
        return;
    const auto known = m_pending.size();
    const bool haveOnlyCome = pending.size() >= known &&
                              std::ranges::equal(m_pending, pending.first(known), {}, &AssetRow::key, &AssetRow::key);
    m_pending = std::move(pending);
    if (!haveOnlyCome)
        return showRows();
    for (int i = 0; i < known; ++i)
        setRow(i, m_pending[i]);
    if (m_pending.size() > known)
        insertRun(int(known), m_pending.mid(known));
    if (known == 0)
        Q_EMIT faceChanged();
}

Task<void> AssetsView::keepUpToDate()
{
    auto& clock = m_environment.clock;
    for (;;) {
        const auto next = m_renewals.next().value_or(Clock::Moment::max());
        co_await firstOf(clock.sleepUntil(next), m_arrived.wait());
        if (clock.now() < next)
            continue; // another one has come
        m_renewals.noteRenewal(clock.now());
        co_await listAgain();
    }
}

/// As many pages as there are, without a word.
Task<void> AssetsView::listAgain()
{
    const auto number = m_asked;
    const auto wanted = m_listing.rows.size();
    AssetsListing listing{.rowsById = m_listing.rowsById};
    do {
        auto outcome = co_await answerOf(runOn(m_decoding, nextPage(m_environment.api, m_org.id, m_query, listing)));
        if (number != m_asked || !outcome.value)
            co_return;
        listing = *std::move(outcome.value);
    } while (listing.rows.size() < wanted && listing.hasMore(m_query.place));
    if (m_loadingMore || m_isLoading) {
        m_renewals.noteArrival(m_environment.clock.now()); // what is being loaded stands on the earlier pages
        co_return;
    }
    if (!m_renewals.next())
        m_awaited.clear();
    m_failure = nullptr;
    take(std::move(listing));
    updatePending();
}

// What is selected.

void AssetsView::select(int row)
{
    if (row < 0 || row >= rowCount())
        return;
    m_anchor = rows()[row].key;
    updateSelection(rows()[row].line->isSelectable() ? QSet<QString>{m_anchor} : QSet<QString>());
}

void AssetsView::toggle(int row)
{
    if (row < 0 || row >= rowCount() || !rows()[row].line->isSelectable())
        return;
    m_anchor = rows()[row].key;
    auto selection = m_selection;
    if (!selection.remove(m_anchor))
        selection.insert(m_anchor);
    updateSelection(selection);
}

void AssetsView::selectTo(int row)
{
    if (row < 0 || row >= rowCount())
        return;
    auto found = std::ranges::find(rows(), m_anchor, &AssetRow::key);
    auto anchor = found == rows().end() ? row : int(found - rows().begin());
    QSet<QString> selection;
    for (int i = std::min(anchor, row); i <= std::max(anchor, row); ++i)
        if (rows()[i].line->isSelectable())
            selection.insert(rows()[i].key);
    if (found == rows().end())
        m_anchor = rows()[row].key;
    updateSelection(selection);
}

void AssetsView::selectAll()
{
    QSet<QString> selection;
    for (const auto& row : rows())
        if (row.line->isSelectable())
            selection.insert(row.key);
    updateSelection(selection);
}

void AssetsView::clearSelection()
{
    updateSelection({});
}

bool AssetsView::isSelected(int row) const
{
    return row >= 0 && row < rowCount() && m_selection.contains(rows()[row].key);
}

void AssetsView::updateSelection(const QSet<QString>& selection)
{
    const auto before = std::exchange(m_selection, selection);
    int first = -1, last = -1;
    for (int i = 0; i < rowCount(); ++i) {
        const auto& key = rows()[i].key;
        if (before.contains(key) == selection.contains(key))
            continue;
        first = first < 0 ? i : first;
        last = i;
    }
    if (first >= 0)
        this->announce(first, last, {"selected"});
    countSelected();
}

void AssetsView::countSelected()
{
    const auto count = m_selection.isEmpty() ? 0 : std::ranges::count_if(rows(), [this](const AssetRow& row) {
        return row.line->isStored() && m_selection.contains(row.key);
    });
    if (std::exchange(m_downloadCount, int(count)) != int(count))
        Q_EMIT selectionChanged();
}

// Ways in and out.

std::optional<Download> AssetsView::downloadOf(const AssetLine& line) const
{
    if (!line.isStored())
        return {};
    if (!line.file)
        return Download{.object = binObject(m_environment.api, m_org.id, line.path),
                        .listedSize = line.bytes,
                        .name = line.name,
                        .label = tr("Assets"),
                        .client = m_org.name};
    const auto& deliverable = line.row->deliverable;
    const TransferTarget::Deliverable target{m_org.id, line.row->projectId, deliverable.id};
    return Download{.object = deliveredFile(m_environment.api, target, line.file->object),
                    .listedSize = line.bytes,
                    .name = line.name,
                    .label = deliverable.label,
                    .titleName = deliverable.contextLine(),
                    .client = m_org.name};
}

void AssetsView::downloadSelected()
{
    QList<Download> downloads;
    for (const auto& row : rows())
        if (auto download = m_selection.contains(row.key) ? downloadOf(*row.line) : std::nullopt)
            downloads.append(*std::move(download));
    if (!downloads.isEmpty())
        m_tasks.start(bringDown(std::move(downloads)));
}

Task<void> AssetsView::bringDown(QList<Download> downloads)
{
    auto folder = co_await m_environment.session.downloadsFolder();
    if (!folder) {
        m_toDownload = std::move(downloads);
        ask(Asking::folder);
        co_return;
    }
    for (auto& download : downloads) {
        download.folder = *folder;
        m_environment.transfers.addDownload(std::move(download));
    }
}

void AssetsView::chooseFolder()
{
    m_toDownload.clear();
    ask(Asking::folder);
}

void AssetsView::chooseFiles()
{
    ask(Asking::files);
}

QUrl AssetsView::proposedFolder() const
{
    return QUrl::fromLocalFile(proposedDownloadsFolder());
}

void AssetsView::pick(const QList<QUrl>& chosen)
{
    const auto asked = m_asking;
    ask(Asking::nothing);
    if (asked == Asking::files)
        drop(chosen);
    else if (asked == Asking::folder && !chosen.isEmpty())
        m_tasks.start(rememberFolder(localPath(chosen.first()), std::exchange(m_toDownload, {})));
}

void AssetsView::cancelPicking()
{
    m_toDownload.clear();
    ask(Asking::nothing);
}

Task<void> AssetsView::rememberFolder(QString path, QList<Download> downloads)
{
    co_await m_environment.session.setDownloadsFolder(path);
    co_await readFolder();
    if (!m_folder.isEmpty() && !downloads.isEmpty())
        co_await bringDown(std::move(downloads));
}

Task<void> AssetsView::readFolder()
{
    auto folder = (co_await m_environment.session.downloadsFolder()).value_or(QString());
    if (std::exchange(m_folder, folder) != folder)
        Q_EMIT folderChanged();
}

bool AssetsView::drop(const QList<QUrl>& files)
{
    QStringList paths;
    for (const auto& file : files)
        if (auto path = localPath(file); !path.isEmpty())
            paths.append(path);
    if (files.isEmpty()) // a program that is busy hands them over too late
        setNotice(tr("The files did not arrive from the other program. Drop them again, or choose Upload."));
    else if (paths.isEmpty())
        setNotice(tr("That is not a file on this computer. Save it here first, then drop it."));
    else
        m_tasks.start(add({.files = paths,
                           .orgId = m_org.id,
                           .client = m_org.name,
                           .folder = m_query.prefix.isEmpty() ? std::nullopt : std::optional(m_query.prefix)},
                          paths.size() < files.size()));
    return !paths.isEmpty();
}

Task<void> AssetsView::add(BinUploads uploads, bool wereSomeElsewhere)
{
    const auto org = uploads.orgId;
    auto begun = co_await m_environment.transfers.addBinUploads(std::move(uploads));
    if (wereSomeElsewhere)
        begun.objections.append(tr("What is not a file on this computer was left out. Save it here first."));
    if (org == m_org.id)
        setNotice(leftOutText(begun));
}

void AssetsView::tryAgain(int row)
{
    if (row < 0 || row >= rowCount() || !rows()[row].line->item)
        return;
    const auto& item = *rows()[row].line->item;
    m_tasks.start(add(
        {.files = {item.file}, .orgId = m_org.id, .client = m_org.name, .folder = item.target.asBin()->folder}, false));
}

void AssetsView::setNotice(const QString& notice)
{
    if (std::exchange(m_notice, notice) != notice)
        Q_EMIT noticeChanged();
}

void AssetsView::ask(Asking asking)
{
    if (std::exchange(m_asking, asking) != asking)
        Q_EMIT pickingChanged();
}

QString AssetsView::nameAt(int row) const
{
    return row >= 0 && row < rowCount() ? rows()[row].line->name : QString();
}

} // namespace palvera
