// What keeping a journal costs: one save of a journal with many confirmed parts, as it happens up to five times a
// second while an upload runs.

#include "transfer/JournalStore.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

palvera::Journal journalOf(int parts)
{
    palvera::Journal journal{.key = "bench",
                             .orgId = "org",
                             .projectId = "project",
                             .object = "deliveries/org/project/bench/master.mov",
                             .uploadId = "upload",
                             .partSize = 32LL << 20,
                             .partCount = parts,
                             .byteSize = parts * (32LL << 20),
                             .filePath = "/films/master.mov",
                             .filename = "master.mov",
                             .fileStamp = "1-1"};
    for (int part = 1; part <= parts; ++part)
        journal.done[part] = QStringLiteral("d41d8cd98f00b204e9800998ecf8427e-%1").arg(part);
    return journal;
}

void encode(benchmark::State& state)
{
    auto journal = journalOf(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(palvera::encodeJournal(journal));
}
BENCHMARK(encode)->Arg(100)->Arg(10'000)->Unit(benchmark::kMillisecond);

void save(benchmark::State& state)
{
    QTemporaryDir folder;
    palvera::JournalStore store(folder.path());
    auto journal = journalOf(int(state.range(0)));
    for (auto _ : state) {
        auto copy = journal; // as the reporter hands it to the disk
        store.saveJournal(copy);
    }
}
BENCHMARK(save)->Arg(100)->Arg(10'000)->Unit(benchmark::kMillisecond);

void decode(benchmark::State& state)
{
    auto bytes = palvera::encodeJournal(journalOf(int(state.range(0))));
    for (auto _ : state)
        benchmark::DoNotOptimize(palvera::decodeJournal(bytes));
}
BENCHMARK(decode)->Arg(10'000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
