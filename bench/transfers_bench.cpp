// What the transfers cost the main thread: one second of a run with many items, some of which move, while the panel's
// list reads what changed.

#include "screens/panel/TransferRows.h"
#include "transfers/Transfers.h"

#include "desktop/SleepInhibitor.h"
#include "http/NetworkPath.h"
#include "http/TransportError.h"
#include "service/API.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <ctime>

namespace {

using namespace palvera;

/// Moves only when it is told; nobody sleeps by it here.
class BenchClock final : public Clock {
public:
    Moment moment{};

    Moment now() const override { return moment; }
    WallTime wallNow() const override { return WallTime(std::chrono::duration_cast<WallTime::duration>(age())); }
    Task<void> sleepUntil(Moment) override { std::abort(); }

private:
    Moment::duration age() const { return moment.time_since_epoch(); }
};

class NoNetwork final : public HttpClient {
public:
    Task<HttpResponse> send(HttpRequest) override { throw TransportError(TransportError::Kind::connect, "none"); }
};

class AlwaysUsable final : public NetworkPath {
public:
    bool isUsable() const override { return true; }
    Task<void> untilUsable() override { co_return; }
};

class NoSleep final : public SleepInhibitor {
public:
    void hold(const QString&) override {}
    void release() override {}
    void onWake(std::function<void()>) override {}
};

Task<void> untilTheEnd(std::shared_ptr<CancelFlag> flag)
{
    co_await untilStopped(std::move(flag));
}

/// Uploads that are listed and only move when told to.
class Bench {
public:
    explicit Bench(int items)
    {
        QObject::connect(&m_rows, &QAbstractItemModel::dataChanged, [this](auto index, auto, auto roles) {
            for (int role : roles)
                benchmark::DoNotOptimize(m_rows.data(index, role));
        });
        for (int i = 0; i < items; ++i)
            m_model.startNow(m_model.addUpload({.file = QStringLiteral("/films/%1.mov").arg(i),
                                                .orgId = QStringLiteral("org"),
                                                .projectId = QStringLiteral("project"),
                                                .deliverable = {.id = QStringLiteral("row-%1").arg(i)}}));
        m_io.poll();
    }

    /// A second in which `moving` uploads report five times.
    void passSecond(std::size_t moving)
    {
        for (int tick = 0; tick < 5; ++tick) {
            m_clock.moment += std::chrono::milliseconds(200);
            m_sent += 20'000'000;
            for (std::size_t i = 0; i < moving; ++i) // from all over the list
                m_reports[i * m_reports.size() / moving](
                    {.sent = m_sent, .total = 1LL << 40, .bytesPerSecond = 1e8 + double(m_sent)});
            m_io.restart();
            m_io.poll();
        }
    }

private:
    boost::asio::io_context m_io;
    QTemporaryDir m_folder;
    BenchClock m_clock;
    NoNetwork m_client;
    API m_api{{.client = m_client, .executor = m_io.get_executor()}};
    JournalStore m_journals{m_folder.path()};
    DownloadIndex m_index{m_folder.path()};
    NoSleep m_sleep;
    AlwaysUsable m_path;
    std::vector<ProgressReporter::OnProgress> m_reports;
    qint64 m_sent = 0;
    Transfers m_model{{.main = m_io.get_executor(),
                       .background = m_io.get_executor(),
                       .clock = m_clock,
                       .api = m_api,
                       .journals = m_journals,
                       .index = m_index,
                       .upload =
                           [this](UploadRequest request) {
                               m_reports.push_back(request.onProgress);
                               return untilTheEnd(request.flag);
                           },
                       .download = {},
                       .sleep = m_sleep,
                       .network = m_path}};
    TransferRows m_rows{m_model, m_clock, TransferRows::Which::inFlight};
};

void followProgress(benchmark::State& state)
{
    Bench bench(int(state.range(0)));
    auto began = std::clock();
    for (auto _ : state)
        bench.passSecond(std::size_t(state.range(1)));
    double used = double(std::clock() - began) / CLOCKS_PER_SEC / double(state.iterations());
    state.counters["percent_of_a_core"] = 100 * used;
    if (used > 0.02)
        state.SkipWithError("more than 2 % of a core");
}
BENCHMARK(followProgress)->Args({20, 20})->Args({2000, 20})->Unit(benchmark::kMillisecond);

void addAll(benchmark::State& state)
{
    for (auto _ : state)
        Bench bench(int(state.range(0)));
}
BENCHMARK(addAll)->Arg(2000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
