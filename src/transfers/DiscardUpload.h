#pragma once

#include "async/Task.h"
#include "transfer/Journal.h"

#include <exception>
#include <optional>

namespace palvera {

class API;
class JournalStore;

/// What came of giving up an upload.
struct Discarded {
    bool isRunning = false;              ///< a run holds it, in this process or another: nothing was done
    std::optional<Journal> journal = {}; ///< what it was; nothing when there was none or it runs
    std::exception_ptr untold = {};      ///< why the platform could not be told
};

/// Gives up the upload whose journal has the key `journalKey`, unless it runs: has the platform drop what it holds of
/// it, and removes the journal, also when the platform cannot be told. Disk work happens on `disk`. Cancelling leaves
/// the journal.
Task<Discarded> discardUpload(API& api, const JournalStore& journals, Executor disk, QString journalKey);

} // namespace palvera
