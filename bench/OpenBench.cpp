// Opening a log: the read, and what the window takes from there to its first picture, at 1920 x
// 1080 with all of the log in view. Counters: milliseconds of the read and of the first paint in
// either outlook, everything built that painting asks for, and the ratio of read and paint to the
// read alone. What the parts of a first paint take is told one by one.
//
//   OpenBench --benchmark_repetitions=5 --benchmark_report_aggregates_only=true

#include <benchmark/benchmark.h>

#include <functional>
#include <memory>
#include <string>

#include "bench/BenchLog.h"
#include "bench/BenchWindow.h"
#include "host/VESK_DLL_Shared_Data_T.h"
#include "log/McuJobList.h"

namespace vesk {
namespace {

double TimeOf(const std::function<void()>& step) {
    const double start = ProcessorTime();
    step();
    return ProcessorTime() - start;
}

double FirstPaint(OUTLOOKTYPE outlook) {
    auto window = std::make_unique<BenchWindow>(outlook);
    return TimeOf([&] { window->Paint(); });
}

void Drop(McuJobList& list) {
    list = McuJobList();
    list.shrink_to_fit();
}

void Open(benchmark::State& state, const SimulatorOptions& options) {
    BenchLog log("open", options);
    McuJobList& list = *vesk_dll_shared_data.m_pJobList;
    double read = 0;
    double pure = 0;
    double relative = 0;
    for (auto _ : state) {
        Drop(list);
        const double reading = TimeOf([&] { log.ReadInto(list); });
        const double painting = FirstPaint(OUTLOOK_PURE);
        read += reading;
        pure += painting;
        relative += FirstPaint(OUTLOOK_RELATIVE);
        state.SetIterationTime(reading + painting);
    }
    const auto count = static_cast<double>(state.iterations());
    state.counters["jobs"] = static_cast<double>(list.size());
    state.counters["read_ms"] = 1e3 * read / count;
    state.counters["pure_ms"] = 1e3 * pure / count;
    state.counters["relative_ms"] = 1e3 * relative / count;
    state.counters["pure_ratio"] = (read + pure) / read;
    state.counters["relative_ratio"] = (read + relative) / read;
    Drop(list);
}

// The parts of a first paint, each with the indexes that those before it have not built.
void OpenInParts(benchmark::State& state, const SimulatorOptions& options) {
    BenchLog log("parts", options);
    McuJobList& list = *vesk_dll_shared_data.m_pJobList;
    log.ReadInto(list);
    struct Part {
        const char* m_Name;
        std::function<void(CMcuView&, CDC*)> m_Draw;
        double m_Spent = 0;
    };
    Part parts[] = {
        {"strip_ms", [](CMcuView& view, CDC* dc) { view.DrawJobList(dc, 240, 80, 720); }},
        {"calls_ms", [](CMcuView& view, CDC* dc) { view.DrawCustomJobListCS(dc, 160, 80, 384); }},
        {"marks_ms", [](CMcuView& view, CDC* dc) { view.DrawSourceMarkList(dc, 80, 224); }},
        {"curves_ms", [](CMcuView& view, CDC* dc) { view.DrawExtraInfo(dc, 240, 80, 720); }},
        {"lanes_ms", [](CMcuView& view, CDC* dc) { view.DrawJobList(dc, 80, 960); }},
        {"segments_ms", [](CMcuView& view, CDC* dc) { view.DrawCustomJobList(dc, 160, 80, 384); }},
        {"rest_ms", [](CMcuView& view, CDC* dc) { view.OnDraw(dc); }},
    };
    for (auto _ : state) {
        auto window = std::make_unique<BenchWindow>(OUTLOOK_PURE);
        double spent = 0;
        for (Part& part : parts) {
            const double took = TimeOf([&] { part.m_Draw(window->View(), window->Context()); });
            part.m_Spent += took;
            spent += took;
        }
        state.SetIterationTime(spent);
    }
    for (const Part& part : parts)
        state.counters[part.m_Name] = 1e3 * part.m_Spent / static_cast<double>(state.iterations());
    Drop(list);
}

// Jobs, functions, marks and hardware events, with or without extra values; above 10 million jobs.
SimulatorOptions Full(std::uint32_t extraValues, std::uint64_t records = 20'000'000) {
    SimulatorOptions options;
    options.m_Form = SimulatedForm::kVersion2;
    options.m_Records = records;
    options.m_Tasks = 48;
    options.m_ExtraValues = extraValues;
    return options;
}

#define OPEN_BENCHMARK(name, options)             \
    BENCHMARK_CAPTURE(Open, name, options)        \
        ->UseManualTime()                         \
        ->Iterations(1)                           \
        ->Unit(benchmark::kMillisecond);          \
    BENCHMARK_CAPTURE(OpenInParts, name, options) \
        ->UseManualTime()                         \
        ->Iterations(1)                           \
        ->Unit(benchmark::kMillisecond)

OPEN_BENCHMARK(plain, OnlySwitches());
OPEN_BENCHMARK(full, Full(0));
OPEN_BENCHMARK(full_2_extra, Full(2));
OPEN_BENCHMARK(few, Full(2, 10'000));

}  // namespace
}  // namespace vesk

BENCHMARK_MAIN();
