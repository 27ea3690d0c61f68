#include "cli/PasswordInput.h"

#include "async/Failure.h"
#include "files/FileDescriptor.h"

#include <boost/asio/posix/stream_descriptor.hpp>
#include <boost/asio/redirect_error.hpp>
#include <boost/asio/this_coro.hpp>
#include <boost/asio/use_awaitable.hpp>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>

namespace palvera::cli {

namespace asio = boost::asio;

namespace {

/// While it lives, the terminal shows line feeds only.
class Unshown {
public:
    explicit Unshown(int terminal) : m_terminal(terminal)
    {
        bool known = ::tcgetattr(terminal, &m_before) == 0;
        auto unshown = m_before;
        unshown.c_lflag &= ~tcflag_t(ECHO);
        unshown.c_lflag |= ECHONL | ICANON | ISIG;
        if (!known || ::tcsetattr(terminal, TCSAFLUSH, &unshown) != 0)
            throw Failure(QStringLiteral("The terminal would show what is entered."));
    }
    Unshown(const Unshown&) = delete;
    Unshown& operator=(const Unshown&) = delete;
    ~Unshown() { ::tcsetattr(m_terminal, TCSAFLUSH, &m_before); }

private:
    const int m_terminal;
    termios m_before{};
};

/// Ends the line of a prompt that nobody answers any more.
struct EndedLine {
    const int terminal;
    bool isEnded = false; ///< by the user

    explicit EndedLine(int number) : terminal(number) {}
    EndedLine(const EndedLine&) = delete;
    EndedLine& operator=(const EndedLine&) = delete;
    ~EndedLine()
    {
        if (!isEnded && ::write(terminal, "\n", 1) < 0)
            return; // there is nothing to be done
    }
};

/// Gives a file that others have open as well its flags back: Asio makes it non-blocking for all of them.
class FlagsKept {
public:
    explicit FlagsKept(int file) : m_file(file), m_flags(::fcntl(file, F_GETFL)) {}
    FlagsKept(const FlagsKept&) = delete;
    FlagsKept& operator=(const FlagsKept&) = delete;
    ~FlagsKept() { ::fcntl(m_file, F_SETFL, m_flags); }

private:
    const int m_file;
    const int m_flags;
};

Task<void> untilReadable(asio::posix::stream_descriptor& file)
{
    boost::system::error_code failure;
    co_await file.async_wait(asio::posix::descriptor_base::wait_read,
                             asio::redirect_error(asio::use_awaitable, failure));
    if (failure && failure != asio::error::operation_not_supported) // as of an ordinary file, which is always readable
        throw boost::system::system_error(failure);
}

Failure nothingEntered()
{
    return Failure(QStringLiteral("Nothing was entered."));
}

/// Byte for byte, so that what follows the line stays for whoever reads on. Throws Failure at the end of the file.
Task<QByteArray> readLine(int number)
{
    constexpr qsizetype longest = 4096;
    asio::posix::stream_descriptor file(co_await asio::this_coro::executor, ::dup(number));
    QByteArray line;
    line.reserve(longest); // so that no copy of a secret stays behind while it grows
    while (line.size() < longest) {
        co_await untilReadable(file);
        char byte = 0;
        auto got = ::read(number, &byte, 1);
        if (got < 0 && (errno == EINTR || errno == EAGAIN))
            continue;
        if (got <= 0 && line.isEmpty())
            throw nothingEntered();
        if (got <= 0 || byte == '\n')
            break;
        line += byte;
    }
    if (line.endsWith('\r'))
        line.chop(1);
    co_return line;
}

Task<QByteArray> readSecret(int number)
{
    auto secret = co_await readLine(number);
    if (secret.isEmpty())
        throw nothingEntered();
    co_return secret;
}

/// The user's terminal, open for us alone; throws Failure with the text `without` where there is none.
std::unique_ptr<FileDescriptor> openTerminal(const QString& without)
{
    auto terminal = std::make_unique<FileDescriptor>(::open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY));
    if (terminal->number() < 0)
        throw Failure(without);
    return terminal;
}

void ask(const FileDescriptor& terminal, const QString& prompt)
{
    auto asked = prompt.toUtf8();
    if (::write(terminal.number(), asked.constData(), std::size_t(asked.size())) < 0)
        throw Failure(QStringLiteral("The terminal cannot be written to."));
}

Task<QByteArray> secretFromTerminal(QString prompt, QString without)
{
    auto terminal = openTerminal(without);
    Unshown unshown(terminal->number());
    ask(*terminal, prompt);
    EndedLine line(terminal->number());
    auto secret = co_await readSecret(terminal->number());
    line.isEnded = true;
    co_return secret;
}

Task<QString> lineFromTerminal(QString prompt, QString without)
{
    auto terminal = openTerminal(without);
    ask(*terminal, prompt);
    co_return QString::fromUtf8(co_await readLine(terminal->number()));
}

} // namespace

Task<QString> passwordFromStandardInput()
{
    FlagsKept kept(STDIN_FILENO);
    co_return QString::fromUtf8(co_await readSecret(STDIN_FILENO));
}

Task<QString> passwordFromTerminal(QString prompt)
{
    co_return QString::fromUtf8(co_await secretFromTerminal(
        std::move(prompt), QStringLiteral("There is no terminal to ask for the password. Use --password-stdin.")));
}

Task<Pin> pinFromTerminal(QString prompt)
{
    co_return Pin(co_await secretFromTerminal(
        std::move(prompt), QStringLiteral("There is no terminal to ask for the security key's PIN.")));
}

Task<QString> addressFromTerminal(QString prompt)
{
    co_return QString::fromUtf8(
        co_await secretFromTerminal(std::move(prompt), QStringLiteral("There is no terminal to ask for the address.")));
}

Task<QString> codeFromTerminal(QString prompt)
{
    return lineFromTerminal(std::move(prompt), QStringLiteral("There is no terminal to ask for the code. Use --code."));
}

Task<QString> numberFromTerminal(QString prompt)
{
    return lineFromTerminal(std::move(prompt), QStringLiteral("There is no terminal to ask for the account."));
}

bool hasTerminal()
{
    return FileDescriptor(::open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY)).number() >= 0;
}

} // namespace palvera::cli
