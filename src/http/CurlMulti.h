#pragma once

#include "http/Strand.h"

#include <boost/asio/posix/basic_stream_descriptor.hpp>

#include <curl/curl.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>

namespace palvera {

/// Runs libcurl transfers on Asio: its sockets and its timer, on one strand. Strand only, its making and end apart.
class CurlMulti : public std::enable_shared_from_this<CurlMulti> {
public:
    /// Who runs one easy handle. libcurl finds it as the handle's CURLOPT_PRIVATE. Its operations must not throw and
    /// must not call back into the multi: libcurl itself may be running.
    class Client {
    public:
        virtual ~Client() = default;
        /// The transfer is over, whichever way.
        virtual void ended(CURLcode result) noexcept = 0;
        /// The transfer has got its turn: a connection, or the look-up of its host, is under way.
        virtual void started() noexcept = 0;
        /// libcurl lets go of the transfer's socket, to keep it for another or to close it. Still open here.
        virtual void leaves(curl_socket_t socket) noexcept = 0;
        /// The transfer's socket cannot be watched for want of a descriptor. It will not go on.
        virtual void unwatchable() noexcept = 0;
        /// Bytes of the answer, its headers included, that libcurl has handed over so far.
        virtual qint64 received() const noexcept = 0;
    };
    enum class Leave {
        open,  ///< the connection may serve the next request
        reset, ///< what the kernel still holds for the connection is thrown away
    };

    CurlMulti(Strand strand, long maxConnectionsPerHost);
    ~CurlMulti();
    CurlMulti(const CurlMulti&) = delete;
    CurlMulti& operator=(const CurlMulti&) = delete;

    /// Starts the transfer of `easy`, whose private pointer must be set. Nothing of it happens within the call.
    void add(CURL* easy);
    /// Forgets the transfer, ended or not.
    void remove(CURL* easy, Leave leave);
    /// Bytes that the kernel holds for the transfer's connection and that the peer has not acknowledged. Nothing while
    /// the transfer's socket is not known, as at the beginning on a connection that served another one before.
    std::optional<int> queuedInKernel(const CURL* easy) const;
    /// Whether the transfer's connection starts from an address of which `has` says that the machine has it. True
    /// before there is a connection.
    bool hasLocalAddress(const CURL* easy, const std::function<bool(const sockaddr&)>& has) const;
    const Strand& strand() const { return m_strand; }

private:
    struct Socket;
    using SocketPointer = std::shared_ptr<Socket>;

    static int onSocket(CURL* easy, curl_socket_t socket, int what, void* self, void*);
    static int onTimer(CURLM*, long milliseconds, void* self);
    static int onClose(void* self, curl_socket_t socket);

    void watch(CURL* easy, curl_socket_t socket, int wanted);
    void unwatch(CURL* easy, curl_socket_t socket);
    SocketPointer socketFor(curl_socket_t socket);
    void arm(const SocketPointer& socket);
    void wait(const SocketPointer& socket, int direction);
    void drop(curl_socket_t socket);
    void setTimer(long milliseconds);
    void act(curl_socket_t socket, int ready);
    void actOnce(curl_socket_t socket, int ready);
    void readOn();
    SocketPointer socketThatGave() const;

    Strand m_strand;
    StrandTimer m_timer;
    CURLM* m_multi;
    bool m_resetting = false; // connections that close while this is set are reset
    std::unordered_map<curl_socket_t, SocketPointer> m_sockets;
};

} // namespace palvera
