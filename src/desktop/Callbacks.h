#pragma once

#include "desktop/Arrival.h"

#include <QString>

#include <functional>
#include <memory>

namespace palvera {

class MessageSocket;

// Who waits for an address of the scheme `palvera`, with which a browser ends a sign-in.
//
// The browser starts a program with the user's environment, whatever that of the one that waits: a run with folders of
// its own, or the command line. So whoever waits listens at a socket that every program of the user finds.

/// While it lives, addresses that are handed over come to its process. Main thread.
class CallbackListener {
public:
    /// `onCallback` is called with each that comes, from the event loop, and may destroy this. Where there is no
    /// runtime folder that belongs to this user alone, nothing comes. `runtimeFolder` is the user's own unless given.
    explicit CallbackListener(std::function<void(const Arrival&)> onCallback, const QString& runtimeFolder = {});
    ~CallbackListener();
    CallbackListener(const CallbackListener&) = delete;
    CallbackListener& operator=(const CallbackListener&) = delete;

private:
    std::unique_ptr<MessageSocket> m_socket; // null where nothing comes
};

enum class HandOver {
    done,
    ours,   ///< it is this process that waits; nothing was done
    nobody, ///< waits
};
/// Hands addresses to whoever began to wait last. Blocks for two seconds at most with each one that does not take them.
HandOver handOver(const Arrival& arrival, const QString& runtimeFolder = {});

} // namespace palvera
