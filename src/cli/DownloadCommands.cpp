#include "cli/Commands.h"
#include "cli/DownloadErrand.h"
#include "cli/Listing.h"
#include "files/FileError.h"
#include "files/Quantities.h"
#include "service/APIError.h"
#include "service/BrowsingOperations.h"
#include "session/Session.h"
#include "transfers/LineLimits.h"

#include <QDir>
#include <QFileInfo>

namespace palvera::cli {

namespace {

QString folderAt(const QString& named)
{
    QFileInfo folder(named);
    if (!folder.isDir())
        throw FileError(QStringLiteral("There is no folder “%1”.").arg(named));
    return QDir::cleanPath(folder.absoluteFilePath());
}

/// The folder that was named, else the one that downloads go to.
Task<QString> destination(std::optional<QString> named, const Session& session)
{
    if (named)
        co_return folderAt(*named);
    if (auto usual = co_await session.downloadsFolder())
        co_return *usual;
    throw FileError(QStringLiteral("No downloads folder is chosen, or it is gone. Name one with --to, or choose one "
                                   "with: palvera-cli downloads-folder DIR"));
}

QString lastComponent(const QString& key)
{
    return key.mid(key.lastIndexOf(u'/') + 1);
}

Task<Deliverable> findDeliverable(DownloadFiled command, Workbench& bench)
{
    const auto all = co_await listDeliverables(bench.api, command.org, command.project);
    for (const auto& deliverable : all)
        if (deliverable.id == command.deliverable)
            co_return deliverable;
    throw APIError(0, QStringLiteral("There is no deliverable “%1” in that project.").arg(command.deliverable));
}

} // namespace

Task<ExitCode> perform(DownloadFiled command, Workbench& bench)
{
    auto folder = co_await destination(command.folder, bench.session);
    auto deliverable = co_await findDeliverable(command, bench);
    auto details = deliverable.spec.value_or(QMap<QString, QString>());
    auto object = deliverable.assetObject();
    if (object.isEmpty())
        throw APIError(0, QStringLiteral("No file has been delivered for “%1” yet.").arg(deliverable.label));
    TransferTarget::Deliverable row{
        .orgId = command.org, .projectId = command.project, .deliverableId = command.deliverable};
    Download download{.object = deliveredFile(bench.api, row, object),
                      .listedSize = deliverable.expectedBytes(),
                      .name = details.value(QStringLiteral("assetFilename"), lastComponent(object)),
                      .label = deliverable.label,
                      .titleName = deliverable.contextLine(),
                      .folder = folder};
    std::vector<std::unique_ptr<Errand>> errands;
    errands.push_back(std::make_unique<DownloadErrand>(command.deliverable, recordOf(row), std::move(download)));
    co_return co_await Errands(bench.errands(), std::move(errands)).carryOut();
}

Task<ExitCode> perform(DownloadFromBin command, Workbench& bench)
{
    auto folder = co_await destination(command.folder, bench.session);
    std::vector<std::unique_ptr<Errand>> errands;
    for (const auto& key : command.keys) {
        Download download{
            .object = binObject(bench.api, command.org, key), .name = lastComponent(key), .folder = folder};
        errands.push_back(std::make_unique<DownloadErrand>(key, QJsonObject{{QStringLiteral("orgId"), command.org}},
                                                           std::move(download)));
    }
    co_return co_await Errands(bench.errands(), std::move(errands)).carryOut();
}

Task<ExitCode> perform(DownloadsFolder command, Workbench& bench)
{
    if (command.folder) {
        co_await bench.session.setDownloadsFolder(folderAt(*command.folder));
        requireKept(bench.preferences);
    }
    auto folder = co_await bench.session.downloadsFolder();
    bench.output.say(folder.value_or(QStringLiteral("No downloads folder is chosen.")),
                     {{QStringLiteral("folder"), folder ? QJsonValue(*folder) : QJsonValue()}});
    co_return ExitCode::done;
}

Task<ExitCode> perform(LimitLine command, Workbench& bench)
{
    auto limits = lineLimitsIn(bench.preferences);
    limits.rates = {.up = command.up.value_or(limits.rates.up), .down = command.down.value_or(limits.rates.down)};
    if (command.hours)
        limits.hours = hoursFrom(*command.hours);
    if (command != LimitLine{}) {
        storeLineLimits(bench.preferences, limits);
        requireKept(bench.preferences);
    }
    const auto rate = [](qint64 bytes) { return bytes > 0 ? rateText(double(bytes)) : QStringLiteral("no limit"); };
    const auto hours = limits.hours ? textOf(*limits.hours) : QString();
    const auto value = [](qint64 bytes) { return bytes > 0 ? QJsonValue(bytes) : QJsonValue(); };
    bench.output.say(
        QStringLiteral("up %1, down %2, %3")
            .arg(rate(limits.rates.up), rate(limits.rates.down), limits.hours ? hours : QStringLiteral("always")),
        {{QStringLiteral("up"), value(limits.rates.up)},
         {QStringLiteral("down"), value(limits.rates.down)},
         {QStringLiteral("hours"), limits.hours ? QJsonValue(hours) : QJsonValue()}});
    co_return ExitCode::done;
}

} // namespace palvera::cli
