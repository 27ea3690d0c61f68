#include "cli/Commands.h"
#include "cli/DisplayText.h"
#include "cli/PasswordInput.h"
#include "platform/Preferences.h"
#include "service/API.h"
#include "service/SignInOperations.h"
#include "session/Session.h"

namespace palvera::cli {

namespace {

QString personText(const User& user)
{
    return user.name ? QStringLiteral("%1 <%2>").arg(*user.name, user.email) : user.email;
}

} // namespace

Task<ExitCode> perform(SignIn command, Workbench& bench)
{
    auto prompt = QStringLiteral("Password of %1: ").arg(printable(command.email));
    QString password;
    if (command.passwordFromStdin)
        password = co_await passwordFromStandardInput();
    else
        password = co_await passwordFromTerminal(prompt);
    co_await signInDirectly(bench.api, {.email = command.email, .password = password});
    auto me = co_await currentUser(bench.api);
    bench.output.say(QStringLiteral("Signed in as %1").arg(personText(me.user)), recordOf(me.user));
    co_return ExitCode::done;
}

Task<ExitCode> perform(SignOut, Workbench& bench)
{
    co_await bench.session.signOut();
    bench.output.say(QStringLiteral("Signed out"), {{QStringLiteral("event"), QStringLiteral("done")}});
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
        bench.api.setSite(*command.site);
    }
    auto site = bench.api.site();
    bench.output.say(rawValue(site), {{QStringLiteral("site"), rawValue(site)}});
    if (parseAddress(baseURL(site)) != bench.api.serviceBase())
        bench.output.remark(QStringLiteral("PV_API is set: commands go there, whatever the site."));
    co_return ExitCode::done;
}

} // namespace palvera::cli
