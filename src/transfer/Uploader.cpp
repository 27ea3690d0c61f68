#include "transfer/Uploader.h"

#include "async/RunOn.h"
#include "transfer/UploadRun.h"

#include <boost/asio/strand.hpp>

namespace palvera {

Uploader::Uploader(Environment environment) : Uploader(std::move(environment), Settings{}) {}

Uploader::Uploader(Environment environment, Settings settings)
    : m_environment(std::move(environment)), m_settings(settings)
{}

Task<void> Uploader::upload(UploadRequest request)
{
    auto flag = request.flag;
    UploadRun run(m_environment, m_settings, std::move(request));
    co_await runOn(boost::asio::make_strand(m_environment.engine), runUntilStopped(flag, run.perform()));
}

} // namespace palvera
