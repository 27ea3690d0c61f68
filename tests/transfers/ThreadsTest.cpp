// The model on one thread, its disk work and its engines on others.

#include "TransfersHarness.h"

#include "async/RunOn.h"

#include <boost/asio/strand.hpp>
#include <boost/asio/thread_pool.hpp>

namespace palvera {
namespace {

namespace asio = boost::asio;

/// Reports a hundred times from a thread of its own; every other run then waits for its stop.
Task<void> work(UploadRequest request, bool waits)
{
    for (int i = 1; i <= 100; ++i)
        request.onProgress({.sent = i, .total = 100, .bytesPerSecond = double(i)});
    if (waits)
        co_await untilStopped(request.flag);
    if (request.flag->isStopped())
        throwCancelled();
}

using ThreadsTest = TransfersTest; // all happens within one moment

TEST_F(ThreadsTest, engineReportsAndDiskWorkComeBackToTheModelsThread)
{
    constexpr int count = 24;
    asio::io_context main;
    asio::thread_pool pool(4);
    api.emplace(API::Surroundings{.client = client, .executor = pool.get_executor()});
    int begun = 0;
    auto onThePool = [&](UploadRequest request) {
        return runOn(asio::make_strand(pool), work(std::move(request), ++begun % 2));
    };
    model.emplace(Transfers::Environment{
        main.get_executor(), pool.get_executor(), world.clock, *api, journals, index, onThePool, {}, sleep, network});
    QObject::connect(&*model, &Transfers::itemChanged, [&](const QUuid& id) {
        const auto* item = model->find(id);
        if (item->sent == 100 && item->isInFlight())
            model->stop(id); // of those that are done already by then nothing happens
    });
    for (int i = 0; i < count; ++i)
        addUpload(QStringLiteral("row-%1").arg(i));
    main.run(); // until nothing is under way
    EXPECT_EQ(model->inFlightCount(), 0);
    EXPECT_FALSE(sleep.held);
    for (const auto& item : model->items()) {
        EXPECT_EQ(item.sent, 100);
        EXPECT_EQ(item.rate, 100.0);
    }
    EXPECT_GE(model->finished().size(), std::size_t(count));
    model.reset();
    api.reset();
    pool.join();
}

} // namespace
} // namespace palvera
