#include "transfers/TransferEngines.h"

#include "http/HttpSession.h"
#include "service/Connections.h"

#include <random>

namespace palvera {

namespace {

double drawSpread()
{
    thread_local std::minstd_rand generator(std::random_device{}());
    return std::uniform_real_distribution<>(0.8, 1.2)(generator);
}

/// Sessions for storage; each keeps to one thread.
HttpClientFactory storageClients(NetworkThreads& threads, const LineShares& shares)
{
    return [&threads, shares] {
        auto options = HttpSessionOptions::storage();
        options.sendLimit = shares.up;
        options.receiveLimit = shares.down;
        return std::make_unique<HttpSession>(threads.next(), std::move(options));
    };
}

} // namespace

TransferEngines::TransferEngines(const Folders& folders, Clock& clock, const Connections& connections)
    : m_clock(clock),
      m_api(connections.api),
      m_engine(connections.engine.executor()),
      m_journals(folders.applicationSupport),
      m_index(folders.applicationSupport),
      m_uploader({.engine = m_engine,
                  .clock = clock,
                  .storage = storageClients(connections.network, m_shares),
                  .journals = m_journals,
                  .libraryFolder = folders.library,
                  .spread = drawSpread,
                  .hasNetwork = [this] { return m_network.isUsable(); }}),
      m_downloader({.engine = m_engine,
                    .clock = clock,
                    .storage = storageClients(connections.network, m_shares),
                    .hasNetwork = [this] { return m_network.isUsable(); }})
{}

Transfers::Environment TransferEngines::environment(const Executor& main)
{
    return {.main = main,
            .background = m_engine,
            .clock = m_clock,
            .api = m_api,
            .journals = m_journals,
            .index = m_index,
            .upload = [this](UploadRequest request) { return m_uploader.upload(std::move(request)); },
            .download = [this](DownloadRequest request) { return m_downloader.download(std::move(request)); },
            .sleep = m_sleep,
            .network = m_network};
}

} // namespace palvera
