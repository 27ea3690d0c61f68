#include "transfers/TransferEngines.h"

#include "http/HttpSession.h"
#include "http/NetworkThreads.h"

#include <random>

namespace palvera {

namespace {

double drawSpread()
{
    thread_local std::minstd_rand generator(std::random_device{}());
    return std::uniform_real_distribution<>(0.8, 1.2)(generator);
}

/// Each lane's session keeps to one thread. Like the engine pool's, these are never released.
std::unique_ptr<HttpClient> makeStorageClient()
{
    static auto& threads = *new NetworkThreads;
    return std::make_unique<HttpSession>(threads.next(), HttpSessionOptions::storage());
}

} // namespace

TransferEngines::TransferEngines(const Folders& folders, Clock& clock, API& api, const Executor& engine)
    : m_clock(clock),
      m_api(api),
      m_engine(engine),
      m_journals(folders.applicationSupport),
      m_uploader({.engine = engine,
                  .clock = clock,
                  .api = api,
                  .storage = makeStorageClient,
                  .journals = m_journals,
                  .libraryFolder = folders.library,
                  .spread = drawSpread}),
      m_downloader({.engine = engine, .clock = clock, .storage = makeStorageClient})
{}

Transfers::Environment TransferEngines::environment(const Executor& main)
{
    return {.main = main,
            .background = m_engine,
            .clock = m_clock,
            .api = m_api,
            .journals = m_journals,
            .upload = [this](UploadRequest request) { return m_uploader.upload(std::move(request)); },
            .download = [this](DownloadRequest request) { return m_downloader.download(std::move(request)); },
            .sleep = m_sleep,
            .network = m_network};
}

} // namespace palvera
