#pragma once

#include "desktop/SleepInhibitor.h"
#include "files/Folders.h"
#include "http/NetworkPath.h"
#include "transfer/Downloader.h"
#include "transfer/Uploader.h"
#include "transfers/LineLimits.h"
#include "transfers/Transfers.h"

namespace palvera {

struct Connections;

/// What a model of transfers stands on in a program: the engines on real connections, the journals in the user's
/// folder, and what the machine says of sleep and network. Main thread; outlives the model.
class TransferEngines {
public:
    /// `connections` run the engines and what blocks on the disk. `clock` outlives this.
    TransferEngines(const Folders& folders, Clock& clock, const Connections& connections);

    const JournalStore& journals() const { return m_journals; }
    /// What all its transfers share; nothing is limited at first.
    const LineShares& shares() const { return m_shares; }
    /// For the model that lives on `main`.
    Transfers::Environment environment(const Executor& main);

private:
    Clock& m_clock;
    API& m_api;
    const Executor m_engine;
    const LineShares m_shares;
    JournalStore m_journals;
    DownloadIndex m_index;
    Uploader m_uploader;
    Downloader m_downloader;
    SystemSleepInhibitor m_sleep;
    SystemNetworkPath m_network;
};

} // namespace palvera
