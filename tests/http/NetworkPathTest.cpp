#include "http/NetworkPath.h"
#include "HttpFixture.h"

#include "files/FileDescriptor.h"

#include <arpa/inet.h>
#include <sched.h>
#include <sys/socket.h>

#include <cstdlib>

namespace palvera {
namespace {

/// Tells when it was first asked while there was no network.
struct WatchedPath : SystemNetworkPath {
    mutable std::once_flag once;
    mutable std::promise<void> askedInVain;

    bool isUsable() const override
    {
        const bool usable = SystemNetworkPath::isUsable();
        if (!usable)
            std::call_once(once, [this] { askedInVain.set_value(); });
        return usable;
    }
};

/// One thread in a network of its own, which at first has no interface but a loopback that is down.
struct NetworkPathTest : testing::Test {
    asio::thread_pool thread{1};
    SystemNetworkPath path;

    template <class Function>
    auto there(Function function)
    {
        return asio::post(thread, asio::use_future(std::move(function))).get();
    }

    void SetUp() override
    {
        if (there([] { return ::unshare(CLONE_NEWNET); }) != 0)
            GTEST_SKIP() << "only a privileged process may make a network of its own";
    }
    ~NetworkPathTest() override { thread.join(); }

    void configure(const char* command)
    {
        EXPECT_EQ(there([command] { return std::system(command); }), 0) << command;
    }
    bool isUsable()
    {
        return there([this] { return path.isUsable(); });
    }
};

TEST_F(NetworkPathTest, takesARunningInterfaceWithAnAddressThatIsNotLoopbackAndWakesWhoWaitsForOne)
{
    configure("ip link set lo up");
    EXPECT_FALSE(isUsable());
    configure("ip link add one type veth peer name other && ip addr add 10.1.2.3/24 dev one");
    EXPECT_FALSE(isUsable()) << "it has an address but is down";
    auto waiting = asio::co_spawn(thread, path.untilUsable(), asio::use_future);
    configure("true"); // by then it waits
    EXPECT_EQ(waiting.wait_for(0s), std::future_status::timeout);
    configure("ip link set one up && ip link set other up"); // which takes the kernel a moment
    ASSERT_EQ(waiting.wait_for(10s), std::future_status::ready);
    EXPECT_TRUE(isUsable());
    configure("ip addr del 10.1.2.3/24 dev one && ip addr add 169.254.1.2/16 dev one");
    EXPECT_FALSE(isUsable()) << "an address that nobody gave it leads nowhere";
}

TEST_F(NetworkPathTest, aConnectionThatTheNetworkHasLeftBehindFailsAtOnce)
{
    configure("ip link set lo up && ip link add one type veth peer name other && ip link set other up && "
              "ip link set one up && ip addr add 10.1.2.3/24 dev one");
    sockaddr_in address{.sin_family = AF_INET, .sin_port = 0, .sin_addr = {::inet_addr("10.1.2.3")}, .sin_zero = {}};
    socklen_t length = sizeof address;
    auto* place = reinterpret_cast<sockaddr*>(&address);
    const FileDescriptor server(there([&] {
        const int made = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        return ::bind(made, place, length) == 0 && ::listen(made, 1) == 0 ? made : -1;
    }));
    ASSERT_EQ(::getsockname(server.number(), place, &length), 0);
    std::atomic<int> seconds = 0;
    auto watched = std::make_shared<WatchedPath>();
    HttpSession session(thread.get_executor(),
                        {.now = [&] { return std::chrono::steady_clock::time_point(std::chrono::seconds(seconds)); },
                         .networkPath = watched});
    const QByteArray url = "http://10.1.2.3:" + QByteArray::number(ntohs(address.sin_port)) + '/';
    for (bool addressStays : {true, false}) {
        auto ended = asio::co_spawn(thread, session.send({.url = url, .idleTimeout = 60s}), asio::use_future);
        const FileDescriptor peer(::accept4(server.number(), nullptr, nullptr, SOCK_CLOEXEC));
        char byte = 0;
        ASSERT_EQ(::recv(peer.number(), &byte, 1, 0), 1);
        if (addressStays) {
            configure("ip link set one down");
            watched->askedInVain.get_future().wait();
            asio::post(session.strand(), asio::use_future).get(); // by then it has noted when
            seconds = 5;
            configure("ip link set one up");
        } else {
            configure("ip addr del 10.1.2.3/24 dev one && ip addr add 10.1.2.4/24 dev one");
        }
        ASSERT_EQ(ended.wait_for(10s), std::future_status::ready);
        EXPECT_THROW(ended.get(), TransportError);
    }
}

} // namespace
} // namespace palvera
