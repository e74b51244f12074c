// What a paint of the timeline costs with a short and with a very long log in view: a repaint, a
// scroll step and a zoom step, at 1920 x 1080, in both outlooks. At the end, how much longer the
// longest log takes than the shortest.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdio>
#include <ctime>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>

#include "bench/BenchWindow.h"
#include "host/VESK_DLL_Shared_Data_T.h"
#include "log/McuJobList.h"
#include "timeline/CurveIndex.h"
#include "timeline/JobStripIndex.h"
#include "timeline/TimelineIndex.h"

namespace {

constexpr int kTasks = 40;
constexpr int kIrqs = 24;
constexpr int kFunctions = 16;
constexpr int kShortLog = 10000;
constexpr int kLongLog = 10000000;

// --- The log -------------------------------------------------------------------------------------

// The same numbers on every machine.
class Numbers {
public:
    std::uint32_t Below(std::uint32_t limit) {
        m_State = m_State * 6364136223846793005u + 1442695040888963407u;
        return static_cast<std::uint32_t>((m_State >> 32) * limit >> 32);
    }

private:
    std::uint64_t m_State = 1;
};

std::string JobName(std::uint32_t i) {
    char name[16];
    if (i < kTasks) {
        std::snprintf(name, sizeof name, "Task%02u", i);
    } else {
        std::snprintf(name, sizeof name, "IRQ0x%02x", i - kTasks);
    }
    return i == 0 ? "IDLE" : name;
}

void AddJobs(McuJobList& list, int count, Numbers& numbers) {
    list.reserve(static_cast<std::size_t>(count));
    std::uint64_t time = 0;
    for (int i = 0; i < count; ++i) {
        const std::uint64_t end = time + 20 + numbers.Below(400);
        McuJob job(JobName(numbers.Below(kTasks + kIrqs)), time, end);
        job.m_TimeStamp = static_cast<std::int32_t>(time / 5000);
        job.m_TimeCount = static_cast<std::uint32_t>(time * 2);
        list.Insert(job);
        time = end;
    }
}

// One function calls another: three segments and two calls in the time of eight jobs.
void AddFunctions(McuJobList& list, Numbers& numbers) {
    for (std::size_t i = 0; i + 8 <= list.size(); i += 8) {
        const std::uint64_t start = list[i].m_StartTime + 5;
        const std::uint64_t middle = list[i + 2].m_StartTime + 5;
        const std::uint64_t back = list[i + 4].m_StartTime + 5;
        const std::uint64_t end = list[i + 7].m_StartTime + 5;
        const std::string outer = "Function" + std::to_string(numbers.Below(kFunctions));
        const std::string inner = "Inner" + std::to_string(numbers.Below(kFunctions));
        const auto segment = [&](const std::string& name, std::uint64_t from, std::uint64_t to,
                                 int flags) {
            McuJob job(name, from, to);
            job.m_Flags = static_cast<std::uint8_t>(flags);
            list.InsertCustomJob(job, to);
        };
        segment(outer, start, middle, kBeganAtEntry);
        segment(inner, middle, back, kBeganAtEntry | kEndedAtExit | kClosedLastCall);
        segment(outer, back, end, kEndedAtExit | kClosedLastCall);
        McuJob call(outer, start, end);
        call.m_Flags = kClosedLastCall;
        list.InsertCustomJobCS(call);
        call.m_Name = inner, call.m_StartTime = middle, call.m_EndTime = back;
        list.InsertCustomJobCS(call);
    }
}

void AddMarksAndEvents(McuJobList& list, Numbers& numbers) {
    for (std::size_t i = 0; i < list.size(); i += 20) {
        const std::uint64_t time = list[i].m_StartTime + 3;
        list.InsertSourceMark({"Mark" + std::to_string(numbers.Below(4)), time, time});
        list.InsertHWJob({"Engine" + std::to_string(numbers.Below(4)), time, time + 200});
    }
}

void AddSamples(McuJobList& list, Numbers& numbers) {
    constexpr int kValues = 3;
    list.m_ExtraInfoNum = kValues;
    list.m_ExtraNames = {"load", "heap", "queue"};
    list.m_ExtraMax.assign(kValues, 0);
    list.m_ExtraMin.assign(kValues, -1);
    std::vector<int> values(kValues);
    int heap = 500000;
    std::string task = "Task01";
    for (std::size_t i = 0; i < list.size(); i += 10) {
        heap += static_cast<int>(numbers.Below(2001)) - 1000;
        values = {static_cast<int>(numbers.Below(101)), heap, static_cast<int>(numbers.Below(8))};
        list.InsertExtraInfo(values, list[i].m_StartTime, task);
    }
}

// Of this process, from the heap.
std::size_t AllocatedBytes() {
    const auto heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

// One log at a time: the longest takes more than a gigabyte.
void ProvideLog(int jobs) {
    static int current = 0;
    if (current == jobs) return;
    current = jobs;
    McuJobList& list = *vesk_dll_shared_data.m_pJobList;
    list.Clear();
    Numbers numbers;
    AddJobs(list, jobs, numbers);
    AddFunctions(list, numbers);
    AddMarksAndEvents(list, numbers);
    AddSamples(list, numbers);
}

// --- The steps -----------------------------------------------------------------------------------

using Window = vesk::BenchWindow;
using Step = std::function<void(Window&)>;

// What is done before the first paint, and what is done over and over.
struct Case {
    const char* m_Name;
    Step m_Prepare;
    Step m_Step;
};

void ZoomIn(Window& window) {
    window.View().m_ZoomRatio *= 2;
    window.View().Zoom();
}

void ZoomOut(Window& window) {
    window.View().m_ZoomRatio *= 0.5f;
    window.View().Zoom();
}

// Back and forth between the log's ends, a fortieth of the view at a time.
void ScrollOn(Window& window) {
    CMcuView& view = window.View();
    const std::uint64_t end = vesk_dll_shared_data.m_pJobList->m_EndTime;
    view.m_TimeOffset += view.m_VisibleQbits / 40;
    if (view.m_TimeOffset + view.m_VisibleQbits > end) view.m_TimeOffset = 0;
    view.Cal_HScrollPos();
}

const Case kCases[] = {
    {"repaint", nullptr, [](Window& window) { window.Paint(); }},
    {"repaint in QBit", [](Window& window) { window.View().m_TimeUnit = TIMEUNIT_CLOCK; },
     [](Window& window) { window.Paint(); }},
    {"repaint without context switches",
     [](Window& window) { window.View().m_ContextSwitch = false; },
     [](Window& window) { window.Paint(); }},
    {"scroll step", ZoomIn,
     [](Window& window) {
         ScrollOn(window);
         window.Paint();
     }},
    {"scroll step without functions",
     [](Window& window) {
         window.View().m_ShowCustomLogging = false;
         ZoomIn(window);
     },
     [](Window& window) {
         ScrollOn(window);
         window.Paint();
     }},
    {"two zoom steps", nullptr,
     [](Window& window) {
         ZoomIn(window);
         window.Paint();
         ZoomOut(window);
         window.Paint();
     }},
};

// The steps of a paint one by one, without the double buffer.
const Case kPureSteps[] = {
    {"strip", nullptr, [](Window& w) { w.View().DrawJobList(w.Context(), 240, 80, 720); }},
    {"functions", nullptr,
     [](Window& w) { w.View().DrawCustomJobList(w.Context(), 160, 80, 384); }},
    {"calls", nullptr, [](Window& w) { w.View().DrawCustomJobListCS(w.Context(), 160, 80, 384); }},
    {"marks", nullptr, [](Window& w) { w.View().DrawSourceMarkList(w.Context(), 80, 224); }},
    {"curves", nullptr, [](Window& w) { w.View().DrawExtraInfo(w.Context(), 240, 80, 720); }},
    {"frame lines", nullptr, [](Window& w) { w.View().DrawFrameNo(w.Context(), 80); }},
    {"count axis", nullptr,
     [](Window& w) { w.View().DrawXAxis_Count(w.Context(), 1810, 80, 960); }},
};
const Case kRelativeSteps[] = {
    {"lanes", nullptr, [](Window& w) { w.View().DrawJobList(w.Context(), 80, 960); }},
    {"lanes without context switches", [](Window& w) { w.View().m_ContextSwitch = false; },
     [](Window& w) { w.View().DrawJobList(w.Context(), 80, 960); }},
};

// Milliseconds of processor time of one step by case and length of the log.
std::map<std::string, std::map<int, double>> figures;

void Run(benchmark::State& state, const Case& what, OUTLOOKTYPE outlook, const std::string& name,
         int jobs) {
    ProvideLog(jobs);
    Window window(outlook);
    window.View().m_ShowFrameNo = window.View().m_ShowDottedLine = true;
    if (what.m_Prepare) what.m_Prepare(window);
    what.m_Step(window);
    const std::clock_t start = std::clock();
    for (auto _ : state) what.m_Step(window);
    const auto spent = static_cast<double>(std::clock() - start) * 1000 / CLOCKS_PER_SEC;
    figures[name][jobs] = spent / static_cast<double>(state.iterations());
}

// Everything that is derived from the log is built here.
void RunFirst(benchmark::State& state, OUTLOOKTYPE outlook, int jobs) {
    ProvideLog(jobs);
    for (auto _ : state) {
        state.PauseTiming();
        auto window = std::make_unique<Window>(outlook);
        window->View().m_ShowFrameNo = window->View().m_ShowDottedLine = true;
        state.ResumeTiming();
        window->Paint();
        state.PauseTiming();
        window.reset();
        state.ResumeTiming();
    }
}

// What the indexes take that are built for a log before its first paint.
template <class Build>
void RunBuild(benchmark::State& state, int jobs, Build build) {
    ProvideLog(jobs);
    const McuJobList& list = *vesk_dll_shared_data.m_pJobList;
    std::size_t bytes = 0;
    for (auto _ : state) {
        const std::size_t before = AllocatedBytes();
        const auto index = build(list);
        bytes = AllocatedBytes() - before;
        benchmark::DoNotOptimize(index);
    }
    const auto count = static_cast<double>(jobs);
    state.counters["per job"] = benchmark::Counter(
        count, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    state.counters["bytes a job"] = static_cast<double>(bytes) / count;
}

void RegisterBuilds(int jobs) {
    const auto add = [jobs](const char* name, auto build) {
        benchmark::RegisterBenchmark(
            (std::string("index/") + name + "/" + std::to_string(jobs)).c_str(),
            [=](benchmark::State& state) { RunBuild(state, jobs, build); })
            ->Unit(benchmark::kMillisecond);
    };
    add("jobs", [](const McuJobList& list) {
        auto index = std::make_unique<vesk::TimelineIndex>(list);
        index->Jobs();
        return index;
    });
    add("marks", [](const McuJobList& list) {
        return std::make_unique<vesk::JobStripIndex>(list.m_SourceMarks);
    });
    add("curves", [](const McuJobList& list) { return std::make_unique<vesk::CurveIndex>(list); });
    add("one read of the jobs", [](const McuJobList& list) {
        std::uint64_t sum = 0;
        for (const McuJob& job : list) sum += job.m_EndTime - job.m_StartTime + job.m_Name.size();
        return sum;
    });
}

void RegisterStep(const Case& what, OUTLOOKTYPE outlook, int jobs) {
    const std::string name =
        std::string(outlook == OUTLOOK_PURE ? "pure/" : "relative/") + what.m_Name;
    const std::string fullName = name + "/" + std::to_string(jobs);
    benchmark::RegisterBenchmark(fullName.c_str(), [=, &what](benchmark::State& state) {
        Run(state, what, outlook, name, jobs);
    })->Unit(benchmark::kMillisecond);
}

// Each step of a paint by itself, of the same view and after a scroll step.
void RegisterParts(std::span<const Case> parts, OUTLOOKTYPE outlook, int jobs) {
    static std::deque<std::string> names;
    static std::deque<Case> scrolled;
    for (const Case& part : parts) {
        RegisterStep(part, outlook, jobs);
        names.push_back(std::string("scrolled ") + part.m_Name);
        const auto prepare = [&part](Window& window) {
            if (part.m_Prepare) part.m_Prepare(window);
            ZoomIn(window);
        };
        const auto step = [&part](Window& window) {
            ScrollOn(window);
            part.m_Step(window);
        };
        scrolled.push_back({names.back().c_str(), prepare, step});
        RegisterStep(scrolled.back(), outlook, jobs);
    }
}

void Register(int jobs) {
    RegisterBuilds(jobs);
    for (const OUTLOOKTYPE outlook : {OUTLOOK_PURE, OUTLOOK_RELATIVE}) {
        for (const Case& what : kCases) RegisterStep(what, outlook, jobs);
        const std::string name = outlook == OUTLOOK_PURE ? "pure" : "relative";
        benchmark::RegisterBenchmark(
            (name + "/first paint/" + std::to_string(jobs)).c_str(),
            [=](benchmark::State& state) { RunFirst(state, outlook, jobs); })
            ->Unit(benchmark::kMillisecond)
            ->Iterations(3);
    }
    RegisterParts(kPureSteps, OUTLOOK_PURE, jobs);
    RegisterParts(kRelativeSteps, OUTLOOK_RELATIVE, jobs);
}

void PrintRatios() {
    for (const auto& [name, byLength] : figures) {
        const auto few = byLength.find(kShortLog);
        const auto many = byLength.find(kLongLog);
        if (few == byLength.end() || many == byLength.end()) continue;
        std::printf("%-42s %.2f times that of %d jobs\n", name.c_str(), many->second / few->second,
                    kShortLog);
    }
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    for (const int jobs : {kShortLog, 1000000, kLongLog}) Register(jobs);
    benchmark::RunSpecifiedBenchmarks();
    PrintRatios();
    return 0;
}
