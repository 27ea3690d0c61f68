#include "cli/TerminalKey.h"

#include "async/Event.h"
#include "cli/Output.h"
#include "cli/PasswordInput.h"
#include "desktop/PasskeyService.h"
#include "session/PasskeyTexts.h"

#include <boost/asio/this_coro.hpp>

namespace palvera::cli {

namespace {

using Kind = PasskeyPrompt::Kind;

Task<int> accountFromTerminal(QStringList names, Output& output)
{
    for (qsizetype i = 0; i < names.size(); ++i)
        output.remark(QStringLiteral("%1  %2").arg(i + 1).arg(names[i]));
    for (;;) {
        const auto entered = co_await numberFromTerminal(QStringLiteral("Number: "));
        if (const int number = entered.trimmed().toInt(); number >= 1 && number <= names.size())
            co_return number - 1;
    }
}

} // namespace

Task<void> answerPrompts(PasskeyService& service, Output& output)
{
    Event changed(co_await boost::asio::this_coro::executor);
    QObject listener;
    QObject::connect(&service, &PasskeyService::promptChanged, &listener, [&changed] { changed.set(); });
    for (;;) {
        const auto prompt = service.prompt();
        output.remark(textFor(prompt));
        output.remark(noteFor(prompt));
        if (prompt.kind == Kind::pin)
            service.enterPin(co_await pinFromTerminal(QStringLiteral("PIN: ")));
        else if (prompt.kind == Kind::account)
            service.choose(co_await accountFromTerminal(accountsOf(prompt), output));
        while (service.prompt() == prompt)
            co_await changed.wait();
    }
}

} // namespace palvera::cli
