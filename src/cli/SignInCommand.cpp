#include "async/TaskGroup.h"
#include "cli/Commands.h"
#include "cli/PasswordInput.h"
#include "cli/TerminalBrowser.h"
#include "cli/TerminalKey.h"
#include "desktop/SecurityKeys.h"
#include "service/APIError.h"
#include "service/SignInOperations.h"
#include "session/PasskeySignIn.h"
#include "session/Session.h"
#include "session/SignIn.h"
#include "text/VisibleText.h"

namespace palvera::cli {

namespace {

/// Of one kind; a sign-in that takes more has gone wrong otherwise.
constexpr int mostCodes = 10;

/// The steps of signing in, as questions and answers.
class Conversation {
public:
    Conversation(SignIn command, Workbench& bench)
        : m_command(std::move(command)),
          m_bench(bench),
          m_browser(bench.output, bench.clock,
                    m_command.passwordFromStdin ? TerminalBrowser::Use::never : TerminalBrowser::Use::allowed),
          m_keys(bench.mainThread),
          m_passkey(bench.api, m_keys),
          m_steps({.api = bench.api, .web = m_browser.signIn(), .passkey = m_passkey})
    {}

    /// Ends once somebody is signed in; throws what kept them from it.
    Task<void> signIn()
    {
        auto first = co_await firstOf(takeSteps(), m_command.withPasskey ? answerPrompts(m_keys, m_bench.output)
                                                                         : m_browser.takeAddresses());
        if (auto failure = std::visit([](const auto& ended) { return ended.failure; }, first))
            std::rethrow_exception(failure);
        co_await m_bench.session.refresh();
        if (!m_bench.session.me())
            std::rethrow_exception(m_bench.session.failure());
    }

private:
    using Next = palvera::SignIn::Next;

    Task<void> takeSteps()
    {
        auto next = co_await firstStep();
        while (!std::holds_alternative<SignInStep::SignedIn>(next))
            next = co_await std::visit([this](const auto& question) { return answer(question); }, next);
    }

    Task<Next> firstStep()
    {
        if (m_command.withPasskey)
            co_return co_await m_steps.withPasskey();
        if (m_command.inBrowser)
            co_return co_await m_steps.inBrowser(m_command.email);
        m_config = (co_await answerOf(authConfig(m_bench.api))).value;
        if (m_config && m_config->workos)
            co_return co_await m_steps.withEmail(m_command.email);
        co_return palvera::SignIn::EnterPassword{};
    }

    Task<Next> answer(SignInStep::SignedIn signedIn) { co_return signedIn; }

    Task<Next> answer(palvera::SignIn::EnterPassword)
    {
        LoginBody body{.email = m_command.email, .password = co_await password()};
        if (m_config && m_config->workos)
            co_return co_await m_steps.withPassword(std::move(body), m_config);
        co_return co_await m_steps.directly(std::move(body));
    }

    Task<Next> answer(SignInStep::VerifyEmail)
    {
        const auto prompt = QStringLiteral("Code that was sent to %1, or Enter for another: ");
        return withCode(prompt.arg(visibleText(m_command.email)), true);
    }

    Task<Next> answer(SignInStep::EnrolTotp enrol)
    {
        m_bench.output.remark(
            QStringLiteral("Every sign-in asks for a code from an authenticator app. Enter this key there: %1")
                .arg(enrol.secret));
        return withCode(QStringLiteral("Code that it shows: "), false);
    }

    Task<Next> answer(SignInStep::Totp)
    {
        return withCode(QStringLiteral("Code from your authenticator app: "), false);
    }

    /// Asks on the terminal until the platform takes the code; one from the command line is tried once.
    Task<Next> withCode(QString prompt, bool byEmail)
    {
        for (int left = mostCodes; left > 0; --left) {
            const auto entered = m_command.code ? *m_command.code : co_await codeFromTerminal(prompt);
            if (byEmail && entered.isEmpty() && !m_command.code) {
                co_await resendEmailCode(m_bench.api);
                m_bench.output.remark(QStringLiteral("Another code is on its way."));
                continue;
            }
            auto sent = co_await answerOf(byEmail ? m_steps.withEmailCode(entered, m_command.email)
                                                  : m_steps.withAuthenticatorCode(entered, m_command.email));
            if (sent.value)
                co_return *std::move(sent.value);
            if (m_command.code || !asksToSignIn(sent.failure) || left == 1)
                std::rethrow_exception(sent.failure);
            m_bench.output.remark(describe(sent.failure));
        }
        throw Failure(QStringLiteral("No code was entered."));
    }

    Task<QString> password()
    {
        if (m_command.passwordFromStdin)
            return passwordFromStandardInput();
        return passwordFromTerminal(QStringLiteral("Password of %1: ").arg(visibleText(m_command.email)));
    }

    const SignIn m_command;
    Workbench& m_bench;
    TerminalBrowser m_browser;
    SecurityKeys m_keys;
    PasskeySignIn m_passkey;
    const palvera::SignIn m_steps;
    std::optional<AuthConfig> m_config;
};

} // namespace

Task<ExitCode> perform(SignIn command, Workbench& bench)
{
    Conversation conversation(std::move(command), bench);
    co_await conversation.signIn();
    const auto& user = bench.session.me()->user;
    bench.output.say(QStringLiteral("Signed in as %1").arg(personText(user)), recordOf(user));
    bench.output.remark(bench.session.remark());
    co_return ExitCode::done;
}

} // namespace palvera::cli
