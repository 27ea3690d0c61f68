#include "cli/Commands.h"
#include "cli/DisplayText.h"
#include "cli/PasswordInput.h"
#include "platform/Failure.h"
#include "platform/TaskGroup.h"
#include "session/LoginView.h"
#include "session/Session.h"
#include "session/SignInDoors.h"

#include <boost/asio/this_coro.hpp>

namespace palvera::cli {

namespace {

/// The sign-in screen's flow, in questions and answers.
class Conversation {
public:
    Conversation(SignIn command, Workbench& bench)
        : m_command(std::move(command)),
          m_bench(bench),
          m_changed(bench.mainThread),
          m_view({.main = bench.mainThread,
                  .clock = bench.clock,
                  .api = bench.api,
                  .session = bench.session,
                  .web = m_web,
                  .passkey = m_passkey})
    {
        QObject::connect(&m_view, &LoginView::configChanged, &m_view, [this] { m_changed.set(); });
        QObject::connect(&m_view, &LoginView::busyChanged, &m_view, [this] { m_changed.set(); });
    }

    /// Ends once somebody is signed in; throws what kept them from it.
    Task<void> signIn()
    {
        m_view.open(false);
        while (m_view.isConfigLoading())
            co_await m_changed.wait();
        m_view.setEmail(m_command.email);
        while (!m_bench.session.me()) {
            co_await answer();
            m_view.submit();
            while (m_view.isBusy())
                co_await m_changed.wait();
            if (m_view.failure())
                std::rethrow_exception(m_view.failure());
            if (!m_view.error().isEmpty())
                throw Failure(m_view.error());
        }
    }

    Task<void> close() { return m_view.close(); }

private:
    /// Enters what the face asks for.
    Task<void> answer()
    {
        switch (m_view.face()) {
        case LoginView::Face::email:
        case LoginView::Face::forgot:
            break;
        case LoginView::Face::login:
        case LoginView::Face::password:
            m_view.setPassword(co_await password());
            break;
        case LoginView::Face::verify:
            m_view.setCode(co_await code(QStringLiteral("Code that was sent to %1: ").arg(printable(m_command.email))));
            break;
        case LoginView::Face::enrol:
            m_bench.output.remark(
                QStringLiteral("Every sign-in asks for a code from an authenticator app. Enter this key there: %1")
                    .arg(m_view.secret()));
            m_view.setCode(co_await code(QStringLiteral("Code that it shows: ")));
            break;
        case LoginView::Face::totp:
            m_view.setCode(co_await code(QStringLiteral("Code from your authenticator app: ")));
            break;
        }
    }

    Task<QString> password()
    {
        if (m_command.passwordFromStdin)
            return passwordFromStandardInput();
        return passwordFromTerminal(QStringLiteral("Password of %1: ").arg(printable(m_command.email)));
    }

    Task<QString> code(QString prompt)
    {
        if (m_command.code)
            co_return *m_command.code;
        co_return co_await codeFromTerminal(std::move(prompt));
    }

    const SignIn m_command;
    Workbench& m_bench;
    NoWebSignIn m_web;
    NoPasskeySignIn m_passkey;
    Event m_changed;
    LoginView m_view;
};

} // namespace

Task<ExitCode> perform(SignIn command, Workbench& bench)
{
    Conversation conversation(std::move(command), bench);
    auto outcome = co_await outcomeOf(conversation.signIn());
    // An interruption, too, ends it before it goes.
    co_await boost::asio::this_coro::reset_cancellation_state(boost::asio::disable_cancellation());
    co_await conversation.close();
    if (outcome.failure)
        std::rethrow_exception(outcome.failure);
    const auto& user = bench.session.me()->user;
    bench.output.say(QStringLiteral("Signed in as %1").arg(personText(user)), recordOf(user));
    co_return ExitCode::done;
}

} // namespace palvera::cli
