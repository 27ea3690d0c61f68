#include "http/NetworkPath.h"

#include "files/FileDescriptor.h"

#include <boost/asio/posix/stream_descriptor.hpp>
#include <boost/asio/this_coro.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/system/system_error.hpp>

#include <ifaddrs.h>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cerrno>
#include <memory>

namespace palvera {

namespace asio = boost::asio;

namespace {

bool isLinkLocal(const sockaddr& address)
{
    if (address.sa_family == AF_INET) {
        auto host = ntohl(reinterpret_cast<const sockaddr_in&>(address).sin_addr.s_addr);
        return (host >> 16) == 0xA9FE; // 169.254.0.0/16: what an interface takes when nobody gives it an address
    }
    return IN6_IS_ADDR_LINKLOCAL(&reinterpret_cast<const sockaddr_in6&>(address).sin6_addr);
}

bool carriesTraffic(const ifaddrs& entry)
{
    constexpr unsigned runs = IFF_UP | IFF_RUNNING;
    if ((entry.ifa_flags & runs) != runs || (entry.ifa_flags & IFF_LOOPBACK) || !entry.ifa_addr)
        return false;
    auto family = entry.ifa_addr->sa_family;
    return (family == AF_INET || family == AF_INET6) && !isLinkLocal(*entry.ifa_addr);
}

/// A socket on which the kernel announces changes of interfaces and addresses.
FileDescriptor openAnnouncements()
{
    FileDescriptor socket(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE));
    sockaddr_nl groups{};
    groups.nl_family = AF_NETLINK;
    groups.nl_groups = RTMGRP_LINK | RTMGRP_IPV4_IFADDR | RTMGRP_IPV6_IFADDR;
    if (socket.number() < 0 || ::bind(socket.number(), reinterpret_cast<sockaddr*>(&groups), sizeof groups) != 0)
        throw boost::system::system_error(errno, boost::system::system_category());
    return socket;
}

/// What the announcements say does not matter, only that there were some.
void discardAnnouncements(int socket)
{
    char bytes[8192];
    while (::recv(socket, bytes, sizeof bytes, 0) > 0 || errno == ENOBUFS) {
    }
}

} // namespace

bool SystemNetworkPath::isUsable() const
{
    ifaddrs* first = nullptr;
    if (::getifaddrs(&first) != 0)
        return true; // unknown: the attempt itself will tell
    std::unique_ptr<ifaddrs, decltype(&::freeifaddrs)> all(first, &::freeifaddrs);
    for (const auto* entry = first; entry; entry = entry->ifa_next)
        if (carriesTraffic(*entry))
            return true;
    return false;
}

Task<void> SystemNetworkPath::untilUsable()
{
    auto announcements = openAnnouncements();
    asio::posix::stream_descriptor watched(co_await asio::this_coro::executor, announcements.number());
    struct Release { // before the socket closes
        asio::posix::stream_descriptor& descriptor;
        ~Release() { descriptor.release(); }
    } release{watched};
    while (!isUsable()) { // looked at only once changes are announced, so that none is missed
        co_await watched.async_wait(asio::posix::stream_descriptor::wait_read, asio::use_awaitable);
        discardAnnouncements(announcements.number());
    }
}

} // namespace palvera
