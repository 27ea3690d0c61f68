#pragma once

#include "cli/ExitCode.h"
#include "cli/Workbench.h"
#include "transfer/Uploader.h"

namespace palvera::cli {

/// Why the file at `path` cannot be sent; empty when nothing speaks against it.
QString objectionTo(const QString& path);

/// Sends one file, shows its progress and says how it ended, with what to do about it. Throws nothing but what ends the
/// program; a stop is said and returned like any other end.
Task<ExitCode> sendFile(UploadRequest request, Workbench& bench);

} // namespace palvera::cli
