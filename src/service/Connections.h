#pragma once

#include "http/NetworkThreads.h"
#include "service/API.h"

namespace palvera {

struct Folders;
class Preferences;

/// What a program talks to the outside with, off its main thread. All of it outlives `main`: operations may still be
/// under way while the process ends. One for the process.
struct Connections {
    WorkerThreads& engine;   ///< for the engines, the service client and the disk; see `make`
    NetworkThreads& network; ///< for the sessions that move bulk
    API& api;                ///< with the cookies of the user's folder, for the site that they chose last

    /// Sixteen threads are the engine's: eight lanes that block on a slow disk leave eight for everything else. Serial
    /// work makes its own strand of them.
    static Connections make(const Folders& folders, const Preferences& preferences);
};

} // namespace palvera
