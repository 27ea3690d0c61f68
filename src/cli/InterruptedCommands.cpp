#include "async/Failure.h"
#include "cli/Commands.h"
#include "cli/DisplayText.h"
#include "cli/UploadErrand.h"
#include "files/Bookmark.h"
#include "files/FileError.h"
#include "transfers/DiscardUpload.h"
#include "transfers/Transfers.h"

#include <boost/asio/strand.hpp>

#include <algorithm>

namespace palvera::cli {

namespace {

FileError noSuchUpload(const QString& key)
{
    return FileError(
        QStringLiteral("There is no interrupted upload “%1”. List them with: palvera-cli interrupted").arg(key));
}

/// In the order of their keys.
Task<std::vector<Journal>> interruptedUploads(Workbench& bench)
{
    co_await bench.transfers.interrupted().load();
    std::vector<Journal> journals;
    for (const auto& upload : bench.transfers.interrupted().uploads())
        journals.push_back(upload.journal);
    std::sort(journals.begin(), journals.end(), [](const Journal& a, const Journal& b) { return a.key < b.key; });
    co_return journals;
}

Task<std::optional<QUuid>> beginAgain(Transfers& transfers, Journal journal)
{
    co_return transfers.resume(journal);
}

std::unique_ptr<Errand> resuming(const Journal& journal, Workbench& bench)
{
    auto found = journal.bookmark ? bookmark::resolve(*journal.bookmark) : std::nullopt;
    auto path = found ? found->path : journal.filePath;
    return std::make_unique<UploadErrand>(
        UploadErrand::Upload{.journalKey = journal.key,
                             .file = path,
                             .target = journal.destination(),
                             .wasThere = true,
                             .begin = [journal](Transfers& transfers) { return beginAgain(transfers, journal); }},
        bench.journals);
}

} // namespace

Task<ExitCode> perform(ListInterrupted, Workbench& bench)
{
    bench.output.show(listingOf(co_await interruptedUploads(bench)));
    co_return ExitCode::done;
}

Task<ExitCode> perform(ResumeUploads command, Workbench& bench)
{
    std::vector<std::unique_ptr<Errand>> errands;
    for (const auto& journal : co_await interruptedUploads(bench))
        if (!command.key || command.key == journal.key)
            errands.push_back(resuming(journal, bench));
    if (command.key && errands.empty())
        throw noSuchUpload(*command.key);
    co_return co_await Errands(bench.errands(), std::move(errands)).carryOut();
}

Task<ExitCode> perform(DiscardUpload command, Workbench& bench)
{
    auto discarded =
        co_await discardUpload(bench.api, bench.journals, boost::asio::make_strand(bench.background), command.key);
    if (discarded.isRunning && bench.journals.loadJournal(command.key))
        throw FileError(QStringLiteral("That upload is running."));
    if (!discarded.journal)
        throw noSuchUpload(command.key);
    if (discarded.untold)
        bench.output.remark(QStringLiteral("The platform could not be told: ") + describe(discarded.untold));
    bench.output.say(QStringLiteral("Gave up the upload of “%1”").arg(discarded.journal->filename),
                     {{QStringLiteral("event"), QStringLiteral("done")}, {QStringLiteral("key"), command.key}});
    co_return ExitCode::done;
}

} // namespace palvera::cli
