#include "service/Connections.h"

#include "async/Lifetime.h"
#include "files/Folders.h"
#include "files/Preferences.h"
#include "http/CookieStore.h"
#include "http/HttpSession.h"

namespace palvera {

Connections Connections::make(const Folders& folders, const Preferences& preferences)
{
    auto& engine = makeForGood<WorkerThreads>(16);
    auto cookies = std::make_shared<CookieStore>(folders.cookies());
    auto& session = makeForGood<HttpSession>(engine.executor(), HttpSessionOptions{.sharedCookies = cookies});
    API::Surroundings surroundings{.client = session,
                                   .executor = engine.executor(),
                                   .site = currentSite(preferences),
                                   .clearCookies = [cookies] { cookies->clear(); },
                                   .cookieProblem = [cookies] { return cookies->problem(); }};
    return {
        .engine = engine, .network = makeForGood<NetworkThreads>(), .api = makeForGood<API>(std::move(surroundings))};
}

} // namespace palvera
