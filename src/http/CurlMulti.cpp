#include "http/CurlMulti.h"

#include "http/CurlLibrary.h"

#include <fcntl.h>
#include <linux/sockios.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <new>

namespace palvera {

namespace asio = boost::asio;
using boost::system::error_code;
using Descriptor = asio::posix::basic_stream_descriptor<Strand>;

/// One of libcurl's sockets under watch.
///
/// What Asio watches is a duplicate, whose number nobody else can close or be given: libcurl closes a socket that is
/// still connecting without calling any hook and says so only afterwards. All sessions of a pool share one epoll, where
/// by then the number may belong to another session's socket.
struct CurlMulti::Socket {
    Socket(const Strand& strand, curl_socket_t socket) : number(socket), duplicate(strand) {}

    curl_socket_t number; // libcurl's
    CURL* user = nullptr; // the transfer that libcurl last named with it, while that is not forgotten
    Descriptor duplicate;
    qint64 given = 0;             // bytes that had come for `user` when it was last looked at
    int wanted = CURL_POLL_NONE;  // which of CURL_POLL_IN and CURL_POLL_OUT libcurl waits for
    int pending = CURL_POLL_NONE; // for which of them Asio waits
};

namespace {

CURLM* newMulti()
{
    startCurl();
    CURLM* multi = curl_multi_init();
    if (!multi)
        throw std::bad_alloc();
    return multi;
}

CurlMulti::Client* clientOf(CURL* easy)
{
    void* client = nullptr;
    curl_easy_getinfo(easy, CURLINFO_PRIVATE, &client);
    return static_cast<CurlMulti::Client*>(client);
}

} // namespace

CurlMulti::CurlMulti(Strand strand, long maxConnectionsPerHost)
    : m_strand(std::move(strand)), m_timer(m_strand), m_multi(newMulti())
{
    curl_multi_setopt(m_multi, CURLMOPT_SOCKETFUNCTION, &CurlMulti::onSocket);
    curl_multi_setopt(m_multi, CURLMOPT_SOCKETDATA, this);
    curl_multi_setopt(m_multi, CURLMOPT_TIMERFUNCTION, &CurlMulti::onTimer);
    curl_multi_setopt(m_multi, CURLMOPT_TIMERDATA, this);
    curl_multi_setopt(m_multi, CURLMOPT_MAX_HOST_CONNECTIONS, maxConnectionsPerHost);
    curl_multi_setopt(m_multi, CURLMOPT_MAXCONNECTS, maxConnectionsPerHost);
}

CurlMulti::~CurlMulti()
{
    curl_multi_setopt(m_multi, CURLMOPT_SOCKETFUNCTION, nullptr);
    curl_multi_setopt(m_multi, CURLMOPT_TIMERFUNCTION, nullptr);
    curl_multi_cleanup(m_multi);
}

void CurlMulti::add(CURL* easy)
{
    curl_easy_setopt(easy, CURLOPT_CLOSESOCKETFUNCTION, &CurlMulti::onClose);
    curl_easy_setopt(easy, CURLOPT_CLOSESOCKETDATA, this);
    if (curl_multi_add_handle(m_multi, easy) != CURLM_OK)
        throw std::bad_alloc();
}

void CurlMulti::remove(CURL* easy, Leave leave)
{
    m_resetting = leave == Leave::reset;
    curl_multi_remove_handle(m_multi, easy);
    m_resetting = false;
    for (auto& [number, socket] : m_sockets) // which other transfers still use
        if (socket->user == easy)
            socket->user = nullptr;
}

std::optional<int> CurlMulti::queuedInKernel(const CURL* easy) const
{
    std::optional<int> sum;
    for (const auto& [number, socket] : m_sockets) {
        int queued = 0;
        if (socket->user == easy && ::ioctl(socket->duplicate.native_handle(), SIOCOUTQ, &queued) == 0)
            sum = sum.value_or(0) + queued;
    }
    return sum;
}

bool CurlMulti::hasLocalAddress(const CURL* easy, const std::function<bool(const sockaddr&)>& has) const
{
    for (const auto& [number, socket] : m_sockets) {
        sockaddr_storage local{};
        socklen_t length = sizeof local;
        auto* address = reinterpret_cast<sockaddr*>(&local);
        if (socket->user == easy && ::getsockname(socket->duplicate.native_handle(), address, &length) == 0 &&
            !has(*address))
            return false;
    }
    return true;
}

int CurlMulti::onSocket(CURL* easy, curl_socket_t socket, int what, void* self, void*)
{
    auto& multi = *static_cast<CurlMulti*>(self);
    if (what == CURL_POLL_REMOVE)
        multi.unwatch(easy, socket);
    else
        multi.watch(easy, socket, what);
    return 0; // -1 would end every transfer of the session
}

void CurlMulti::watch(CURL* easy, curl_socket_t socket, int wanted)
{
    auto* client = clientOf(easy);
    client->started();
    auto watched = socketFor(socket);
    if (!watched)
        return client->unwatchable();
    if (std::exchange(watched->user, easy) != easy)
        watched->given = 0;
    watched->wanted = wanted;
    arm(watched);
}

void CurlMulti::unwatch(CURL* easy, curl_socket_t socket)
{
    auto found = m_sockets.find(socket);
    if (found == m_sockets.end())
        return;
    clientOf(easy)->leaves(found->second->duplicate.native_handle());
    drop(socket);
}

CurlMulti::SocketPointer CurlMulti::socketFor(curl_socket_t socket)
{
    auto& known = m_sockets[socket];
    if (known)
        return known;
    auto made = std::make_shared<Socket>(m_strand, socket);
    error_code refused;
    int duplicate = ::fcntl(socket, F_DUPFD_CLOEXEC, 0);
    if (duplicate >= 0)
        made->duplicate.assign(duplicate, refused);
    if (duplicate < 0 || refused) {
        if (duplicate >= 0)
            ::close(duplicate);
        m_sockets.erase(socket);
        return nullptr;
    }
    return known = std::move(made);
}

void CurlMulti::arm(const SocketPointer& socket)
{
    wait(socket, CURL_POLL_IN);
    wait(socket, CURL_POLL_OUT);
}

void CurlMulti::wait(const SocketPointer& socket, int direction)
{
    if (!(socket->wanted & direction) || (socket->pending & direction))
        return;
    socket->pending |= direction;
    auto type = direction == CURL_POLL_IN ? Descriptor::wait_read : Descriptor::wait_write;
    socket->duplicate.async_wait(type, [self = shared_from_this(), socket, direction](error_code failure) {
        socket->pending &= ~direction;
        if (failure || !(socket->wanted & direction))
            return;
        self->act(socket->number, direction == CURL_POLL_IN ? CURL_CSELECT_IN : 0);
        self->arm(socket); // nothing is wanted any more if libcurl let go of the socket
    });
}

void CurlMulti::drop(curl_socket_t socket)
{
    auto found = m_sockets.find(socket);
    if (found == m_sockets.end())
        return;
    found->second->wanted = CURL_POLL_NONE;
    error_code ignored;
    found->second->duplicate.close(ignored);
    m_sockets.erase(found);
}

int CurlMulti::onClose(void* self, curl_socket_t socket)
{
    auto& multi = *static_cast<CurlMulti*>(self);
    multi.drop(socket); // the connection only ends with its last descriptor
    if (multi.m_resetting) {
        // A plain close would leave the kernel sending what it holds, megabytes of it, after a cancellation.
        linger atOnce{.l_onoff = 1, .l_linger = 0};
        ::setsockopt(socket, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    }
    return ::close(socket);
}

int CurlMulti::onTimer(CURLM*, long milliseconds, void* self)
{
    static_cast<CurlMulti*>(self)->setTimer(milliseconds);
    return 0;
}

void CurlMulti::setTimer(long milliseconds)
{
    if (milliseconds < 0) {
        m_timer.cancel();
        return;
    }
    m_timer.expires_after(std::chrono::milliseconds(milliseconds));
    // Weak: the timer of an idle session must not keep it.
    m_timer.async_wait([weak = weak_from_this()](error_code failure) {
        auto self = failure ? nullptr : weak.lock();
        if (self)
            self->act(CURL_SOCKET_TIMEOUT, 0);
    });
}

void CurlMulti::act(curl_socket_t socket, int ready)
{
    actOnce(socket, ready);
    readOn();
}

/// Reads on as long as something comes. libcurl leaves off when the socket is empty; what TLS has taken from the socket
/// ahead of it would then wait for an event that never comes.
void CurlMulti::readOn()
{
    constexpr int mostTurns = 64; // then it is for others on the strand
    for (int turns = 0; auto socket = socketThatGave(); ++turns) {
        if (turns == mostTurns) {
            asio::post(m_strand, [weak = weak_from_this()] {
                if (auto self = weak.lock())
                    self->readOn();
            });
            return;
        }
        socket->given = clientOf(socket->user)->received();
        actOnce(socket->number, CURL_CSELECT_IN);
    }
}

/// A socket from which something has come that was not followed by another look; null when there is none.
CurlMulti::SocketPointer CurlMulti::socketThatGave() const
{
    for (const auto& [number, socket] : m_sockets)
        if (socket->user && (socket->wanted & CURL_POLL_IN) && clientOf(socket->user)->received() != socket->given)
            return socket;
    return nullptr;
}

void CurlMulti::actOnce(curl_socket_t socket, int ready)
{
    int running = 0;
    // Where bytes may leave, `ready` is 0: libcurl then looks for itself and reads before it writes. Told of
    // writability alone it would write into a connection that the server has closed and lose the answer in the receive
    // queue.
    curl_multi_socket_action(m_multi, socket, ready, &running);
    int left = 0;
    while (auto* message = curl_multi_info_read(m_multi, &left))
        if (message->msg == CURLMSG_DONE)
            clientOf(message->easy_handle)->ended(message->data.result);
}

} // namespace palvera
