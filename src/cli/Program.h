#pragma once

#include "cli/Commands.h"
#include "platform/Folders.h"
#include "platform/MainThread.h"
#include "platform/Preferences.h"
#include "transfer/Uploader.h"

namespace palvera::cli {

/// Builds all that commands work with and runs one of them. Main thread, within a QCoreApplication.
class Program {
public:
    explicit Program(Output& output);

    /// Carries `command` out in the application's event loop, reports a failure and returns the program's exit code.
    /// The first SIGINT or SIGTERM stops the command, which ends as interrupted; a second one ends the process.
    ExitCode run(const Command& command);

private:
    Task<void> perform(Command command, std::optional<ExitCode>& ended);
    ExitCode report(const std::exception_ptr& failure);

    Output& m_output;
    const Folders m_folders = Folders::ofUser();
    SystemClock m_clock;
    Preferences m_preferences;
    JournalStore m_journals;
    Uploader m_uploader;
    MainThread m_mainThread;
    Workbench m_bench;
};

} // namespace palvera::cli
