#include "cli/Commands.h"
#include "cli/Sending.h"
#include "platform/Bookmark.h"
#include "platform/Failure.h"

#include <QDir>
#include <QFileInfo>

namespace palvera::cli {

namespace {

/// As journals keep it: the same file by whatever way it was named.
QString wholePath(const QString& file)
{
    return QDir::cleanPath(QFileInfo(file).absoluteFilePath());
}

UploadRequest requestFor(TransferTarget target, const QString& path, const QString& key)
{
    return {.target = std::move(target), .file = path, .bookmark = bookmark::make(path), .key = key};
}

} // namespace

Task<ExitCode> perform(UploadFile command, Workbench& bench)
{
    auto path = wholePath(command.file);
    if (auto objection = objectionTo(path); !objection.isEmpty())
        throw FileError(objection);
    TransferTarget::Deliverable row{
        .orgId = command.org, .projectId = command.project, .deliverableId = command.deliverable};
    auto request = requestFor(row, path, command.deliverable);
    request.confirmed = command.confirmed;
    co_return co_await sendFile(std::move(request), bench);
}

Task<ExitCode> perform(UploadToBin command, Workbench& bench)
{
    auto worst = ExitCode::done;
    auto folder = binFolder(command.folder);
    for (const auto& file : command.files) {
        auto path = wholePath(file);
        auto code = ExitCode::failed;
        if (auto objection = objectionTo(path); !objection.isEmpty()) {
            bench.output.fail(objection);
        } else {
            auto request = requestFor(TransferTarget::Bin{.orgId = command.org, .folder = folder}, path,
                                      binJournalKey(command.org, folder, path));
            code = co_await sendFile(std::move(request), bench);
        }
        worst = worse(worst, code);
        if (code == ExitCode::interrupted)
            break;
    }
    co_return worst;
}

} // namespace palvera::cli
