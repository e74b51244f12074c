// Whole programs: `vesk info` against a plain reader. This process stays small, because the peak
// of a program that it starts counts from its own.
//
//   ProgramBench --benchmark_repetitions=5 --benchmark_report_aggregates_only=true

#include <benchmark/benchmark.h>

#include <algorithm>

#include "bench/BenchLog.h"

namespace vesk {
namespace {

// seconds and plain_seconds: processor time of the two programs. peak_bytes: resident memory per
// job at its highest, over that of a process that reads nothing.
void WholeProgram(benchmark::State& state, const SimulatorOptions& options) {
    BenchLog log("program", options);
    const ProgramCost empty = RunProgram(VESK_PROGRAM, "--version", "");
    double plain = 0;
    double ours = 0;
    long peak = 0;
    for (auto _ : state) {
        plain += RunProgram(VESK_PLAIN_PROGRAM, log.Path(), "").m_Seconds;
        const ProgramCost cost = RunProgram(VESK_PROGRAM, "info", log.Path());
        ours += cost.m_Seconds;
        peak = std::max(peak, cost.m_PeakKB);
        state.SetIterationTime(cost.m_Seconds);
    }
    const double runs = static_cast<double>(state.iterations());
    state.counters["seconds"] = ours / runs;
    state.counters["plain_seconds"] = plain / runs;
    state.counters["times_faster"] = plain / ours;
    state.counters["peak_bytes"] =
        1024.0 * static_cast<double>(peak - empty.m_PeakKB) / static_cast<double>(log.Jobs());
}

BENCHMARK_CAPTURE(WholeProgram, plain, OnlySwitches())->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(WholeProgram, uscnt_4_extra, MicrosecondsWithExtraValues())
    ->UseManualTime()
    ->Iterations(1);
BENCHMARK_CAPTURE(WholeProgram, packets, Packets())->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(WholeProgram, functions, Functions())->UseManualTime()->Iterations(1);

}  // namespace
}  // namespace vesk

BENCHMARK_MAIN();
