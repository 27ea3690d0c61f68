#pragma once

#include "session/BrowserSignIn.h"

namespace palvera::cli {

class Output;

/// The browser of somebody at a terminal: on this computer's display, or on any other computer, whose user pastes the
/// last address into the terminal. Main thread.
class TerminalBrowser {
public:
    enum class Use { allowed, never };

    /// `output` outlives it.
    TerminalBrowser(Output& output, Clock& clock, Use use);

    BrowserSignIn& signIn() { return m_signIn; }
    /// Takes addresses from the terminal, where there is one, whenever the browser is waited for. Ends by its
    /// cancellation, or with a Failure when nothing more comes from the terminal.
    Task<void> takeAddresses();

private:
    bool show(const QByteArray& address);
    std::shared_ptr<void> listen();

    Output& m_output;
    const bool m_isAllowed;
    BrowserSignIn m_signIn;
};

} // namespace palvera::cli
