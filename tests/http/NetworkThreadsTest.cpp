#include "http/NetworkThreads.h"

#include <boost/asio/post.hpp>
#include <boost/asio/use_future.hpp>

#include <gmock/gmock.h>

namespace palvera {

namespace {

namespace asio = boost::asio;

std::thread::id threadOf(const Executor& executor)
{
    return asio::post(executor, asio::use_future(&std::this_thread::get_id)).get();
}

TEST(NetworkThreadsTest, keepsEachSessionToOneThreadAndSpreadsThem)
{
    NetworkThreads threads(2);
    auto first = threads.next(), second = threads.next(), third = threads.next();
    auto usual = threadOf(first);
    for (int i = 0; i < 20; ++i)
        EXPECT_TRUE(threadOf(first) == usual);
    EXPECT_FALSE(threadOf(second) == usual);
    EXPECT_TRUE(threadOf(third) == usual) << "it is the first one's turn again";
}

} // namespace

} // namespace palvera
