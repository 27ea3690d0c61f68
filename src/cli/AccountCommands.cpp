#include "cli/Commands.h"
#include "files/FileError.h"
#include "files/Preferences.h"
#include "service/API.h"
#include "service/SignInOperations.h"
#include "session/Session.h"

namespace palvera::cli {

void requireKept(const Preferences& preferences)
{
    if (auto problem = preferences.problem(); !problem.isEmpty())
        throw FileError(problem);
}

Task<ExitCode> perform(SignOut, Workbench& bench)
{
    co_await bench.session.signOut();
    bench.output.say(QStringLiteral("Signed out"), {{QStringLiteral("event"), QStringLiteral("done")}});
    bench.output.remark(bench.session.remark());
    co_return ExitCode::done;
}

Task<ExitCode> perform(WhoAmI, Workbench& bench)
{
    auto me = co_await currentUser(bench.api);
    bench.output.say(personText(me.user), recordOf(me.user));
    co_return ExitCode::done;
}

Task<ExitCode> perform(ChooseSite command, Workbench& bench)
{
    if (command.site) {
        storeSite(bench.preferences, *command.site);
        requireKept(bench.preferences);
        bench.api.setSite(*command.site);
    }
    auto site = bench.api.site();
    bench.output.say(rawValue(site), {{QStringLiteral("site"), rawValue(site)}});
    if (bench.api.isServiceNamed())
        bench.output.remark(QStringLiteral("PV_API is set: commands go there, whatever the site."));
    co_return ExitCode::done;
}

} // namespace palvera::cli
