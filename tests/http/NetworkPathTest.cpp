#include "HttpFixture.h"

#include <boost/asio/post.hpp>

#include <sched.h>

#include <cstdlib>

namespace palvera {

namespace {

namespace asio = boost::asio;

/// One thread in a network of its own, which at first has no interface but a loopback that is down.
class NetworkPathTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (asio::post(m_thread, asio::use_future([] { return ::unshare(CLONE_NEWNET); })).get() != 0)
            GTEST_SKIP() << "only a privileged process may make a network of its own";
    }
    ~NetworkPathTest() override { m_thread.join(); }

    void configure(const char* command)
    {
        EXPECT_EQ(asio::post(m_thread, asio::use_future([command] { return std::system(command); })).get(), 0)
            << command;
    }
    bool isUsable()
    {
        return asio::post(m_thread, asio::use_future([this] { return m_path.isUsable(); })).get();
    }
    std::future<void> waitUntilUsable() { return asio::co_spawn(m_thread, m_path.untilUsable(), asio::use_future); }

    asio::thread_pool m_thread{1};
    SystemNetworkPath m_path;
};

TEST_F(NetworkPathTest, takesARunningInterfaceWithAnAddressThatIsNotLoopback)
{
    EXPECT_FALSE(isUsable());
    configure("ip link set lo up");
    EXPECT_FALSE(isUsable());
    configure("ip link add one type veth peer name other && ip addr add 10.1.2.3/24 dev one");
    EXPECT_FALSE(isUsable()) << "it has an address but is down";
    configure("ip link set one up && ip link set other up"); // which takes the kernel a moment
    EXPECT_EQ(waitUntilUsable().wait_for(std::chrono::seconds(10)), std::future_status::ready);
    EXPECT_TRUE(isUsable());
    configure("ip addr del 10.1.2.3/24 dev one && ip addr add 169.254.1.2/16 dev one");
    EXPECT_FALSE(isUsable()) << "an address that nobody gave it leads nowhere";
}

TEST_F(NetworkPathTest, wakesWhoWaitsWhenAPathComesUp)
{
    configure("ip link add one type veth peer name other && ip link set other up && ip link set one up");
    auto waiting = waitUntilUsable();
    configure("true"); // by then it waits
    EXPECT_EQ(waiting.wait_for(std::chrono::seconds(0)), std::future_status::timeout);
    configure("ip addr add 10.1.2.3/24 dev one");
    ASSERT_EQ(waiting.wait_for(std::chrono::seconds(10)), std::future_status::ready);
    waiting.get();
}

TEST_F(NetworkPathTest, stopsWaitingWhenCancelled)
{
    asio::cancellation_signal stop;
    std::promise<bool> cancelled;
    asio::co_spawn(m_thread, m_path.untilUsable(),
                   asio::bind_cancellation_slot(
                       stop.slot(), [&](std::exception_ptr failure) { cancelled.set_value(isCancellation(failure)); }));
    asio::post(m_thread, [&] { stop.emit(asio::cancellation_type::terminal); });
    EXPECT_TRUE(cancelled.get_future().get());
}

} // namespace

} // namespace palvera
