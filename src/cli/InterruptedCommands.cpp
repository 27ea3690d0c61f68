#include "cli/Commands.h"
#include "cli/DisplayText.h"
#include "cli/Sending.h"
#include "platform/Bookmark.h"
#include "platform/TaskGroup.h"
#include "service/API.h"
#include "transfer/UploadProtocol.h"

#include <algorithm>

namespace palvera::cli {

namespace {

Journal findJournal(const QString& key, const Workbench& bench)
{
    if (auto journal = bench.journals.loadJournal(key))
        return *journal;
    throw FileError(
        QStringLiteral("There is no interrupted upload “%1”. List them with: palvera-cli interrupted").arg(key));
}

std::vector<Journal> sortedJournals(const Workbench& bench)
{
    auto journals = bench.journals.loadJournals();
    std::sort(journals.begin(), journals.end(), [](const Journal& a, const Journal& b) { return a.key < b.key; });
    return journals;
}

Task<ExitCode> resume(Journal journal, Workbench& bench)
{
    auto found = journal.bookmark ? bookmark::resolve(*journal.bookmark) : std::nullopt;
    auto path = found ? found->path : journal.filePath;
    if (auto objection = objectionTo(path); !objection.isEmpty()) {
        bench.output.fail(objection, {{QStringLiteral("key"), journal.key}});
        co_return ExitCode::failed;
    }
    if (fileStamp(path) != journal.fileStamp)
        bench.output.remark(QStringLiteral("“%1” has changed since: it is sent from its start.").arg(path));
    co_return co_await sendFile(
        {.target = journal.destination(), .file = path, .bookmark = journal.bookmark, .key = journal.key}, bench);
}

} // namespace

Task<ExitCode> perform(ListInterrupted, Workbench& bench)
{
    bench.output.show(listingOf(sortedJournals(bench)));
    co_return ExitCode::done;
}

Task<ExitCode> perform(ResumeUploads command, Workbench& bench)
{
    if (command.key)
        co_return co_await resume(findJournal(*command.key, bench), bench);
    auto worst = ExitCode::done;
    for (const auto& journal : sortedJournals(bench)) {
        auto code = co_await resume(journal, bench);
        worst = worse(worst, code);
        if (code == ExitCode::interrupted)
            break;
    }
    co_return worst;
}

Task<ExitCode> perform(DiscardUpload command, Workbench& bench)
{
    auto journal = findJournal(command.key, bench);
    auto held = bench.journals.tryLock(command.key);
    if (!held)
        throw FileError(QStringLiteral("That upload is running."));
    auto abort = co_await outcomeOf(abortUpload(bench.api, journal.destination(), journal.sessionId,
                                                {.object = journal.object, .uploadId = journal.uploadId}));
    if (exitCodeFor(abort.failure) == ExitCode::interrupted)
        std::rethrow_exception(abort.failure);
    bench.journals.removeJournal(command.key);
    if (abort.failure)
        bench.output.remark(QStringLiteral("The platform could not be told: ") + describe(abort.failure));
    bench.output.say(QStringLiteral("Gave up the upload of “%1”").arg(journal.filename),
                     {{QStringLiteral("event"), QStringLiteral("done")}, {QStringLiteral("key"), command.key}});
    co_return ExitCode::done;
}

} // namespace palvera::cli
