#include "cli/Commands.h"
#include "service/API.h"
#include "service/APIError.h"
#include "service/BrowsingOperations.h"

#include <QSet>

namespace palvera::cli {

std::optional<QString> binFolder(const std::optional<QString>& folder)
{
    if (!folder || folder->isEmpty())
        return {};
    return folder->endsWith(u'/') ? *folder : *folder + u'/';
}

Task<ExitCode> perform(ListOrgs, Workbench& bench)
{
    bench.output.show(listingOf(co_await listOrgs(bench.api)));
    co_return ExitCode::done;
}

Task<ExitCode> perform(ListProjects command, Workbench& bench)
{
    bench.output.show(listingOf(co_await listProjects(bench.api, command.org)));
    co_return ExitCode::done;
}

Task<ExitCode> perform(ListDeliverables command, Workbench& bench)
{
    bench.output.show(listingOf(co_await listDeliverables(bench.api, command.org, command.project)));
    co_return ExitCode::done;
}

Task<ExitCode> perform(ListAssets command, Workbench& bench)
{
    AssetQuery query{.search = command.search, .family = command.family};
    QList<OrgAssetFile> files;
    QList<OrgAssetRow> rows;
    for (;; ++query.page) {
        auto page = co_await listAssetFiles(bench.api, command.org, query);
        files += page.files;
        rows += page.rows;
        if (page.files.isEmpty() || files.size() >= page.total)
            break;
    }
    bench.output.show(listingOf(files, rows));
    co_return ExitCode::done;
}

Task<ExitCode> perform(ListBin command, Workbench& bench)
{
    BinQuery query{.prefix = binFolder(command.folder), .search = command.search};
    QStringList folders;
    QList<BinObject> objects;
    QSet<QString> cursors; // a platform that names one twice would be asked for ever
    do {
        auto page = co_await listBin(bench.api, command.org, query);
        folders += page.folders.value_or(QStringList());
        objects += page.objects;
        query.cursor = page.nextCursor.value_or(QString());
        if (cursors.contains(*query.cursor))
            throw APIError(0, QStringLiteral("The platform lists the same page of the bin again and again."));
        cursors.insert(*query.cursor);
    } while (!query.cursor->isEmpty());
    folders.removeDuplicates();
    bench.output.show(listingOf(query.prefix.value_or(QString()), folders, objects));
    co_return ExitCode::done;
}

} // namespace palvera::cli
