// Reading against what reading cannot do without: appending as many ready-made records. Each
// iteration times both sides, one after the other, so that the ratio stands for one moment of the
// machine. Counters: ns and append_ns per record of the log, ratio of the two.
//
//   ReadBench --benchmark_repetitions=7 --benchmark_report_aggregates_only=true

#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

#include "bench/BenchLog.h"

namespace vesk {
namespace {

constexpr std::size_t kReady = 64;

// The elements that are appended: a few, so that reading them costs nothing.
template <class T>
std::vector<T> FirstOf(const std::vector<T>& elements) {
    return {elements.begin(),
            elements.begin() + static_cast<std::ptrdiff_t>(std::min(kReady, elements.size()))};
}

template <class T>
void Append(std::vector<T>& to, const std::vector<T>& ready, std::size_t count) {
    to.reserve(count);
    for (std::size_t i = 0; i < count; ++i) to.push_back(ready[i % ready.size()]);
}

// As many elements as a log yields, with the first of each container ready-made.
struct ReadyMade {
    explicit ReadyMade(const McuJobList& list)
        : m_Jobs(FirstOf<McuJob>(list)),
          m_Samples(FirstOf(list.m_ExtraInfos)),
          m_JobCount(list.size()),
          m_SampleCount(list.m_ExtraInfos.size()) {
        m_Others.push_back(list.m_CustomJobs.size());
        m_Others.push_back(list.m_SourceMarks.size());
        for (const auto& [name, calls] : list.m_CustomJobsCS) m_Others.push_back(calls.size());
        for (const auto& [name, events] : list.m_HWJobs) m_Others.push_back(events.size());
    }

    std::vector<McuJob> m_Jobs;
    std::vector<ExtraInfoRecord> m_Samples;
    std::size_t m_JobCount;
    std::size_t m_SampleCount;
    std::vector<std::size_t> m_Others;  // jobs in each further container
};

double TimeAppending(const ReadyMade& ready) {
    const double start = ProcessorTime();
    std::vector<McuJob> jobs;
    Append(jobs, ready.m_Jobs, ready.m_JobCount);
    std::vector<std::vector<McuJob>> others(ready.m_Others.size());
    for (std::size_t i = 0; i < others.size(); ++i)
        Append(others[i], ready.m_Jobs, ready.m_Others[i]);
    std::vector<ExtraInfoRecord> samples;
    Append(samples, ready.m_Samples, ready.m_SampleCount);
    benchmark::DoNotOptimize(jobs.data());
    benchmark::DoNotOptimize(samples.data());
    return ProcessorTime() - start;
}

struct Sums {
    double m_Read = 0;
    double m_Append = 0;

    void Report(benchmark::State& state, std::uint64_t records) const {
        const double count = static_cast<double>(records) * static_cast<double>(state.iterations());
        state.counters["ns"] = 1e9 * m_Read / count;
        state.counters["append_ns"] = 1e9 * m_Append / count;
        state.counters["ratio"] = m_Read / m_Append;
    }
};

void ReadIntoFreshMemory(benchmark::State& state, const SimulatorOptions& options) {
    BenchLog log("read", options);
    McuJobList sample;
    log.ReadInto(sample);
    const ReadyMade ready(sample);
    const std::uint64_t records = sample.Report().m_Records;
    sample = McuJobList();
    sample.shrink_to_fit();
    Sums sums;
    for (auto _ : state) {
        sums.m_Append += TimeAppending(ready);
        McuJobList list;
        const double start = ProcessorTime();
        log.ReadInto(list);
        const double took = ProcessorTime() - start;
        sums.m_Read += took;
        state.SetIterationTime(took);
    }
    sums.Report(state, records);
}

void ReadIntoTouchedMemory(benchmark::State& state, const SimulatorOptions& options) {
    BenchLog log("read", options);
    McuJobList list;
    log.ReadInto(list);
    const ReadyMade ready(list);
    const std::uint64_t records = list.Report().m_Records;
    std::vector<McuJob> jobs;
    Append(jobs, ready.m_Jobs, ready.m_JobCount);
    Sums sums;
    for (auto _ : state) {
        jobs.clear();
        const double startAppend = ProcessorTime();
        Append(jobs, ready.m_Jobs, ready.m_JobCount);
        sums.m_Append += ProcessorTime() - startAppend;
        list.Clear();
        const double startRead = ProcessorTime();
        log.ReadInto(list);
        const double took = ProcessorTime() - startRead;
        sums.m_Read += took;
        state.SetIterationTime(took);
    }
    sums.Report(state, records);
}

BENCHMARK_CAPTURE(ReadIntoFreshMemory, plain, OnlySwitches())->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(ReadIntoTouchedMemory, plain, OnlySwitches())->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(ReadIntoFreshMemory, uscnt_4_extra, MicrosecondsWithExtraValues())
    ->UseManualTime()
    ->Iterations(1);
BENCHMARK_CAPTURE(ReadIntoFreshMemory, packets, Packets())->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(ReadIntoFreshMemory, functions, Functions())->UseManualTime()->Iterations(1);

}  // namespace
}  // namespace vesk

BENCHMARK_MAIN();
