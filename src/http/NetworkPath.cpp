#include "http/NetworkPath.h"

#include "async/TaskGroup.h"
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

using InterfaceAddresses = std::unique_ptr<ifaddrs, decltype(&::freeifaddrs)>;

/// Null when nobody can tell: the attempt itself will.
InterfaceAddresses interfaceAddresses()
{
    ifaddrs* first = nullptr;
    return {::getifaddrs(&first) == 0 ? first : nullptr, &::freeifaddrs};
}

bool anyOf(const ifaddrs& first, const auto& holds)
{
    for (const auto* entry = &first; entry; entry = entry->ifa_next)
        if (holds(*entry))
            return true;
    return false;
}

bool isSame(const sockaddr& a, const sockaddr& b)
{
    if (a.sa_family != b.sa_family)
        return false;
    if (a.sa_family == AF_INET)
        return reinterpret_cast<const sockaddr_in&>(a).sin_addr.s_addr ==
               reinterpret_cast<const sockaddr_in&>(b).sin_addr.s_addr;
    return a.sa_family == AF_INET6 && IN6_ARE_ADDR_EQUAL(&reinterpret_cast<const sockaddr_in6&>(a).sin6_addr,
                                                         &reinterpret_cast<const sockaddr_in6&>(b).sin6_addr);
}

/// A socket on which the kernel announces changes of interfaces and addresses.
class Announcements {
public:
    explicit Announcements(const Executor& executor)
        : m_socket(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE)), m_watched(executor)
    {
        sockaddr_nl groups{};
        groups.nl_family = AF_NETLINK;
        groups.nl_groups = RTMGRP_LINK | RTMGRP_IPV4_IFADDR | RTMGRP_IPV6_IFADDR;
        if (m_socket.number() < 0 ||
            ::bind(m_socket.number(), reinterpret_cast<sockaddr*>(&groups), sizeof groups) != 0)
            throw boost::system::system_error(errno, boost::system::system_category());
        m_watched.assign(m_socket.number());
    }
    ~Announcements() { m_watched.release(); } // before the socket closes
    Announcements(const Announcements&) = delete;
    Announcements& operator=(const Announcements&) = delete;

    Task<void> next()
    {
        co_await m_watched.async_wait(asio::posix::stream_descriptor::wait_read, asio::use_awaitable);
        // What they say does not matter, only that there were some.
        char bytes[8192];
        while (::recv(m_socket.number(), bytes, sizeof bytes, 0) > 0 || errno == ENOBUFS) {
        }
    }

private:
    FileDescriptor m_socket;
    asio::posix::stream_descriptor m_watched;
};

} // namespace

Task<void> NetworkPath::follow(std::function<void()> /*changed*/)
{
    co_return;
}

bool NetworkPath::hasAddress(const sockaddr& /*address*/) const
{
    return true;
}

bool SystemNetworkPath::isUsable() const
{
    auto all = interfaceAddresses();
    return !all || anyOf(*all, carriesTraffic);
}

bool SystemNetworkPath::hasAddress(const sockaddr& address) const
{
    auto all = interfaceAddresses();
    return !all ||
           anyOf(*all, [&](const ifaddrs& entry) { return entry.ifa_addr && isSame(*entry.ifa_addr, address); });
}

Task<void> SystemNetworkPath::untilUsable()
{
    Announcements announcements(co_await asio::this_coro::executor);
    while (!isUsable()) // looked at only once changes are announced, so that none is missed
        co_await announcements.next();
}

Task<void> SystemNetworkPath::follow(std::function<void()> changed)
{
    Announcements announcements(co_await asio::this_coro::executor);
    for (;;) {
        co_await announcements.next();
        changed();
    }
}

Task<void> untilNetworkReturns(NetworkPath& path, Clock& clock)
{
    constexpr std::chrono::seconds look{2}; // nothing is announced to who does not wait
    while (path.isUsable())
        co_await clock.sleep(look);
    auto unknown = (co_await outcomeOf(path.untilUsable())).failure;
    if (unknown) // nobody can tell
        co_await clock.sleepUntil(Clock::Moment::max());
}

Task<int> untilNextTry(int tries, NetworkPath& path, Clock& clock)
{
    constexpr std::chrono::seconds shortest{2}, longest{30};
    const auto pause = std::min(shortest * (1 << std::min(tries, 4)), longest);
    const auto ended = co_await firstOf(clock.sleep(pause), untilNetworkReturns(path, clock));
    co_return ended.index() == 0 ? tries + 1 : 0;
}

} // namespace palvera
