#pragma once

#include "cli/Arguments.h"
#include "cli/ExitCode.h"
#include "cli/Workbench.h"

namespace palvera::cli {

// What the commands do. A command that fails throws, for the program to report; those that handle several uploads, or
// have more to say about a failure, report it themselves and return its code.

Task<ExitCode> perform(SignIn command, Workbench& bench);
Task<ExitCode> perform(SignOut command, Workbench& bench);
Task<ExitCode> perform(WhoAmI command, Workbench& bench);
Task<ExitCode> perform(ChooseSite command, Workbench& bench);

Task<ExitCode> perform(ListOrgs command, Workbench& bench);
Task<ExitCode> perform(ListProjects command, Workbench& bench);
Task<ExitCode> perform(ListDeliverables command, Workbench& bench);
Task<ExitCode> perform(ListAssets command, Workbench& bench);
Task<ExitCode> perform(ListBin command, Workbench& bench);

Task<ExitCode> perform(UploadFile command, Workbench& bench);
Task<ExitCode> perform(UploadToBin command, Workbench& bench);

Task<ExitCode> perform(DownloadFiled command, Workbench& bench);
Task<ExitCode> perform(DownloadFromBin command, Workbench& bench);
Task<ExitCode> perform(DownloadsFolder command, Workbench& bench);
Task<ExitCode> perform(LimitLine command, Workbench& bench);

Task<ExitCode> perform(ListInterrupted command, Workbench& bench);
Task<ExitCode> perform(ResumeUploads command, Workbench& bench);
Task<ExitCode> perform(DiscardUpload command, Workbench& bench);

/// Throws FileError when the latest choice of the user's will be gone at the next start.
void requireKept(const Preferences& preferences);

/// The folder of a bin as the platform names it, with a final "/"; nothing for the top level.
std::optional<QString> binFolder(const std::optional<QString>& folder);

} // namespace palvera::cli
