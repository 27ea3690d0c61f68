#include "transfer/Downloader.h"

#include "async/RunOn.h"
#include "transfer/DownloadRun.h"

#include <boost/asio/strand.hpp>

namespace palvera {

Downloader::Downloader(Environment environment) : Downloader(std::move(environment), Settings{}) {}

Downloader::Downloader(Environment environment, Settings settings)
    : m_environment(std::move(environment)), m_settings(settings)
{
    for (int lane = 0; lane < m_settings.lanes; ++lane)
        m_sessions.push_back(m_environment.storage());
}

Downloader::~Downloader() = default;

Task<void> Downloader::download(DownloadRequest request)
{
    DownloadRun run(m_environment, m_settings, m_sessions, std::move(request));
    co_await runOn(boost::asio::make_strand(m_environment.engine), run.perform());
}

} // namespace palvera
