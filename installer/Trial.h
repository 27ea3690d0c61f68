#pragma once

#include "files/FileDescriptor.h"

#include <QByteArray>

#include <chrono>
#include <functional>

#include <sys/types.h>

namespace palvera::installer {

constexpr std::chrono::seconds trialLimit{20};

/// Starts the program of the build in `folder` and has it look at itself: a missing library, or a processor that is too
/// old, shows before anybody is told that the update is ready. It must end well within `limit`, its output `expected`.
///
/// The program runs as nobody when we are root, can gain no right, write to no file and see none of our descriptors and
/// nothing of our environment. It leads a process group, all of which is ended with it: `changed` is told that, and 0
/// when it has ended. Throws Refused. Only where a single thread runs.
void tryBuild(const FileDescriptor& folder, const QByteArray& expected, std::chrono::milliseconds limit,
              const std::function<void(pid_t)>& changed);

} // namespace palvera::installer
