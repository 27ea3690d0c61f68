#include "cli/Commands.h"
#include "cli/UploadErrand.h"
#include "files/SourcePath.h"
#include "transfers/Transfers.h"

namespace palvera::cli {

namespace {

Task<std::optional<QUuid>> beginFiling(Transfers& transfers, DeliverableUpload upload)
{
    co_return transfers.addUpload(std::move(upload));
}

Task<std::optional<QUuid>> beginAdding(Transfers& transfers, BinUploads upload)
{
    auto begun = co_await transfers.addBinUploads(std::move(upload));
    co_return begun.items.isEmpty() ? std::nullopt : std::optional(begun.items.first());
}

std::unique_ptr<Errand> filing(const UploadFile& command, const JournalStore& journals)
{
    DeliverableUpload upload{.file = absolutePath(command.file),
                             .orgId = command.org,
                             .projectId = command.project,
                             .deliverable = {.id = command.deliverable},
                             .confirmed = command.confirmed};
    TransferTarget::Deliverable row{
        .orgId = command.org, .projectId = command.project, .deliverableId = command.deliverable};
    return std::make_unique<UploadErrand>(
        UploadErrand::Upload{.journalKey = command.deliverable,
                             .file = upload.file,
                             .target = row,
                             .begin = [upload](Transfers& transfers) { return beginFiling(transfers, upload); }},
        journals);
}

std::unique_ptr<Errand> adding(const QString& file, const UploadToBin& command, const JournalStore& journals)
{
    BinUploads upload{.files = {absolutePath(file)}, .orgId = command.org, .folder = binFolder(command.folder)};
    return std::make_unique<UploadErrand>(
        UploadErrand::Upload{.journalKey = binJournalKey(command.org, upload.folder, upload.files.first()),
                             .file = upload.files.first(),
                             .target = TransferTarget::Bin{.orgId = command.org, .folder = upload.folder},
                             .begin = [upload](Transfers& transfers) { return beginAdding(transfers, upload); }},
        journals);
}

} // namespace

Task<ExitCode> perform(UploadFile command, Workbench& bench)
{
    std::vector<std::unique_ptr<Errand>> errands;
    errands.push_back(filing(command, bench.journals));
    co_return co_await Errands(bench.errands(), std::move(errands)).carryOut();
}

Task<ExitCode> perform(UploadToBin command, Workbench& bench)
{
    std::vector<std::unique_ptr<Errand>> errands;
    for (const auto& file : command.files)
        errands.push_back(adding(file, command, bench.journals));
    co_return co_await Errands(bench.errands(), std::move(errands)).carryOut();
}

} // namespace palvera::cli
