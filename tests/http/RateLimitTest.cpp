#include "HttpFixture.h"

#include "http/RateLimit.h"

#include <random>

namespace palvera {
namespace {

/// What passes of `count` requests that share a limit and take up to `piece` bytes at a time, those that receive
/// whether they may or not. Timers are late by up to five milliseconds.
class Passing {
public:
    Passing(std::shared_ptr<RateLimit> limit, int count, qint64 piece, bool isReceiving)
        : m_piece(piece), m_receiving(isReceiving)
    {
        for (int number = 0; number < count; ++number)
            requests.push_back({.turn = std::make_unique<RateLimit::Turn>(limit)});
    }

    void run(std::chrono::milliseconds duration)
    {
        for (const auto end = m_now + duration; m_now < end; m_now += 1ms)
            for (auto& request : requests)
                if (m_now >= request.next)
                    pass(request);
    }
    qint64 total() const
    {
        qint64 sum = 0;
        for (const auto& request : requests)
            sum += request.passed;
        return sum;
    }

    struct Request {
        std::unique_ptr<RateLimit::Turn> turn;
        RateLimit::Moment next = {};
        qint64 passed = 0;
    };
    std::vector<Request> requests;

private:
    void pass(Request& request)
    {
        while (const auto allowed = request.turn->allowed(m_now)) {
            const auto bytes = m_receiving ? m_piece : std::min(m_piece, allowed);
            request.turn->spend(bytes);
            request.passed += bytes;
            if (allowed > (1LL << 40)) { // no limit: the line's own pace
                request.next = m_now + 1ms;
                return;
            }
        }
        request.next = std::min(request.turn->due(), m_now + 200ms) + std::chrono::milliseconds(m_late(m_random));
    }

    const qint64 m_piece;
    const bool m_receiving;
    RateLimit::Moment m_now{1h};
    std::minstd_rand m_random{7};
    std::uniform_int_distribution<> m_late{0, 5};
};

TEST(RateLimitTest, letsItsRatePassAndGivesAllTheSameShare)
{
    const struct {
        qint64 rate;
        int requests;
        qint64 piece;
        bool isReceiving;
    } cases[] = {{20'000'000, 16, 512 << 10, false}, {20'000'000, 1, 512 << 10, false},
                 {20'000'000, 48, 256 << 10, true},  {100'000, 24, 16 << 10, false},
                 {100'000, 24, 4 << 10, true},       {250'000'000, 1, 512 << 10, false}};
    for (const auto& [rate, requests, piece, isReceiving] : cases) {
        SCOPED_TRACE(testing::Message() << rate << " over " << requests);
        auto limit = std::make_shared<RateLimit>();
        limit->set(rate);
        Passing passing(limit, requests, piece, isReceiving);
        passing.run(60s);
        EXPECT_NEAR(double(passing.total()), 60. * double(rate), 0.02 * 60 * double(rate));
        for (const auto& request : passing.requests)
            EXPECT_NEAR(double(request.passed), 60. * double(rate) / requests, 0.1 * 60 * double(rate) / requests);
    }
}

TEST(RateLimitTest, holdsWithinAQuarterOfASecondForWhatIsMoving)
{
    auto limit = std::make_shared<RateLimit>();
    Passing passing(limit, 8, 256 << 10, true);
    const auto passedIn = [&](std::chrono::milliseconds duration) {
        const auto before = passing.total();
        passing.run(duration);
        return double(passing.total() - before);
    };
    EXPECT_GT(passedIn(1s), 100e6);
    limit->set(100'000);
    EXPECT_LT(passedIn(10s), 3.2e6) << "a piece each, and what the rate says";
    limit->set(10'000'000);
    passing.run(250ms);
    EXPECT_NEAR(passedIn(10s), 100e6, 3e6);
    limit->set(0);
    passing.run(250ms);
    EXPECT_GT(passedIn(1s), 100e6);
}

TEST(RateLimitTest, countsWhatARequestTookTooMuchOrLeftWhenItEnds)
{
    const RateLimit::Moment now(1h);
    auto limit = std::make_shared<RateLimit>();
    limit->set(1'000'000);
    const auto dueAfter = [&](qint64 spent) {
        {
            RateLimit::Turn turn(limit);
            turn.allowed(now);
            turn.spend(spent);
        }
        RateLimit::Turn next(limit);
        while (next.allowed(now) != 0)
            next.spend(next.allowed(now));
        return next.due() - now;
    };
    const auto once = dueAfter(0);
    EXPECT_NEAR(std::chrono::duration<double>(dueAfter(5'000'000) - once).count(), 5, 0.1);
}

/// Both ways, whole, and with holds that are longer than every time-out.
TEST_F(HttpFixture, aLimitHoldsBodiesUpWithoutHarmAndItsHoldsAreNoInactivity)
{
    const auto bytes = patterned(300'000);
    QByteArray received;
    LoopbackServer server(answering([&](const LoopbackServer::Request& request) {
        received = request.body;
        return answer("200 OK", request.head.startsWith("GET") ? bytes : "");
    }));
    PassingTime time;
    auto options = HttpSessionOptions::storage();
    options.now = time.clock();
    options.sendLimit = options.receiveLimit = std::make_shared<RateLimit>();
    options.sendLimit->set(100'000);
    HttpSession session(executor(), std::move(options));
    for (const QByteArray method : {"PUT", "GET"}) {
        Bytes body(method == "PUT" ? bytes : QByteArray(), bytes.size());
        int held = 0;
        HttpRequest request{.method = method, .url = server.url("/"), .idleTimeout = 60s, .totalTimeout = 90s};
        request.source = method == "PUT" ? &body : nullptr;
        request.sink = method == "GET" ? &body : nullptr;
        request.onHeld = [&] {
            ++held;
            time.pass(61s);
        };
        EXPECT_EQ(send(session, std::move(request)).status, 200);
        EXPECT_TRUE((method == "PUT" ? received : body.bytes) == bytes);
        EXPECT_GT(held, 10);
    }
}

} // namespace
} // namespace palvera
