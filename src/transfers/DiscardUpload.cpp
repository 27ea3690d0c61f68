#include "transfers/DiscardUpload.h"

#include "async/Failure.h"
#include "async/RunOn.h"
#include "async/TaskGroup.h"
#include "files/FileError.h"
#include "transfer/JournalStore.h"
#include "transfer/UploadProtocol.h"

namespace palvera {

Task<Discarded> discardUpload(API& api, const JournalStore& journals, Executor disk, QString journalKey)
{
    Discarded discarded;
    std::optional<LockFile> held;
    co_await callOn(disk, [&] {
        journals.removeWaiting(journalKey);
        try {
            auto outcome = LockFile::Outcome::released;
            while (outcome == LockFile::Outcome::released) { // by a run that has just ended
                held.reset();
                held.emplace(journals.lockOf(journalKey));
                outcome = held->tryLock();
            }
            discarded.isRunning = outcome == LockFile::Outcome::held;
        } catch (const FileError&) {
            held.reset(); // where no lock can be made, runs go on without one, too
        }
        if (!discarded.isRunning)
            discarded.journal = journals.loadJournal(journalKey);
        if (!discarded.journal)
            held.reset();
    });
    if (!discarded.journal)
        co_return discarded;
    const auto& journal = *discarded.journal;
    discarded.untold = (co_await outcomeOf(abortUpload(api, journal.destination(), journal.sessionId,
                                                       {.object = journal.object, .uploadId = journal.uploadId})))
                           .failure;
    if (isCancellation(discarded.untold))
        std::rethrow_exception(discarded.untold);
    co_await callOn(disk, [&] {
        journals.removeJournal(journalKey);
        held.reset();
    });
    co_return discarded;
}

} // namespace palvera
