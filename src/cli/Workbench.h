#pragma once

#include "cli/Output.h"
#include "platform/Clock.h"
#include "transfer/CancelFlag.h"

namespace palvera {

class API;
class JournalStore;
class Preferences;
class Uploader;

namespace cli {

/// What commands work with; all of it outlives them. They run on the main thread.
struct Workbench {
    Clock& clock;
    Preferences& preferences;
    API& api;
    const JournalStore& journals;
    Uploader& uploader;
    Output& output;
    Executor mainThread;
    std::shared_ptr<CancelFlag> stop; ///< stopped when the user interrupts the program
};

} // namespace cli

} // namespace palvera
