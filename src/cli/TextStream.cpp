#include "cli/TextStream.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>

namespace palvera::cli {

namespace {

void waitUntilWritable(int number)
{
    pollfd stream{.fd = number, .events = POLLOUT, .revents = 0};
    ::poll(&stream, 1, -1);
}

} // namespace

void StandardStream::write(const QByteArray& bytes)
{
    for (qsizetype at = 0; m_open && at < bytes.size();) {
        auto wrote = ::write(m_number, bytes.constData() + at, std::size_t(bytes.size() - at));
        if (wrote >= 0) {
            at += wrote;
        } else if (errno == EAGAIN) { // somebody who shares the stream does not want to block
            waitUntilWritable(m_number);
        } else if (errno != EINTR) {
            m_open = false;
            m_failure = errno == EPIPE ? 0 : errno;
        }
    }
}

std::optional<int> StandardStream::terminalCells() const
{
    constexpr int usual = 80;
    if (!::isatty(m_number) || qgetenv("TERM") == "dumb")
        return {};
    winsize size{};
    bool known = ::ioctl(m_number, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : usual;
}

} // namespace palvera::cli
