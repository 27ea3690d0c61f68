#include "cli/TerminalBrowser.h"

#include "cli/Output.h"
#include "cli/PasswordInput.h"
#include "desktop/Callbacks.h"

#include <boost/asio/this_coro.hpp>

#include <QProcess>

namespace palvera::cli {

namespace {

bool hasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

bool openOnDisplay(const QByteArray& address)
{
    QProcess opener;
    opener.setProgram(QStringLiteral("xdg-open"));
    opener.setArguments({QString::fromUtf8(address)});
    opener.setStandardOutputFile(QProcess::nullDevice());
    opener.setStandardErrorFile(QProcess::nullDevice());
    return hasDisplay() && opener.startDetached();
}

} // namespace

TerminalBrowser::TerminalBrowser(Output& output, Clock& clock, Use use)
    : m_output(output),
      m_isAllowed(use == Use::allowed),
      m_signIn({.clock = clock,
                .show = [this](const QByteArray& address) { return show(address); },
                .listen = [this] { return listen(); }})
{}

/// No browser of this computer comes back to it without a display.
std::shared_ptr<void> TerminalBrowser::listen()
{
    if (!hasDisplay())
        return nullptr;
    return std::make_shared<CallbackListener>([this](const Arrival& arrival) {
        for (const auto& address : arrival.addresses)
            m_signIn.take(QString::fromUtf8(address));
    });
}

bool TerminalBrowser::show(const QByteArray& address)
{
    if (!m_isAllowed) {
        m_output.remark(QStringLiteral("That account signs in in the browser. Sign in with --web."));
        return false;
    }
    if (!hasDisplay() && !hasTerminal()) {
        m_output.remark(
            QStringLiteral("There is neither a display to open a browser on nor a terminal to take its last "
                           "address from."));
        return false;
    }
    m_output.remark(openOnDisplay(address)
                        ? QStringLiteral("Finish in your browser. If it does not open, open this address yourself:")
                        : QStringLiteral("Open this address in a browser, on any computer:"));
    m_output.remark(QString::fromUtf8(address));
    if (hasTerminal())
        m_output.remark(QStringLiteral(
            "Its last page leads to an address that begins with \"palvera:\". Where that does not open by "
            "itself, copy it and paste it here; it is not shown."));
    return true;
}

Task<void> TerminalBrowser::takeAddresses()
{
    Event changed(co_await boost::asio::this_coro::executor);
    QObject listener;
    QObject::connect(&m_signIn, &BrowserSignIn::waitingChanged, &listener, [&changed] { changed.set(); });
    for (;;) {
        while (!m_signIn.isWaiting() || !hasTerminal())
            co_await changed.wait();
        const auto entered = (co_await addressFromTerminal(QStringLiteral("Address: "))).trimmed();
        if (isCallback(entered.toUtf8()))
            m_signIn.take(entered);
        else
            m_output.remark(QStringLiteral("That is not the address: it begins with \"palvera:\"."));
    }
}

} // namespace palvera::cli
